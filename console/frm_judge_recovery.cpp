// The race on the console kept on the disk, so that neither a crash nor a slip of the hand loses it.

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "console/frm_judge.h"
#include "results/race_records.h"

namespace quorvane {
namespace {

// No aircraft is in the air any longer after the start signal: eleven laps of thirty seconds each.
constexpr std::int32_t kLongestFlight = 11 * 30000;

ReadValue Reader(const ProfileFile& file) {
  return [&file](const std::string& section, const std::string& key, const std::string& fallback) {
    return file.Read(section, key).value_or(fallback);
  };
}

}  // namespace

// Run after every event. What has changed since it was kept goes to the disk; what is saved needs it no more.
void frmJudge::KeepRunningRace() {
  if (!race_.AtStake() || race_.RaceLoaded) {
    if (!kept_ || !project_.Saved()) return;
    keeper_.Remove(keptFile_);
    kept_.reset();
    return;
  }
  KeptState state{RunningNow(), {}};
  for (std::size_t i = 0; i < lanes_.size(); ++i) state.lanes[i] = lanes_[i]->Running();
  if (kept_ == state) return;
  kept_ = std::move(state);
  keptText_ = RunningText(kept_->race);
  keptFile_ = BesideProject(race_.ProjectFile, kRunningEnding);
  SetAsideWhatWasFound();
  keeper_.Keep(keptFile_, keptText_);
}

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
          .clockOfZero = door_.Now() - RaceTime()};
}

std::string frmJudge::RunningText(const RunningRace& race) {
  ProfileFile file;
  WriteRunning(file, race, {RaceTime(), door_.ComputerNow()});
  const auto keep = [&](const std::string& section, const std::string& key, const std::string& value) {
    file.Write(section, key, value);
  };
  for (const auto& lane : lanes_) lane->KeepRunning(kRunningSection, keep);
  return file.Serialize();
}

// A race that goes without being saved can be brought back until the next one starts.
void frmJudge::DropRunningRace() {
  if (!kept_) return;
  droppedText_ = keptText_;
  keeper_.Keep(BesideProject(race_.ProjectFile, kDroppedEnding), droppedText_);
  keeper_.Remove(keptFile_);
  kept_.reset();
}

void frmJudge::ForgetDroppedRace() {
  if (std::exchange(droppedText_, {}).empty()) return;
  keeper_.Remove(BesideProject(race_.ProjectFile, kDroppedEnding));
}

void frmJudge::mnuBringBack_Click() {
  if (race_.AtStake()) return;
  const ProfileFile file(droppedText_);
  const auto kept = ReadRunning(file);
  if (kept) TakeUp(*kept, file);
  ForgetDroppedRace();
}

// The program died after the race had been saved.
bool frmJudge::InProject(const KeptRace& kept, const ProfileFile& file) {
  const auto same = [&](const std::string& section) {
    return std::ranges::all_of(lanes_, [&](const auto& lane) {
      return std::ranges::equal(lane->LogIn(kRunningSection, Reader(file)).Entries(),
                                lane->LogIn(section, OpenProject(project_, race_).read).Entries());
    });
  };
  const int number = kept.race.number;
  if (kept.race.refly) return same(book_.ShownSection(number));
  // It was given the next free number where its own was taken.
  for (int race = number; race <= kLastRace && HasRun(race); ++race) {
    if (same(RaceBook::Section(race))) return true;
  }
  return false;
}

// "Race 7, heat 3, round 2, 4 laps on lane 1, 1 lap on lane 2".
std::string frmJudge::StoryOf(const RunningRace& race, const ProfileFile& file) const {
  std::string story = fmt::format("Race {}{}, heat {}, round {}", race.number, race.refly ? " refly" : "",
                                  race.heat, race.round);
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    const int laps = lanes_[i]->LogIn(kRunningSection, Reader(file)).CountLaps();
    if (laps > 0) story += fmt::format(", {} lap{} on lane {}", laps, laps == 1 ? "" : "s", i + 1);
  }
  return story;
}

