// Laps: from the button, the keyboard and the timers station.

#include <algorithm>

#include "base/checked.h"
#include "base/text.h"
#include "lane/frm_lane.h"

namespace quorvane {
namespace {

constexpr Color kLapLight = Color::Rgb(0x8080FF);
constexpr std::int32_t kFirstLapFrom = 5000;
constexpr std::int32_t kBetweenLaps = 3000;
constexpr std::int32_t kPanelLockOut = 4000;
constexpr int kTimersStation = 4;

}  // namespace

void frmLane::DoLap(std::int32_t time, std::int32_t lockOut) {
  const std::int32_t t = ToRaceTime(time);
  if (doesNotFly_ || t < kFirstLapFrom) return;
  if (race_.ManualStart && t < std::int64_t{LastLapTime_} + kBetweenLaps) return;
  const bool freeLap = chkNovice.Value() != 0 && counts_.laps == 0;
  const std::uint8_t lapsAfter = ToByte(counts_.laps + (freeLap ? 2 : 1));
  const std::int64_t lightEnd = std::int64_t{owner_.RaceTime()} + lockOut;
  log_.Require(freeLap ? 2 : 1);

  LastLapTime_ = t;
  if (freeLap) {
    // A novice is credited with the first lap: its cell ends at the same time as the next one.
    FreezeCell(time);
    counts_.laps = 1;
    log_.AddEvent({"L", t, kTimersStation, 1});
  }
  FreezeCell(time);
  counts_.laps = lapsAfter;
  log_.AddEvent({"L", t, kTimersStation, counts_.laps});
  counts_.finalTime = RecountLaps(log_, IsFai()).finalTime;
  if (HasCell(counts_.laps)) {
    lblLap[counts_.laps].SetVisible(true);
    UpdateLapTime(time);
  }
  StartLapLight(lockOut, lightEnd);
  owner_.IssueLapEvent();
  EntryMade();
}

// Whether the lap after `lap` completed ones has a cell that shows it: the eleventh only in a lane that owes
// it.
bool frmLane::HasCell(int lap) const {
  return lap < kLastLapCell || (lap == kLastLapCell && counts_.lapTarget > kLastLapCell);
}

void frmLane::FreezeCell(std::int32_t time) {
  if (!HasCell(counts_.laps)) return;
  Control& cell = lblLap[counts_.laps];
  cell.SetBackColor(kSilver);
  cell.SetCaption(FormatSeconds(ToRaceTime(time)));
  EnableHandButtons(true);
}

void frmLane::StartLapLight(std::int32_t lockOut, std::int64_t end) {
  // A timer that runs already with this interval keeps its time.
  if (!tmrLaps.Enabled() || tmrLaps.Interval() != lockOut) lapLightEnd_ = end;
  tmrLaps.SetInterval(lockOut);
  tmrLaps.SetEnabled(true);
  lblStatus.SetBackColor(kLapLight);
}

void frmLane::tmrLaps_Timer() {
  tmrLaps.SetEnabled(false);
  lblStatus.SetBackColor(kWindow);
}

void frmLane::UpdateLapTime(std::int32_t time) {
  const std::int32_t t = ToRaceTime(time);
  counts_.laps = std::min(counts_.laps, static_cast<std::int16_t>(kLastLapCell + 1));
  if (HasCell(counts_.laps)) lblLap[counts_.laps].SetCaption(t >= 0 ? FormatTenths(t) : "");
  EnableHandButtons(true);
}

bool frmLane::CanDoLap(std::uint8_t stationLaps) const {
  const int counted = CountLaps();
  // The station has not seen the lap that a novice is credited with.
  const int freeLaps = chkNovice.Value() != 0 && counted > 0 ? 1 : 0;
  return counted < stationLaps + freeLaps && !IsFinished() && !tmrLaps.Enabled();
}

bool frmLane::IsFinished() const {
  if (Loaded() || doesNotFly_) return true;
  const std::int64_t s = std::int64_t{owner_.RaceTime()} + TimeBase_ - LastLapTime_;
  const bool done = counts_.laps >= counts_.lapTarget || counts_.cutCount >= 2;
  return (s >= 10000 && done) || s >= 30001;
}

void frmLane::JoinRace() {
  LastLapTime_ = std::max(0, ToRaceTime(owner_.RaceTime()));
}

void frmLane::AdjustTime(std::int32_t by) {
  if (by == 0) return;
  const auto moved = [by](std::int32_t time) { return time == 0 ? 0 : AddLong(time, by); };  // 0: not entered
  const std::int32_t lastLap = moved(LastLapTime_);
  const std::int32_t turnEnd = moved(TurnTimerEnd_);
  auto missed = MissedPylonTimes_;
  for (std::int32_t& time : missed) time = moved(time);
  log_.MoveTimes(by);
  LastLapTime_ = lastLap;
  TurnTimerEnd_ = turnEnd;
  MissedPylonTimes_ = missed;
  lapLightEnd_ += by;
  if (log_.EventCount() == 0) return;
  for (const LaneEvent& event : log_.Entries()) {
    const int cell = event.Count - 1;
    if (event.Kind == "L" && HasCell(cell)) lblLap[cell].SetCaption(FormatSeconds(event.EventTime));
  }
  RecalculateCuts();
  counts_ = RecountLaps(log_, IsFai());
}

void frmLane::cmdLap_Click() {
  if (race_.RaceActive) DoLap(owner_.RaceTime(), kPanelLockOut);
}

void frmLane::chkNovice_Click() {
  if (InNoviceClick_) return;
  const BusyFlag busy(InNoviceClick_);
  if (race_.RaceActive) {
    chkNovice.SetValue(chkNovice.Value() == 1 ? 0 : 1);
    return;
  }
  const bool novice = chkNovice.Value() != 0;
  chkNovice.SetForeColor(novice ? kRed : kBlack);
  lblHdr[1].SetVisible(!novice);
  // A novice's second column is the free lap: it is hidden, and the numbers go on after it.
  for (int i = novice ? 2 : 0; i <= lblHdr.Upper(); ++i) {
    lblHdr[i].SetCaption("Lap " + std::to_string(novice ? i : i + 1));
  }
}

}  // namespace quorvane
