// What was entered is put right, and the panel follows.

#include <algorithm>

#include "base/text.h"
#include "lane/frm_lane.h"

namespace quorvane {

std::optional<LaneLog::Taken> frmLane::Strike(unsigned serial, const char* what) {
  const int index = log_.Find(serial);
  if (index < 0) return std::nullopt;
  std::optional<LaneLog::Taken> taken;
  Correct([&] {
    taken = log_.Strike(index, CorrectionTime(), what);
    ResetLocks(taken->event);
  });
  return taken;
}

void frmLane::PutBack(const LaneLog::Taken& taken, const char* what) {
  if (log_.Find(taken.event.Serial) >= 0) return;
  Correct([&] { log_.PutBack(taken, CorrectionTime(), what, NoviceWithoutLap()); });
}

// Nobody can tell two laps apart that read the same.
std::optional<unsigned> frmLane::InsertLap(std::int32_t lapTime) {
  const bool future = !Loaded() && lapTime > ToRaceTime(owner_.RaceTime());
  const bool there = std::ranges::any_of(log_.Entries(), [&](const LaneEvent& event) {
    return event.Kind == "L" && FormatSeconds(event.EventTime) == FormatSeconds(lapTime);
  });
  if (doesNotFly_ || lapTime <= 0 || future || there) return std::nullopt;
  unsigned serial = 0;
  Correct([&] { serial = log_.InsertLap(lapTime, CorrectionTime(), NoviceWithoutLap()); });
  return serial;
}

void frmLane::MoveCut(unsigned serial, int pylon) {
  const int index = log_.Find(serial);
  if (index < 0 || !log_[index].Kind.ends_with('C')) return;
  Correct([&] { log_.MoveCut(index, pylon, CorrectionTime()); });
}

std::int32_t frmLane::CorrectionTime() const {
  return Loaded() ? 0 : ToRaceTime(owner_.RaceTime());
}

bool frmLane::NoviceWithoutLap() const {
  return CreditsLap() && log_.CountLaps() == 0;
}

bool frmLane::CreditsLap() const {
  return Loaded() ? log_.CreditsLap() : chkNovice.Value() != 0;
}

void frmLane::Correct(const std::function<void()>& change) {
  const bool timedOut = SinceLastLap() >= kLapOverdue;
  change();
  if (Loaded()) log_.DateCorrection(owner_.Timestamp());
  ShowCorrected(timedOut);
  owner_.Corrected(laneNumber_, log_.Corrections().back());
  owner_.IssueLapEvent();
}

// The lock-out of what has been struck must not cost the lane the true entry.
void frmLane::ResetLocks(const LaneEvent& struck) {
  Control& light = struck.Kind == "L" ? tmrLaps : tmrTurns;
  if (struck.Kind.ends_with('C')) {
    if (struck.Source == kPanelSource) MissedPylonTimes_.fill(0);
  } else if (light.Enabled()) {
    light.SetEnabled(false);
    lblStatus.SetBackColor(kWindow);
  }
}

void frmLane::ShowCorrected(bool timedOut) {
  RecalculateCuts();
  counts_ = RecountLaps(log_, IsFai());
  ShowLoggedLaps();
  cutsShown_ = -1;
  if (!Loaded()) LastLapTime_ = log_.LatestLapTime();
  if (Loaded() || race_.RaceDone) {
    FinalizeRace();
    ShowResult();
    for (Control* cell : lblLap) {
      if (Loaded()) cell->SetVisible(cell->Caption().find_first_not_of(' ') != std::string::npos);
    }
    return owner_.ResultChanged();
  }
  // What was shown of a finish that is none any more.
  if (!StatusLocked()) SetStatus("");
  for (Control* box : {&txtLapTen, &txtLapEleven}) {
    box->SetText("");
    box->SetBackColor(kSilver);
  }
  if (race_.RaceActive && !timedOut && counts_.laps < counts_.lapTarget) ResumeFlight();
  if (IsFinished()) return FinalizeRace();
  DisplayCutTotals();
  UpdateLapTime(owner_.RaceTime());
}

}  // namespace quorvane