// What the program left behind when it died with this project open. Before any box: a race may begin behind
// it.
void frmJudge::FindKeptRaces() {
  found_ = keeper_.Read(BesideProject(race_.ProjectFile, kRunningEnding)).value_or("");
  droppedText_ = keeper_.Read(BesideProject(race_.ProjectFile, kDroppedEnding)).value_or("");
}

// Asked once for a project: whether to go on with the race that was on the console when the program died.
void frmJudge::OfferRecovery() {
  const ProfileFile file(found_);
  const auto kept = ReadRunning(file);
  if (kept && InProject(*kept, file)) {
    found_.clear();
  } else if (kept && !race_.AtStake()) {
    const std::int64_t ago = MsBetween(kept->at.computer, door_.LookAtComputer());
    const DialogBox box{DialogKind::YesNo, "Recover Race",
                        StoryOf(kept->race, file) + ", " + AgoText(ago) + "\r\rRecover this race?"};
    const bool yes = door_.Ask(box).word == DialogAnswer::Word::Yes;
    if (yes && !found_.empty() && door_.Contain([&] { TakeUp(*kept, file); })) found_.clear();
  }
  SetAsideWhatWasFound();
  if (!race_.AtStake()) keeper_.Remove(BesideProject(race_.ProjectFile, kRunningEnding));
}

// Nothing that was flown is thrown away: what is not taken up goes under another name.
void frmJudge::SetAsideWhatWasFound() {
  if (found_.empty()) return;
  std::string aside;
  for (int number = 1; aside.empty() || FileExists(aside); ++number) {
    aside = BesideProject(race_.ProjectFile, kRunningEnding) + "-" + std::to_string(number);
  }
  keeper_.Keep(aside, std::exchange(found_, {}));
  ShowNotice("The race that was not recovered is kept in " + FileNameOf(aside));
}

// Puts everything back as it was. While its aircraft may still be in the air the clock runs on by the time
// that has passed; each lane that had not finished then gets its time for a lap from now.
void frmJudge::TakeUp(const KeptRace& kept, const ProfileFile& file) {
  const RunningRace& race = kept.race;
  const std::int64_t passed = MsBetween(kept.at.computer, door_.LookAtComputer());
  const std::int64_t now = kept.at.raceTime + passed;
  const std::int32_t signal = SubtractLong(Starter::kSignal, race.starter.laneStart);
  const bool inTheAir = !race.done && passed >= 0 && now <= std::int64_t{signal} + kLongestFlight;

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
  for (const auto& lane : lanes_) lane->ResumeRace(kRunningSection, Reader(file));
  Lane(3).SetVisible(!race_.IsFaiMode);
  undo_.ReadLogs();
  RunRace();
  recovered_ = race.recovered.empty() ? "" : race.recovered + "; ";
  if (!inTheAir) {
    starter_.Resume(race.starter, RaceTime());
    FinalizeRace();
    race_.RaceDone = true;
    recovered_ += race.done ? "after its end" : "stopped at " + FormatSeconds(kept.at.raceTime);
    DisplayStatus();
    return ShowNotice("Race recovered: look at it, then save it");
  }
  std::array<bool, 4> finished{};
  for (std::size_t i = 0; i < lanes_.size(); ++i) finished[i] = lanes_[i]->IsFinished();
  clock_.ResetRaceClock(ToLong(now));
  starter_.Resume(race.starter, RaceTime());
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    if (!finished[i]) lanes_[i]->ResumeFlight();
  }
  GoOnTicking();
  recovered_ += FormatSeconds(ToLong(passed)) + " s not judged";
  DisplayStatus();
  ShowNotice("Race recovered: " + FormatSeconds(ToLong(passed)) + " s were not judged");
}

}  // namespace quorvane
