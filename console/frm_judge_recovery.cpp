// The race on the console after a crash, or after a slip of the hand.

#include <fmt/format.h>

#include "base/text.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

// No aircraft is in the air any longer after the start signal: eleven laps of thirty seconds each.
constexpr std::int32_t kLongestFlight = 11 * 30000;

// After so many ms.
bool MayBeInTheAir(const KeptRace& kept, std::int64_t passed) {
  const std::int64_t signal = SubtractLong(Starter::kSignal, kept.race.starter.laneStart);
  return !kept.race.done && passed >= 0 && kept.at.raceTime + passed <= signal + kLongestFlight;
}

}  // namespace

RunningRace frmJudge::RunningNow() const {
  return {.number = race_.RaceNumber,
          .refly = race_.ReflyMode,
          .heat = race_.Heat(),
          .round = race_.Round(),
          .mode = race_.RaceMode,
          .byHand = race_.ManualStart,
          .sixtySecondCount = chkSixtySecondCount.Value() == 1,
          .done = race_.RaceDone,
          .starter = starter_.Remember(),
          .comments = txtComments.Text(),
          .recovered = recovered_,
          .clockOfZero = door_.Now() - clock_.RaceTime()};
}

void frmJudge::mnuBringBack_Click() {
  if (race_.AtStake()) return;
  if (const auto kept = keeper_.Dropped()) TakeUp(*kept);
  keeper_.ForgetDropped();
}

// Asked once for a project: whether to go on with the race that was on the console when the program died.
void frmJudge::OfferRecovery() {
  const auto kept = keeper_.Left();
  if (kept && !race_.AtStake()) {
    const std::int64_t ago = MsBetween(kept->at.computer, door_.LookAtComputer());
    const DialogBox box{DialogKind::YesNo, "Recover Race",
                        keeper_.StoryOf(*kept) + ", " + AgoText(ago) + "\r\rRecover this race?"};
    const bool yes = door_.Ask(box).word == DialogAnswer::Word::Yes;
    if (yes && keeper_.HasLeft() && door_.Contain([&] { TakeUp(*kept); })) keeper_.LeftIsTaken();
  }
  keeper_.EndOffer();
}

// While its aircraft may still be in the air the clock runs on by the time that has passed.
void frmJudge::TakeUp(const KeptRace& kept) {
  const RunningRace& race = kept.race;
  const std::int64_t passed = MsBetween(kept.at.computer, door_.LookAtComputer());
  const bool inTheAir = MayBeInTheAir(kept, passed);
  ShowAsItWas(kept);
  RunRace();
  recovered_ = race.recovered.empty() ? "" : race.recovered + "; ";
  if (inTheAir) {
    FlyOn(race.starter, ToLong(kept.at.raceTime + passed));
    const std::string missed = FormatSeconds(ToLong(passed)) + " s";
    recovered_ += missed + " not judged";
    ShowNotice("Race recovered: " + missed + " were not judged");
  } else {
    starter_.Resume(race.starter, clock_.RaceTime());
    FinalizeRace();
    recovered_ += race.done ? "after its end" : "stopped at " + FormatSeconds(kept.at.raceTime);
    ShowNotice("Race recovered: look at it, then save it");
  }
  DisplayStatus();
}

void frmJudge::ShowAsItWas(const KeptRace& kept) {
  const RunningRace& race = kept.race;
  race_.RaceNumber = ToInteger(race.number);
  ShowCurrentRace();
  race_.RaceLoaded = false;
  race_.ReflyMode = race.refly;
  ShowHeatCaption(race.refly, race.refly ? kRed : kButtonText);
  ApplyRaceMode(race.mode);
  chkSixtySecondCount.SetValue(race.sixtySecondCount ? 1 : 0);
  txtComments.SetText(race.comments);
  race_.ManualStart = race.byHand;
  race_.LaneStartOffset = race.starter.laneStart;
  clock_.ResetRaceClock(kept.at.raceTime);
  for (const auto& lane : lanes_) lane->ResumeRace(kRunningSection, kept.Reader());
  Lane(3).SetVisible(!race_.IsFaiMode);
  desk_.Undo().ReadLogs();
}

// Each lane that had not finished when the program died gets its time for a lap from now.
void frmJudge::FlyOn(const Starter::Memory& starter, std::int32_t raceTime) {
  std::vector<frmLane*> flown;
  for (const auto& lane : lanes_) {
    if (!lane->IsFinished()) flown.push_back(lane.get());
  }
  clock_.ResetRaceClock(raceTime);
  starter_.Resume(starter, clock_.RaceTime());
  for (frmLane* lane : flown) lane->ResumeFlight();
  GoOnTicking();
}

}  // namespace quorvane
