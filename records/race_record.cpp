#include "records/race_record.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace quorvane {
namespace {

// "once", "3 times".
std::string Times(std::size_t times) {
  return times == 1 ? "once" : fmt::format("{} times", times);
}

}  // namespace

std::vector<FlownLap> FlownLaps(const LaneRecord& lane) {
  std::vector<LapRecord> laps = lane.laps;
  std::ranges::stable_sort(laps, {}, &LapRecord::count);
  const int freeLaps = lane.novice ? 1 : 0;
  std::vector<FlownLap> flown;
  for (const LapRecord& lap : laps) {
    const int number = lap.count - freeLaps;
    if (lap.credited || number < 1 || lap.count > lane.lapTarget) continue;
    const FlownLap before = flown.empty() ? FlownLap{.number = 0} : flown.back();
    const std::int64_t split = std::int64_t{lap.time} - before.time;
    const bool known = before.number == number - 1 && split >= 1 && std::in_range<std::int32_t>(split);
    flown.push_back({number, lap.time, std::nullopt, lap.finishing});
    if (known) flown.back().split = static_cast<std::int32_t>(split);
  }
  return flown;
}

std::optional<FlownLap> FastestLap(const LaneRecord& lane) {
  std::optional<FlownLap> fastest;
  for (const FlownLap& lap : FlownLaps(lane)) {
    if (lap.split && (!fastest || *lap.split < *fastest->split)) fastest = lap;
  }
  return fastest;
}

bool HasFlown(const LaneRecord& lane) {
  return !lane.laps.empty() || !lane.cuts.empty() || !lane.turns.empty();
}

bool HasResult(const LaneRecord& lane) {
  return lane.final > 0 && lane.final < kNoResult;
}

std::string UnusualNote(const RaceRecord& race) {
  std::size_t corrections = 0;
  for (const LaneRecord& lane : race.lanes) corrections += lane.corrections.size();
  std::string note;
  if (!race.recovered.empty()) note += fmt::format(" Recovered: {}.", race.recovered);
  if (race.amendments > 0) {
    note += fmt::format(" Amended {}.", Times(static_cast<std::size_t>(race.amendments)));
  }
  if (corrections > 0) note += fmt::format(" Corrected {}.", Times(corrections));
  return note.empty() ? note : note.substr(1);
}

std::string EntryText(const EntryRecord& entry) {
  const std::string time = FormatSeconds(entry.time);
  if (entry.kind == "L") return fmt::format("lap {} at {}", entry.count, time);
  if (entry.kind == "C") return fmt::format("cut {} at {}", entry.pylon, time);
  if (entry.kind == "-C") return fmt::format("cut {} withdrawn at {}", entry.pylon, time);
  return fmt::format("{} at {}", entry.kind == "T" ? "turn" : entry.kind, time);
}

}  // namespace quorvane
