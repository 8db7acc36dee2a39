#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "records/race_record.h"

namespace quorvane {

// The best time of a lane or of the contest, and where it was flown. Of equal times the earlier race counts.
struct BestTime {
  std::int32_t time = 0;  // ms
  int race = 1;
  int refly = 0;
  int lane = 1;
  int lap = 0;  // of a lap; 0 for a whole heat
};

struct FlightSummary {
  int racesFlown = 0;  // of a lane: those in which anything was seen of it
  int cuts = 0;
  std::optional<BestTime> fastestHeat;
  std::optional<BestTime> fastestLap;
};

struct LaneSummary : FlightSummary {
  std::string name;
};

// Counts only the flights that stand.
struct ContestSummary : FlightSummary {
  std::array<LaneSummary, 4> lanes;
};

ContestSummary SummaryOf(const ContestRecord& contest);

}  // namespace quorvane
