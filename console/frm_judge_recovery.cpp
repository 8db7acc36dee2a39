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
  RunningRace race{.number = race_.RaceNumber,
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
  amendment_.Describe(race);
  return race;
}

void frmJudge::mnuBringBack_Click() {
  if (race_.AtStake()) return;
  if (const auto kept = keeper_.Dropped(); kept && MayTakeUp(*kept)) TakeUp(*kept);
  keeper_.ForgetDropped();
}

// Asked once for a project: whether to go on with what was on the console when the program died.
void frmJudge::OfferRecovery() {
  const auto kept = keeper_.Left();
  if (kept && MayTakeUp(*kept)) {
    const std::int64_t ago = MsBetween(kept->at.computer, door_.LookAtComputer());
    const char* what = kept->race.amends.empty() ? "race" : "amendment";
    const DialogBox box{
        DialogKind::YesNo, "Recover Race",
        fmt::format("{}, {}\r\rRecover this {}?", keeper_.StoryOf(*kept), AgoText(ago), what)};
    const bool yes = door_.Ask(box).word == DialogAnswer::Word::Yes;
    const bool still = keeper_.HasLeft() && MayTakeUp(*kept);
    if (yes && still && door_.Contain([&] { TakeUp(*kept); })) keeper_.LeftIsTaken();
  } else if (kept && !kept->race.amends.empty()) {
    return keeper_.EndOffer(fmt::format("Race {} has been changed since: its amendment", kept->race.number));
  }
  keeper_.EndOffer();
}

// A race that is to be amended must be the one that it was.
bool frmJudge::MayTakeUp(const KeptRace& kept) {
  const std::string& section = kept.race.amends;
  if (section.empty() || race_.AtStake()) return !race_.AtStake();
  return HasRun(kept.race.number) && section == book_.ShownSection(kept.race.number) &&
         amendment_.Version(section) == kept.race.version;
}

void frmJudge::ResumeAmending(const KeptRace& kept) {
  race_.RaceNumber = ToInteger(kept.race.number);
  ShowCurrentRace();
  mnuAmend_Click();
  amendment_.Resume(kept);
  txtComments.SetText(kept.race.comments);
  ShowNotice("Amendment recovered: Save writes it in its place, Reset leaves the race as it was");
}

// While its aircraft may still be in the air the clock runs on by the time that has passed.
void frmJudge::TakeUp(const KeptRace& kept) {
  const RunningRace& race = kept.race;
  if (!race.amends.empty()) return ResumeAmending(kept);
  const std::int64_t passed = MsBetween(kept.at.computer, door_.LookAtComputer());
  const bool inTheAir = MayBeInTheAir(kept, passed);
  ShowAsItWas(kept);
  RunRace();
  radioBefore_ = kept.at.radio;
  recovered_ = race.recovered.empty() ? "" : race.recovered + "; ";
  if (inTheAir) {
    FlyOn(race.starter, ToLong(kept.at.raceTime + passed));
    const std::string missed = FormatSeconds(ToLong(passed)) + " s";
    recovered_ += missed + " not judged";
    notices_.Show("Race recovered: " + missed + " were not judged", Notices::Kind::kRecovered);
  } else {
    starter_.Resume(race.starter, clock_.RaceTime());
    FinalizeRace();
    recovered_ += race.done ? "after its end" : "stopped at " + FormatSeconds(kept.at.raceTime);
    notices_.Show("Race recovered: look at it, then save it", Notices::Kind::kRecovered);
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
