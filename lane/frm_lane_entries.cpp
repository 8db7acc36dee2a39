// Laps, turns and pylon cuts: from the panel, the keys and the stations.

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
constexpr std::int32_t kClocksDiffer = 50;   // ms
constexpr std::int32_t kTurnReports = 2040;  // ms for which a turn is reported at most: the longest light
constexpr std::int32_t kPanelTurn = 2000;    // ms that a turn of the operator is shown
constexpr std::int32_t kPreviousLap = 4000;  // so soon after a lap, a cut at pylon 2 or 3 belongs before it
constexpr std::int32_t kBetweenMissedPylons = 3000;

// The judge's two lights for a lane.
int CutsOfCode(const std::string& code) {
  if (code == "1o" || code == "o1") return 1;
  return code == "11" ? 2 : 0;
}

}  // namespace

void frmLane::DoLap(std::int32_t time, std::int32_t lockOut) {
  const std::int32_t t = ToRaceTime(time);
  if (doesNotFly_ || t < kFirstLapFrom) return;
  if (race_.ManualStart && t < std::int64_t{log_.LatestLapTime()} + kBetweenLaps) return;
  const bool freeLap = chkNovice.Value() != 0 && counts_.laps == 0;
  const std::uint8_t lapsAfter = ToByte(counts_.laps + (freeLap ? 2 : 1));
  const std::int64_t lightEnd = std::int64_t{owner_.RaceTime()} + lockOut;
  log_.Require(freeLap ? 2 : 1);

  LastLapTime_ = t;
  // A novice is credited with the first lap: its cell ends at the same time as the next one.
  while (counts_.laps < lapsAfter) {
    FreezeCell(time);
    ++counts_.laps;
    log_.AddEvent(Entry("L", t, kTimersStation, counts_.laps));
  }
  counts_.finalTime = RecountLaps(log_, IsFai()).finalTime;
  if (HasCell(counts_.laps)) {
    lblLap[counts_.laps].SetVisible(true);
    UpdateLapTime(time);
  }
  // A timer that runs already with this interval keeps its time.
  if (!tmrLaps.Enabled() || tmrLaps.Interval() != lockOut) lapLightEnd_ = lightEnd;
  tmrLaps.SetInterval(lockOut);
  tmrLaps.SetEnabled(true);
  lblStatus.SetBackColor(kLapLight);
  owner_.IssueLapEvent();
  EntryMade();
}

// Notes the entries also when telling others of them fails: they stand.
void frmLane::EnterByHand(const std::function<void()>& enter) {
  const unsigned before = log_.LastSerial();
  const auto note = [&] {
    log_.MarkByHand(before);
    std::vector<unsigned> serials;
    for (int i = 0; i < log_.EventCount(); ++i) {
      if (log_[i].Serial > before && i != log_.FreeLap()) serials.push_back(log_[i].Serial);
    }
    if (!serials.empty()) owner_.EnteredByHand(laneNumber_, serials);
  };
  try {
    enter();
  } catch (const RunTimeError&) {
    note();
    throw;
  }
  note();
}

// Whether the lap after `lap` completed ones has a cell: the eleventh only in a lane that owes it.
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

void frmLane::UpdateLapTime(std::int32_t time) {
  const std::int32_t t = ToRaceTime(time);
  counts_.laps = std::min(counts_.laps, static_cast<std::int16_t>(kLastLapCell + 1));
  if (!doesNotFly_ && HasCell(counts_.laps)) lblLap[counts_.laps].SetCaption(t >= 0 ? FormatTenths(t) : "");
  EnableHandButtons(true);
}

bool frmLane::CanDoLap(std::uint8_t stationLaps) const {
  return !HasLapOf(stationLaps) && !IsFinished() && !tmrLaps.Enabled();
}

bool frmLane::HasLapOf(int stationLaps) const {
  // Once the lane's laps have been put right they differ from the station's for good.
  if (!log_.Corrections().empty()) return stationLaps <= StationLapsTaken();
  const int counted = CountLaps();
  // The station has not seen the lap that a novice is credited with.
  const int freeLaps = chkNovice.Value() != 0 && counted > 0 ? 1 : 0;
  return counted >= stationLaps + freeLaps;
}

// One that was refused counts as taken while the lap stands that was there before it.
int frmLane::StationLapsTaken() const {
  return log_.Find(refused_.by) >= 0 ? std::max(stationLaps_, refused_.laps) : stationLaps_;
}

