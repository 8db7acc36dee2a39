// The race on the console after a crash, or after a slip of the hand.

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

// No aircraft is in the air any longer after the start signal: eleven laps of thirty seconds each.
constexpr std::int32_t kLongestFlight = 11 * 30000;

// In ms of race time.
std::int64_t SignalOf(const KeptRace& kept) {
  return SubtractLong(Starter::kSignal, kept.race.starter.laneStart);
}

// After so many ms.
bool MayBeInTheAir(const KeptRace& kept, std::int64_t passed) {
  return !kept.race.done && passed >= 0 && kept.at.raceTime + passed <= SignalOf(kept) + kLongestFlight;
}

// Of so many ms that have passed: before the start signal there is nothing to judge.
std::int64_t NotJudged(const KeptRace& kept, std::int64_t passed) {
  const std::int64_t from = std::max<std::int64_t>(kept.at.raceTime, SignalOf(kept));
  return std::max<std::int64_t>(kept.at.raceTime + passed - from, 0);
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
  if (race_.AtStake() || race_.Amending) return;
  const auto kept = keeper_.Dropped();
  if (!kept) return keeper_.ForgetDropped();
  if (!MayTakeUp(*kept)) return keeper_.SetDroppedAside(AmendmentOutdated(kept->race.number));
  TakeUp(*kept);
  keeper_.DroppedIsTaken();
}

std::string frmJudge::AmendmentOutdated(int race) {
  return fmt::format("Race {} has been changed since: its amendment", race);
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
    if (yes && still && door_.Contain([&] { TakeUp(*kept); })) {
      keeper_.LeftIsTaken();
    } else if (still) {
      keeper_.LeftIsDropped();
    }
  } else if (kept && !kept->race.amends.empty()) {
    return keeper_.EndOffer(AmendmentOutdated(kept->race.number));
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

// Past its start signal, or something is noted of it.
bool frmJudge::HasBegun(const KeptRace& kept) const {
  return kept.race.done || kept.at.raceTime >= SignalOf(kept) ||
         std::ranges::any_of(lanes_, [](const auto& lane) { return lane->EventCount() != 0; });
}

// While its aircraft may still be in the air the clock runs on by the time that has passed. One that was
// still counted down then is ready to be started again: nobody has flown it.
void frmJudge::TakeUp(const KeptRace& kept) {
  const RunningRace& race = kept.race;
  if (!race.amends.empty()) return ResumeAmending(kept);
  const std::int64_t passed = MsBetween(kept.at.computer, door_.LookAtComputer());
  const bool inTheAir = MayBeInTheAir(kept, passed);
  ShowAsItWas(kept);
  if (!inTheAir && !HasBegun(kept)) {
    race_.RaceLoaded = true;
    race_.ManualStart = false;
    ReadyForNextRace();
    return notices_.Show("Race recovered: it had not begun, start it again", Notices::Kind::kRecovered);
  }
  RunRace();
  radioBefore_ = kept.at.radio;
  recovered_ = race.recovered.empty() ? "" : race.recovered + "; ";
  if (inTheAir) {
    FlyOn(race.starter, ToLong(kept.at.raceTime + passed));
    const std::string missed = FormatRatio(NotJudged(kept, passed), 1000, 2) + " s";
    recovered_ += missed + " not judged";
    notices_.Show("Race recovered: " + missed + " were not judged", Notices::Kind::kRecovered);
  } else {
    starter_.Resume(race.starter, clock_.RaceTime());
    FinalizeRace();
    // Called off before its signal it is saved only where somebody says so.
    race_.RaceActive = race.done || kept.at.raceTime >= SignalOf(kept);
    for (const auto& lane : lanes_) lane->ShowHandButtons();
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
