#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/field/line.h"

namespace quorvane::field {

inline constexpr int kNoResult = 1000000;  // a final from here on means "no result"

struct CutResult {
  int pylon = 1;  // 1..3
  int flown = 0;
  int expected = 0;
};

// One lane of a heat. Times are milliseconds since the lane's start: as flown, and as the console should show
// them, later by the time the first report of each needs on the air.
struct LaneResult {
  int lane = 1;  // 1..4
  int target = 10;
  std::vector<int> flown;
  std::vector<int> expected;
  std::vector<CutResult> cuts;
  std::vector<int> turns;  // as flown
  int final_time = kNoResult;
  std::string place;  // "First" to "Fourth", empty without a result
};

struct HeatResult {
  int heat = 1;
  int mode = 2;
  bool count = true;
  std::vector<LaneResult> lanes;  // those that fly
  LineCounters line;              // since the heat before, or since the beginning
  std::int64_t polls = 0;
};

// Fills in final times and places from the expected laps: the earliest final is "First", equal finals keep
// the lower lane first.
void RankLanes(std::vector<LaneResult>& lanes);

// One line, without its line feed.
std::string ToJson(const HeatResult& result);

}  // namespace quorvane::field
