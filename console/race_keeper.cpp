#include "console/race_keeper.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "results/race_records.h"

namespace quorvane {

void RaceKeeper::Keep(const RunningRace& race, const RadioSoFar& radio) {
  State state{race, {}};
  std::ranges::transform(lanes_, state.lanes.begin(), [](const auto& lane) { return lane->Running(); });
  const bool same = kept_ == state;
  if (same && (!race_.BeingFlown() || door_.Now() - keptAt_ < kBeat)) return;
  kept_ = std::move(state);
  keptAt_ = door_.Now();
  text_ = TextOf(race, radio);
  file_ = Beside(kRunningEnding);
  corrected_ = !race.amends.empty() && !InProject(*ReadRunning(text_));
  SetAside(Beside(kRunningEnding), left_, kNotRecovered);
  files_.Keep(file_, text_, std::exchange(replaced_, {}));
}

std::string RaceKeeper::TextOf(const RunningRace& race, const RadioSoFar& radio) {
  ProfileFile file;
  WriteRunning(file, race, {ToLong(door_.Now() - race.clockOfZero), door_.ComputerNow(), radio()});
  const auto keep = [&](const auto&... entry) { file.Write(entry...); };
  for (const auto& lane : lanes_) lane->KeepRunning(kRunningSection, keep);
  return file.Serialize();
}

void RaceKeeper::Release() {
  if (!kept_ || !project_.Saved()) return;
  files_.Remove(file_);
  kept_.reset();
}

// It was judged until now, and not only until it was kept last.
bool RaceKeeper::Drop() {
  if (!kept_) return false;
  const RunningRace race = std::exchange(kept_, {})->race;
  if (!race.amends.empty() && !corrected_) {
    files_.Remove(file_);
    return false;
  }
  SetAside(Beside(kDroppedEnding), dropped_, "What was thrown away before");
  ProfileFile file(text_);
  WriteMoment(file, {ToLong(door_.Now() - race.clockOfZero), door_.ComputerNow()});
  dropped_ = file.Serialize();
  files_.Keep(Beside(kDroppedEnding), dropped_, file_);
  return true;
}

void RaceKeeper::ForgetDropped() {
  const auto kept = Dropped();
  if (kept && !kept->race.amends.empty()) return;
  if (!std::exchange(dropped_, {}).empty()) files_.Remove(Beside(kDroppedEnding));
}

void RaceKeeper::DroppedIsTaken() {
  dropped_.clear();
  if (race_.MayCorrect()) {
    replaced_ = Beside(kDroppedEnding);
  } else {
    files_.Remove(Beside(kDroppedEnding));
  }
}

void RaceKeeper::SetDroppedAside(const std::string& what) {
  SetAside(Beside(kDroppedEnding), dropped_, what, Beside(kDroppedEnding));
}

void RaceKeeper::SetRunningAside(const std::string& what) {
  if (!std::exchange(kept_, {})) return;
  SetAside(Beside(kRunningEnding), text_, what, file_);
}

void RaceKeeper::FindLeft() {
  of_ = race_.ProjectFile;
  const auto left = Find(kRunningEnding);
  found_ = left.has_value();
  left_ = left.value_or("");
  dropped_ = Find(kDroppedEnding).value_or("");
  TakeUnsaved();
}

// Nothing is written later where something stands that cannot be read.
std::optional<std::string> RaceKeeper::Find(const char* ending) {
  auto text = files_.Read(Beside(ending));
  if (!text) MoveAside(ending, kNotRead);
  return text;
}

// What a program that died could not save goes into the project as if it had been saved now.
void RaceKeeper::TakeUnsaved() {
  if (project_.HasPending()) return;  // its own, of a project that is opened again
  const std::string text = Find(kUnsavedEnding).value_or("");
  if (text.empty()) return;
  const PendingTaken taken = project_.TakePending(text);
  if (taken == PendingTaken::OtherContest)
    return MoveAside(kUnsavedEnding, "What another contest could not save");
  if (taken == PendingTaken::NotAll) return MoveAside(kUnsavedEnding, kNotRead);
  unsaved_[Beside(kUnsavedEnding)] = 0;
  notices_.Show("What could not be saved before is in the project now");
}

void RaceKeeper::KeepUnsaved() {
  if (project_.Saved() && unsaved_.empty()) return;
  auto before = std::exchange(unsaved_, {});
  const auto stores = project_.Unsaved();
  const auto file = [](const ProjectStore* store) { return BesideProject(store->Path(), kUnsavedEnding); };
  for (const ProjectStore* store : stores) unsaved_[file(store)] = store->Pending();
  for (const auto& [old, number] : before) {
    if (!unsaved_.contains(old)) files_.Remove(old);
  }
  for (const ProjectStore* store : stores) {
    if (store->Pending() != before[file(store)]) files_.Keep(file(store), store->PendingText());
  }
}

void RaceKeeper::KeepReplaced() {
  for (auto& [project, text] : project_.TakeReplaced()) {
    SetAside(BesideProject(project, kReplacedEnding), text,
             "The project before another program took a race out of it");
  }
}

// The program may have died after the race had been saved.
std::optional<KeptRace> RaceKeeper::Left() {
  auto kept = ReadRunning(left_);
  if (!kept || !InProject(*kept)) return kept;
  left_.clear();
  return std::nullopt;
}

bool RaceKeeper::InProject(const KeptRace& kept) {
  const int number = kept.race.number;
  if (!kept.race.amends.empty()) return SavedIn(kept.race.amends, kept);
  if (kept.race.refly) {
    const std::string shown = book_.ShownSection(number);
    return shown != RaceSection(number) && SavedIn(shown, kept);
  }
  // It was given the next free number where its own was taken.
  for (int race = number; race <= kLastRace && book_.HasRun(race); ++race) {
    if (SavedIn(RaceSection(race), kept)) return true;
  }
  return false;
}

// A race may have gone on after it was kept: then that is the beginning of what is saved.
bool RaceKeeper::SavedIn(const std::string& section, const KeptRace& kept) {
  const ReadValue there = OpenProject(project_, race_).read, here = kept.Reader();
  const bool amended = !kept.race.amends.empty();
  if (amended && there(section, "Comments", kDefaultComments) != kept.race.comments) return false;
  const auto holds = [](const auto& whole, const auto& beginning) {
    return std::ranges::mismatch(beginning, whole).in1 == beginning.end();
  };
  std::size_t entries = 0, entriesSaved = 0;
  const bool held = std::ranges::all_of(lanes_, [&](const auto& lane) {
    const auto same = [&](const char* key) {
      return there(LaneSection(section, lane->Number()), key, "") ==
             here(LaneSection(kRunningSection, lane->Number()), key, "");
    };
    const LaneLog log = lane->LogIn(kRunningSection, here), saved = lane->LogIn(section, there);
    entries += log.Entries().size();
    entriesSaved += saved.Entries().size();
    return holds(saved.Entries(), log.Entries()) && holds(saved.Corrections(), log.Corrections()) &&
           (!amended || (log.Corrections() == saved.Corrections() && same("Placing") && same("Position")));
  });
  return held && (entries == entriesSaved || (entries > 0 && !amended));
}

std::string RaceKeeper::StoryOf(const KeptRace& kept) const {
  const RunningRace& race = kept.race;
  const bool refly = race.refly || race.amends.starts_with("Refly");
  std::string story =
      fmt::format("{}Race {}{}, heat {}, round {}", race.amends.empty() ? "" : "Amendment of ", race.number,
                  refly ? " refly" : "", race.heat, race.round);
  for (const auto& lane : lanes_) {
    const LaneLog log = lane->LogIn(kRunningSection, kept.Reader());
    const int laps = log.CountLaps() - (log.FreeLap() >= 0 ? 1 : 0);
    if (laps > 0) story += fmt::format(", {} lap{} on lane {}", laps, laps == 1 ? "" : "s", lane->Number());
  }
  return story;
}

void RaceKeeper::SetAside(const std::string& from, std::string& text, const std::string& what,
                          const std::string& replaced) {
  if (text.empty()) return;
  const std::string aside = *asides_.insert(FreeName(from)).first;
  files_.Keep(aside, std::exchange(text, {}), replaced);
  notices_.Show(what + " is kept in " + FileNameOf(aside));
}

// One that still waits for the disk is taken, too.
std::string RaceKeeper::FreeName(const std::string& from) const {
  for (int number = 1;; ++number) {
    std::string name = fmt::format("{}-{}", from, number);
    if (!FileExists(name) && !FolderExists(name) && !asides_.contains(name)) return name;
  }
}

// Under a name of its own, where it needs no room on the disk.
void RaceKeeper::MoveAside(const char* ending, const std::string& what) {
  const std::string from = Beside(ending), aside = FreeName(from);
  if (!files_.Move(from, aside)) return;
  asides_.insert(aside);
  notices_.Show(what + " is kept in " + FileNameOf(aside));
}

void RaceKeeper::EndOffer(const std::string& what) {
  const bool free = !race_.AtStake() && !race_.Amending;
  if (free && found_ && left_.empty()) files_.Remove(Beside(kRunningEnding));
  SetAside(Beside(kRunningEnding), left_, what, free ? Beside(kRunningEnding) : "");
}

}  // namespace quorvane
