#include "records/race_record.h"

#include <algorithm>
#include <utility>

namespace quorvane {

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

}  // namespace quorvane