void frmLane::DoStationLap(std::uint8_t stationLaps, std::int32_t time, std::int32_t lockOut) {
  if (!CanDoLap(stationLaps)) return NoteRefused(stationLaps, time);
  // When the lap that stood for it has been taken back, it was flown at its first report all the same.
  const bool before = !log_.Corrections().empty() && stationLaps == refused_.laps;
  const unsigned revision = log_.Revision();
  DoLap(before ? refused_.time : time, lockOut);
  if (log_.Revision() != revision) stationLaps_ = stationLaps;
}

void frmLane::NoteRefused(int stationLaps, std::int32_t time) {
  const LaneEvent* lap = log_.LatestLap();
  if (stationLaps <= StationLapsTaken() || lap == nullptr || IsFinished()) return;
  if (lap->ByHand && std::int64_t{ToRaceTime(time)} - lap->EventTime <= kPanelLockOut) {
    refused_ = {stationLaps, stationLaps == refused_.laps ? refused_.time : time, lap->Serial};
  } else if (HasLapOf(stationLaps)) {
    stationLaps_ = stationLaps;
  }
}

bool frmLane::IsFinished() const {
  if (Loaded() || doesNotFly_) return true;
  const bool done = counts_.laps >= counts_.lapTarget || counts_.cutCount >= 2;
  return SinceLastLap() >= (done ? 10000 : kLapOverdue);
}

void frmLane::JoinRace() {
  LastLapTime_ = std::max(0, ToRaceTime(owner_.RaceTime()));
}

void frmLane::ResumeFlight() {
  LastLapTime_ = std::max(LastLapTime_, SubtractLong(ToRaceTime(owner_.RaceTime()), kBetweenLaps));
}

void frmLane::AdjustTime(std::int32_t by) {
  if (by == 0) return;
  const auto moved = [by](std::int32_t time) { return time == 0 ? 0 : AddLong(time, by); };  // 0: not entered
  const std::int32_t lastLap = moved(LastLapTime_);
  const std::int32_t turnEnd = moved(TurnTimerEnd_);
  const std::int32_t refused = moved(refused_.time);
  auto missed = MissedPylonTimes_;
  for (std::int32_t& time : missed) time = moved(time);
  log_.MoveTimes(by);
  LastLapTime_ = lastLap;
  TurnTimerEnd_ = turnEnd;
  refused_.time = refused;
  MissedPylonTimes_ = missed;
  lapLightEnd_ += by;
  if (log_.EventCount() == 0) return;
  for (const LaneEvent& event : log_.Entries()) {
    const int cell = event.Count - 1;
    if (event.Kind == "L" && cell >= 0 && HasCell(cell))
      lblLap[cell].SetCaption(FormatSeconds(event.EventTime));
  }
  RecalculateCuts();
  counts_ = RecountLaps(log_, IsFai());
}

void frmLane::cmdLap_Click() {
  if (race_.RaceActive) EnterByHand([this] { DoLap(owner_.RaceTime(), kPanelLockOut); });
}

void frmLane::chkNovice_Click() {
  if (InNoviceClick_) return;
  const Restored busy(InNoviceClick_, true);
  if (race_.RaceActive) {
    chkNovice.SetValue(chkNovice.Value() == 1 ? 0 : 1);
    return;
  }
  ShowNovice();
}

void frmLane::ShowNovice() {
  const bool novice = chkNovice.Value() != 0;
  chkNovice.SetForeColor(novice ? kRed : kBlack);
  lblHdr[1].SetVisible(!novice);
  // A novice's second column is the free lap: it is hidden, and the numbers go on after it.
  for (int i = novice ? 2 : 0; i <= lblHdr.Upper(); ++i) {
    lblHdr[i].SetCaption("Lap " + std::to_string(novice ? i : i + 1));
  }
}

void frmLane::DoCut(const std::string& cutCode, int source, std::int32_t time) {
  const std::int32_t t = ToRaceTime(time);
  if (doesNotFly_) return;
  if (counts_.laps > kLastLapCell) {
    NeedsCutDisplay_ = true;
    return;
  }
  const bool late = (source == 1 || source == 2) && counts_.laps >= 1 &&
                    std::int64_t{t} - log_.LatestLapTime() < kPreviousLap;
  log_.EnterCuts({.wanted = source == kPanelSource ? LeadingInteger(cutCode) : CutsOfCode(cutCode),
                  .source = source,
                  .time = t,
                  .laps = counts_.laps,
                  .lapOfCut = counts_.laps - (late ? 1 : 0),
                  .cutsOnLane = counts_.cutCount,
                  .missedPylon = MissedPylon_});
  RecalculateCuts();
  owner_.IssueRaceEvent();
  EntryMade();
}

void frmLane::cntrCut(int pylon) {
  std::int32_t& lastTime = MissedPylonTimes_[static_cast<std::size_t>(pylon - 1)];
  const std::int32_t now = owner_.RaceTime();
  if (now <= std::int64_t{lastTime} + kBetweenMissedPylons) return;
  EnterPanelCut(pylon, race_.RaceActive && counts_.cutCount < 4);
  lastTime = now;
}

