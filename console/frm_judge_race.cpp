// The race from ready through running to finished, and its clock.

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "console/frm_judge.h"
#include "results/race_records.h"

namespace quorvane {
void frmJudge::cmdStart_Click() {
  race_.ManualStart = true;
  ReleaseHold();
  door_.System().BringForward(*this);
  const bool counting = chkSixtySecondCount.Value() == 1;
  race_.LaneStartOffset = counting ? 0 : Starter::kSignal;
  clock_.ResetRaceClock(counting ? 60 : 0);  // the count begins 60 ms ahead; this is meant
  InitializeRace(race_.LaneStartOffset);
}

void frmJudge::InitializeRace(std::int32_t laneStart) {
  // What this start itself saves is told until the next one.
  notices_.TakeAway(Notices::Kind::kSaved);
  if (!race_.RaceLoaded) cmdSave_Click();
  if (!race_.RaceActive) ResetKeepingComments(laneStart);
  // Showing the race has marked it as loaded; a race that is flown is not, or it would not be saved.
  race_.RaceLoaded = false;
  starter_.RaceBegins(laneStart);
  if (chkAudio.Value() == 1) {
    PlaySound(door_.System(), door_.System().ProgramFolder() + "WarbirdCountdownStart.wav");
  }
  // Concludes nothing: the clock still reads what it read before the race, maybe long after any finish.
  DisplayStatus();
  for (const auto& lane : lanes_) {
    if (!lane->IsFinished()) lane->UpdateLapTime(clock_.RaceTime());
  }
  GoOnTicking();
  door_.System().RepaintWindows();
  RunRace();
  race_.StartInfoPending = true;
  clock_.ResetStopwatch();
  keeper_.ForgetDropped();
  notices_.TakeAway(Notices::Kind::kRecovered);
  notices_.TakeAway(Notices::Kind::kThrownAway);
  IssueRaceEvent();
  ShowClock();
}

void frmJudge::RunRace() {
  tmrTimeTick.SetEnabled(true);
  race_.RaceDone = false;
  race_.RaceActive = true;
  link_.BeginRace();
  cboRaceMode.SetEnabled(false);
  cmdStart.SetEnabled(false);
  cmdReset.SetEnabled(true);
}

void frmJudge::tmrTimeTick_Timer() {
  DisplayStatus();
  if (CheckRaceComplete()) return FinalizeRace();
  GoOnTicking();
}

// The stations are told the time once a second, and only while they still set their clocks.
void frmJudge::GoOnTicking() {
  const std::int32_t t = clock_.RaceTime();
  if (SubtractLong(t, 1000) >= LastTimeSent_ && t < 54000) IssueRaceEvent();
  const std::int32_t remainder = SubtractLong(t, race_.RaceStartRef) % 100;
  tmrTimeTick.SetInterval(remainder > 0 ? remainder : 100);
}

bool frmJudge::CheckRaceComplete() {
  bool allFinished = true;
  for (const auto& lane : lanes_) {
    if (lane->IsFinished()) {
      lane->FinalizeRace();
    } else {
      allFinished = false;
      lane->UpdateLapTime(clock_.RaceTime());
    }
  }
  return allFinished;
}

void frmJudge::DisplayStatus() {
  if (ShowClock()) IssueRaceEvent();
}

// True when the stations are to be told of what it shows now: a hold, the start signal, a whole second.
bool frmJudge::ShowClock() {
  const std::int32_t t = clock_.RaceTime();
  std::string caption;
  Color back = kSilver;
  Color fore = kWindowText;
  bool tell = race_.RaceHolding;
  if (race_.RaceHolding) {
    caption = "Holding";
    back = Color::Rgb(0xFFFFD0);
    fore = kRed;
  } else if (!race_.RaceActive) {
    caption = "Waiting";
    fore = kDarkGrey;
  } else if (chkSixtySecondCount.Value() == 0 && race_.ManualStart) {
    caption = FormatTenths(t);
    back = kWhite;
  } else if (t < Starter::kSignal) {
    CountdownRunning_ = true;
    const std::int64_t left = (std::int64_t{Starter::kSignal} - t + 999) / 1000;
    caption = std::to_string(std::min<std::int64_t>(left, 60));
    back = Color::Rgb(0xFFC0C0);
  } else {
    if (std::exchange(CountdownRunning_, false)) {
      // A starter that counts again after the race must not write over its results.
      if (!race_.RaceDone) {
        for (const auto& lane : lanes_) lane->UpdateLapTime(t);
      }
      tell = true;
    }
    caption = FormatTenths(t - Starter::kSignal);
    back = Color::Rgb(0xC0FFC0);
  }
  lblStatus.SetCaption(caption);
  if (lblStatus.BackColor() != back) {
    lblStatus.SetBackColor(back);
    lblStatus.SetForeColor(fore);
  }
  return tell || caption.ends_with(".0");
}

void frmJudge::OfferSave(bool offered) {
  race_.Unsaved = offered;
  cmdSave.SetEnabled(offered);
  cmdReset.SetEnabled(offered);
}

void frmJudge::FinalizeRace() {
  OfferSave(true);
  cmdReorder.SetEnabled(true);
  cmdStart.SetEnabled(false);
  cboRaceMode.SetEnabled(false);
  for (const auto& lane : lanes_) lane->FinalizeRace();
  race_.LastRaceRun = race_.RaceNumber;
  race_.LastRaceFile = race_.ProjectFile;
  tmrTimeTick.SetEnabled(false);
  desk_.RankLanes();
  race_.RaceDone = true;
}

void frmJudge::ResetRaceControls(std::int32_t laneStart) {
  ++raceSerial_;
  desk_.Undo().Clear();
  recovered_.clear();
  radioBefore_.reset();
  // A refly stays on the race it repeats; showing that race anew would end the refly.
  if (!race_.ReflyMode) {
    book_.SkipRacesRun();
    ShowCurrentRace();
  }
  desk_.InitializeRace(laneStart);
  Lane(3).SetVisible(!race_.IsFaiMode);
  txtComments.SetText(kDefaultComments);
  cmdStart.SetEnabled(true);
  cboRaceMode.SetEnabled(true);
  OfferSave(false);
  cmdReorder.SetEnabled(false);
}

// What was typed for the race about to be flown stays until that race is saved. The comments of a saved race
// that was only looked at stay with that race.
void frmJudge::ResetKeepingComments(std::int32_t laneStart) {
  const bool typedForThisRace = !Lane(0).Loaded() || race_.ReflyMode;
  const std::string comments = txtComments.Text();
  ResetRaceControls(laneStart);
  if (typedForThisRace) txtComments.SetText(comments);
}

bool frmJudge::cmdReset_Click(bool byRadio) {
  if (race_.RaceActive) {
    // An entry after the finish does not reopen a concluded race.
    if (race_.RaceDone || CheckRaceComplete()) {
      ConcludeByReset(true);
    } else if (race_.ManualStart) {
      const unsigned serial = raceSerial_;
      DialogBox box{DialogKind::YesNoCancel, "Reset Race", "The race is still active.\rDo you want to save?"};
      box.usual = DialogAnswer::Word::Cancel;
      box.byRadio = byRadio;
      const DialogAnswer::Word word = door_.Ask(box).word;
      if (word == DialogAnswer::Word::Cancel) return false;
      if (serial != raceSerial_) return false;  // the race was concluded behind the box
      ConcludeByReset(word == DialogAnswer::Word::Yes);
    }
    race_.ManualStart = false;
  }
  ReadyForNextRace();
  return true;
}

void frmJudge::ConcludeByReset(bool save) {
  race_.RaceActive = save;  // until it is saved
  FinalizeRace();
  race_.RaceDone = save;
  if (save) cmdSave_Click();
  IssueRaceEvent();
}

// A starter that fell silent in hold must leave neither "Holding" nor "Hold" over the next race.
void frmJudge::ReleaseHold() {
  race_.RaceHolding = false;
  CountdownRunning_ = false;
  ApplyRaceMode(race_.RaceMode);
}

// An abandoned race must not go on ticking. An abandoned refly is still to be flown.
void frmJudge::ReadyForNextRace() {
  const bool flown = std::ranges::any_of(lanes_, [](const auto& lane) { return lane->EventCount() > 0; });
  const bool lost = race_.AtStake() && keeper_.Drop() && flown;
  const std::string race = "Race " + std::to_string(race_.RaceNumber);
  race_.RaceActive = false;
  ReleaseHold();
  starter_.RaceEnds(door_.Now());
  starter_.countTold = false;
  notices_.TakeAway(Notices::Kind::kCountsOverRace);
  notices_.TakeAway(Notices::Kind::kRecovered);
  tmrTimeTick.SetEnabled(false);
  ResetKeepingComments(race_.LaneStartOffset);
  door_.System().StopWave();
  DisplayStatus();
  if (lost) {
    notices_.Show(race + " was thrown away: Bring Back Last Race gets it back", Notices::Kind::kThrownAway);
  }
}

}  // namespace quorvane
