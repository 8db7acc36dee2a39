// The race from ready through running to finished.

#include <algorithm>
#include <set>

#include "base/text.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

constexpr std::int32_t kDoesNotFly = -1000000;

}  // namespace

void frmJudge::cmdStart_Click() {
  race_.ManualStart = true;
  ReleaseHold();
  door_.System().BringForward(*this);
  if (chkSixtySecondCount.Value() == 0) {
    LaneStartOffset_ = 60000;
    clock_.ResetRaceClock(0, "Null");
  } else {
    // The count begins 60 ms ahead; this is meant.
    LaneStartOffset_ = 0;
    clock_.ResetRaceClock(60, "Null");
  }
  InitializeRace(LaneStartOffset_);
}

void frmJudge::InitializeRace(std::int32_t laneStart) {
  if (!race_.RaceLoaded) cmdSave_Click();
  if (!race_.RaceActive) ResetKeepingComments(laneStart);
  // Showing the race has marked it as loaded; a race that is flown is not, or it would not be saved.
  race_.RaceLoaded = false;
  starterClock_.reset();
  laneStart_ = laneStart;
  if (chkAudio.Value() == 1) {
    PlaySound(door_.System(), door_.System().ProgramFolder() + "WarbirdCountdownStart.wav");
  }
  ShowClockTick();
  door_.System().RepaintWindows();
  tmrTimeTick.SetEnabled(true);
  race_.RaceDone = false;
  race_.StartInfoPending = true;
  race_.RaceActive = true;
  clock_.RaceStopwatch.Reset();
  cboRaceMode.SetEnabled(false);
  cmdStart.SetEnabled(false);
  cmdReset.SetEnabled(true);
  IssueRaceEvent(true);
  ShowClock();
}

void frmJudge::FinalizeRace() {
  cmdSave.SetEnabled(true);
  cmdReset.SetEnabled(true);
  cmdReorder.SetEnabled(true);
  cmdStart.SetEnabled(false);
  cboRaceMode.SetEnabled(false);
  for (const auto& lane : lanes_) lane->FinalizeRace();
  race_.LastRaceRun = race_.RaceNumber;
  tmrTimeTick.SetEnabled(false);
  RankLanes();
}

// A late cut or lap may change the order; what is saved must not contradict the logs.
void frmJudge::ResultChanged() {
  if (race_.RaceActive && cmdSave.Enabled()) RankLanes();
}

// A lane that the operator has placed keeps its place; the others share the places that are left.
void frmJudge::RankLanes() {
  struct Ranked {
    frmLane* lane;
    std::int32_t final;
  };
  std::array<Ranked, 4> order{};
  std::set<int> taken;
  for (std::size_t i = 0; i < order.size(); ++i) {
    order[i].lane = lanes_[i].get();
    order[i].final = lanes_[i]->GetFinal();
    taken.insert(lanes_[i]->PlaceByHand());
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const Ranked& a, const Ranked& b) { return a.final < b.final; });
  door_.System().RepaintWindows();
  int place = 0;
  for (const Ranked& ranked : order) {
    if (ranked.lane->StatusLocked()) continue;
    if (ranked.final >= kNoResult) {
      ranked.lane->Rank(0);
      continue;
    }
    do ++place;
    while (taken.contains(place));
    ranked.lane->Rank(place);
  }
}

void frmJudge::InitializeLanes(std::int32_t laneStart) {
  const std::int32_t o = laneStart;
  std::array<std::int32_t, 4> offsets = {o, o, o, o};
  const auto staggered = [o](std::int32_t first, std::int32_t second, std::int32_t third) {
    return std::array<std::int32_t, 4>{SubtractLong(o, first), SubtractLong(o, second),
                                       SubtractLong(o, third), kDoesNotFly};
  };
  switch (race_.RaceMode) {
    case 1:
    case 2:
    case 3:
      break;
    case 4:
      offsets = staggered(0, 1000, 2000);
      break;
    case 5:
      offsets = staggered(2000, 0, 1000);
      break;
    case 6:
      offsets = staggered(1000, 2000, 0);
      break;
    default:
      return;
  }
  for (std::size_t i = 0; i < lanes_.size(); ++i) lanes_[i]->InitializeRace(offsets[i]);
}

void frmJudge::ResetRaceControls(std::int32_t laneStart) {
  ++raceSerial_;
  // A refly stays on the race it repeats; showing that race anew would end the refly.
  if (!race_.ReflyMode) {
    SkipRacesRun();
    ShowHeatCaption(false);
    ShowCurrentRace();
  }
  LaneStartOffsetCopy_ = LaneStartOffset_;
  laneFlags_[0] = laneFlags_[1] = true;
  InitializeLanes(laneStart);
  Lane(3).SetVisible(race_.RaceMode <= 3);
  txtComments.SetText("No comments");
  cmdStart.SetEnabled(true);
  cboRaceMode.SetEnabled(true);
  cmdReset.SetEnabled(false);
  cmdSave.SetEnabled(false);
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
    bool allFinished = race_.RaceDone;
    if (!allFinished) CheckRaceComplete(allFinished);
    if (allFinished) {
      race_.RaceDone = true;
      FinalizeRace();
      cmdSave_Click();
      IssueRaceEvent(true);
    } else if (race_.ManualStart) {
      const unsigned serial = raceSerial_;
      DialogBox box{DialogKind::YesNoCancel, "Reset Race", "The race is still active.\rDo you want to save?"};
      box.usual = DialogAnswer::Word::Cancel;
      box.byRadio = byRadio;
      const DialogAnswer::Word word = door_.Ask(box).word;
      if (word == DialogAnswer::Word::Cancel) return false;
      if (serial != raceSerial_) return false;  // the race was concluded behind the box
      race_.RaceDone = word == DialogAnswer::Word::Yes;
      race_.RaceActive = race_.RaceDone;  // until it is saved
      FinalizeRace();
      if (word == DialogAnswer::Word::Yes) cmdSave_Click();
      IssueRaceEvent(true);
    }
    race_.ManualStart = false;
  }
  ReadyForNextRace();
  return true;
}

// A starter that fell silent in hold must leave neither "Holding" nor "Hold" over the next race.
void frmJudge::ReleaseHold() {
  race_.RaceHolding = false;
  CountdownRunning_ = false;
  ApplyRaceMode(race_.RaceMode);
}

// An abandoned race must not go on ticking. An abandoned refly is still to be flown.
void frmJudge::ReadyForNextRace() {
  race_.RaceActive = false;
  raceOver_ = door_.Now();
  ReleaseHold();
  starterClock_.reset();
  countTold_ = false;
  if (lblNotice.Caption() == kCountsOverRace) ShowNotice({});
  tmrTimeTick.SetEnabled(false);
  ResetKeepingComments(LaneStartOffset_);
  door_.System().StopWave();
  DisplayStatus();
}

void frmJudge::chkSixtySecondCount_Click() {
  const bool counting = chkSixtySecondCount.Value() == 1;
  chkAudio.SetVisible(counting);
  if (!counting) chkAudio.SetValue(0);
}

}  // namespace quorvane