// One more cut than the lane has, named after the missed pylon (0: none), unless it is refused.
void frmLane::EnterPanelCut(int missedPylon, bool accepted) {
  const int before = MissedPylon_;
  MissedPylon_ = missedPylon;
  if (!accepted) return;
  try {
    EnterByHand([this] { DoCut(std::to_string(counts_.cutCount + 1), kPanelSource, owner_.RaceTime()); });
  } catch (const RunTimeError&) {
    MissedPylon_ = before;
    throw;
  }
}

void frmLane::DoTurn(int source, std::int32_t time, std::int32_t interval) {
  const std::int32_t t = ToRaceTime(time);
  if (doesNotFly_) return;
  const std::int32_t end = AddLong(owner_.RaceTime(), interval);
  log_.AddEvent(Entry("T", t, source, counts_.laps, MissedPylon_));
  tmrLaps.SetEnabled(false);
  tmrTurns.SetInterval(interval);
  tmrTurns.SetEnabled(true);
  lblStatus.SetBackColor(kGreen);
  TurnTimerEnd_ = end;
  // The formula of the speed, 0.50795 / ms * 0.68181818, is below 1 for any time since the last lap.
  if (counts_.laps > 1 && !StatusLocked()) SetStatus("0 MPH");
  RecalculateCuts();
  owner_.IssueRaceEvent();
  EntryMade();
}

bool frmLane::CanDoTurn() const {
  return !tmrTurns.Enabled() && !IsFinished();
}

bool frmLane::HasTurnOf(std::int32_t time) const {
  const std::int64_t reported = ToRaceTime(time);
  return log_.HasTurnWithin(reported - kTurnReports, reported + kClocksDiffer);
}

void frmLane::cmdTurn_Click() {
  if (!race_.RaceActive || !CanDoTurn()) return;
  log_.Require(1);
  MissedPylon_ = 0;
  EnterByHand([this] { DoTurn(kPanelSource, owner_.RaceTime(), kPanelTurn); });
}

void frmLane::RecalculateCuts() {
  NeedsCutDisplay_ = false;
  const CutRecount r = RecountCuts(log_, IsFai());
  counts_ = static_cast<const LapRecount&>(r);
  Turns_ = r.turns;
  for (const CutMark& mark : r.marks) {
    Control& label = lblCut[mark.index];
    label.SetCaption(mark.caption);
    label.SetTag(mark.tag);
    label.SetBackColor(mark.grey ? kButtonFace : kWhite);
    label.SetAnchor(&lblLap[mark.column]);
    label.SetVisible(true);
  }
  const int marks = r.turns + r.cutCount;
  for (int i = marks; i <= kLastCutMark; ++i) lblCut[i].SetVisible(false);
  if (popUpOf_ >= marks) HidePopUp();
  ShowEleventhCell();
  DisplayTotals();
}

// A cut that is entered or withdrawn after the tenth lap decides whether there is an eleventh.
void frmLane::ShowEleventhCell() {
  if (Loaded() || doesNotFly_) return;
  Control& cell = lblLap[kLastLapCell];
  const bool owed = counts_.lapTarget > kLastLapCell && counts_.laps >= kLastLapCell;
  if (cell.Visible() == owed) return;
  cell.SetCaption("");
  cell.SetBackColor(kWhite);
  cell.SetVisible(owed);
  if (owed) lblLap[kLastLapCell - 1].SetBackColor(kSilver);  // the tenth is not the finish any more
}

void frmLane::ShowCuts(int cuts) {
  cutsShown_ = cuts;
  cmdCut.SetTag(std::to_string(cuts));
  cmdCut.SetCaption(cuts == 0 ? "Cut" : "Cuts(" + std::to_string(cuts) + ")");
}

void frmLane::DisplayCutTotals() {
  const int cuts = counts_.cutsBeforeFinish;
  if (cuts == cutsShown_ || StatusLocked()) return;
  ShowCuts(cuts);
  SetStatus(cuts >= 2 ? "DBL CUT" : "");
  lblStatus.SetForeColor(cuts == 0 ? kWindowText : kRed);
}

void frmLane::lblCut_MouseMove(int index) {
  Control& mark = lblCut[index];
  if (popUpOf_ == index) return;
  popUpOf_ = index;
  cmdShow.SetAnchor(&mark);
  cmdShow.SetCaption(mark.Caption());
  cmdShow.SetVisible(true);
  cmdShow.SetTag(std::to_string(index));
}

}  // namespace quorvane
