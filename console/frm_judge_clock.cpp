// The clock's ticks and what they show.

#include <algorithm>

#include "base/time_text.h"
#include "console/frm_judge.h"

namespace quorvane {

void frmJudge::tmrTimeTick_Timer() {
  DisplayStatus();
  bool allFinished = false;
  CheckRaceComplete(allFinished);
  if (allFinished) {
    FinalizeRace();
    race_.RaceDone = true;
    tmrTimeTick.SetEnabled(false);
    return;
  }
  IssueTimeEvent();
  ArmTick();
}

// The tick at the start of a race shows and updates, but concludes nothing: the clock still reads what it
// read before the race, which may be long after any finish.
void frmJudge::ShowClockTick() {
  DisplayStatus();
  const std::int32_t t = RaceTime();
  for (const auto& lane : lanes_) {
    if (!lane->IsFinished()) lane->UpdateLapTime(t);
  }
  IssueTimeEvent();
  ArmTick();
}

void frmJudge::ArmTick() {
  const std::int32_t remainder = SubtractLong(RaceTime(), race_.RaceStartRef) % 100;
  tmrTimeTick.SetInterval(remainder > 0 ? remainder : 100);
}

void frmJudge::CheckRaceComplete(bool& allFinished) {
  allFinished = true;
  const std::int32_t t = RaceTime();
  for (const auto& lane : lanes_) {
    if (lane->IsFinished()) {
      lane->FinalizeRace();
    } else {
      allFinished = false;
      lane->UpdateLapTime(t);
    }
  }
}

void frmJudge::DisplayStatus() {
  if (ShowClock()) IssueRaceEvent(true);
}

// True when the stations are to be told of what it shows now: a hold, the start signal, a whole second.
bool frmJudge::ShowClock() {
  const std::int32_t t = RaceTime();
  std::string caption;
  Color back = kSilver;
  Color fore = kDarkGrey;
  bool tell = race_.RaceHolding;
  if (race_.RaceHolding) {
    caption = "Holding";
    back = Color::Rgb(0xFFFFD0);
    fore = kRed;
  } else if (!race_.RaceActive) {
    caption = "Waiting";
  } else if (chkSixtySecondCount.Value() == 0 && race_.ManualStart) {
    caption = FormatTenths(t);
    back = kWhite;
    fore = kWindowText;
  } else if (t < 60000) {
    CountdownRunning_ = true;
    const std::int64_t left = (std::int64_t{60000} - t + 999) / 1000;
    caption = std::to_string(std::min<std::int64_t>(left, 60));
    back = Color::Rgb(0xFFC0C0);
    fore = kWindowText;
  } else {
    if (CountdownRunning_) {
      CountdownRunning_ = false;
      // A starter that counts again after the race must not write over its results.
      if (!race_.RaceDone) {
        for (const auto& lane : lanes_) lane->UpdateLapTime(t);
      }
      tell = true;
    }
    caption = FormatTenths(t - 60000);
    back = Color::Rgb(0xC0FFC0);
    fore = kWindowText;
  }
  lblStatus.SetCaption(caption);
  if (lblStatus.BackColor() != back) {
    lblStatus.SetBackColor(back);
    lblStatus.SetForeColor(fore);
  }
  return tell || caption.ends_with(".0");
}

}  // namespace quorvane
