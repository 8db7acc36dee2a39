#include "records/race_record.h"

#include <algorithm>
#include <limits>

namespace quorvane {
namespace {

std::optional<std::int32_t> Split(std::int64_t from, std::int32_t to) {
  const std::int64_t split = to - from;
  if (split < 1 || split > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
  return static_cast<std::int32_t>(split);
}

}  // namespace

std::vector<FlownLap> FlownLaps(const LaneRecord& lane) {
  std::vector<LapRecord> laps = lane.laps;
  std::stable_sort(laps.begin(), laps.end(),
                   [](const LapRecord& a, const LapRecord& b) { return a.count < b.count; });
  const int freeLaps = lane.novice ? 1 : 0;
  std::vector<FlownLap> flown;
  for (const LapRecord& lap : laps) {
    const int number = lap.count - freeLaps;
    if (lap.credited || number < 1 || lap.count > lane.lapTarget) continue;
    FlownLap next{number, lap.time, std::nullopt, lap.finishing};
    if (number == 1) {
      next.split = Split(0, lap.time);
    } else if (!flown.empty() && flown.back().number == number - 1) {
      next.split = Split(flown.back().time, lap.time);
    }
    flown.push_back(next);
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
