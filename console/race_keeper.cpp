#include "console/race_keeper.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "results/race_records.h"

namespace quorvane {

void RaceKeeper::Keep(const RunningRace& race) {
  State state{race, {}};
  std::ranges::transform(lanes_, state.lanes.begin(), [](const auto& lane) { return lane->Running(); });
  if (kept_ == state) return;
  kept_ = std::move(state);
  text_ = TextOf(race);
  file_ = Beside(kRunningEnding);
  SetLeftAside();
  files_.Keep(file_, text_);
}

std::string RaceKeeper::TextOf(const RunningRace& race) {
  ProfileFile file;
  WriteRunning(file, race, {ToLong(door_.Now() - race.clockOfZero), door_.ComputerNow()});
  const auto keep = [&](const auto&... entry) { file.Write(entry...); };
  for (const auto& lane : lanes_) lane->KeepRunning(kRunningSection, keep);
  return file.Serialize();
}

void RaceKeeper::Release() {
  if (!kept_ || !project_.Saved()) return;
  files_.Remove(file_);
  kept_.reset();
}

void RaceKeeper::Drop() {
  if (!kept_) return;
  dropped_ = text_;
  files_.Keep(Beside(kDroppedEnding), dropped_);
  files_.Remove(file_);
  kept_.reset();
}

void RaceKeeper::ForgetDropped() {
  if (!std::exchange(dropped_, {}).empty()) files_.Remove(Beside(kDroppedEnding));
}

void RaceKeeper::FindLeft() {
  left_ = files_.Read(Beside(kRunningEnding)).value_or("");
  dropped_ = files_.Read(Beside(kDroppedEnding)).value_or("");
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
  if (kept.race.refly) return SavedIn(book_.ShownSection(number), kept);
  // It was given the next free number where its own was taken.
  for (int race = number; race <= kLastRace && book_.HasRun(race); ++race) {
    if (SavedIn(RaceSection(race), kept)) return true;
  }
  return false;
}

bool RaceKeeper::SavedIn(const std::string& section, const KeptRace& kept) {
  return std::ranges::all_of(lanes_, [&](const auto& lane) {
    return std::ranges::equal(lane->LogIn(kRunningSection, kept.Reader()).Entries(),
                              lane->LogIn(section, OpenProject(project_, race_).read).Entries());
  });
}

std::string RaceKeeper::StoryOf(const KeptRace& kept) const {
  const RunningRace& race = kept.race;
  std::string story = fmt::format("Race {}{}, heat {}, round {}", race.number, race.refly ? " refly" : "",
                                  race.heat, race.round);
  int number = 0;
  for (const auto& lane : lanes_) {
    const int laps = lane->LogIn(kRunningSection, kept.Reader()).CountLaps();
    ++number;
    if (laps > 0) story += fmt::format(", {} lap{} on lane {}", laps, laps == 1 ? "" : "s", number);
  }
  return story;
}

void RaceKeeper::SetLeftAside() {
  if (left_.empty()) return;
  std::string aside;
  for (int number = 1; aside.empty() || FileExists(aside); ++number) {
    aside = fmt::format("{}-{}", Beside(kRunningEnding), number);
  }
  files_.Keep(aside, std::exchange(left_, {}));
  notices_.Show("The race that was not recovered is kept in " + FileNameOf(aside));
}

void RaceKeeper::EndOffer() {
  SetLeftAside();
  if (!race_.AtStake()) files_.Remove(Beside(kRunningEnding));
}

}  // namespace quorvane
