#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "lane/lane_log.h"

namespace quorvane {

// How far a lane has come, as its log says.
struct LaneProgress {
  bool shown = false;        // there is a race, and the lane flies in it
  int flown = 0;             // laps, without the one that a novice is credited with
  int due = 10;              // the same
  std::int32_t lastLap = 0;  // ms that it took; 0: none was flown
  // Ms of race time at which the laps towards a result were completed. A lap that a cut has added comes off,
  // so that equal numbers are equally far from the finish.
  std::vector<std::int32_t> towards = {};
  // Ms at which the added lap was completed; 0: there is none, or it is still to be flown.
  std::int32_t before = 0;
  int toAdd = 0;  // added laps that are still to be flown before any counts towards a result
  bool mayWin = true;
};

LaneProgress ProgressOf(const LaneLog& log, bool isFaiMode, bool novice);

// How far lane `of` is behind the leader: "Leader", "+1.24" seconds, "-2 laps"; empty where nobody can tell.
std::string GapText(std::span<const LaneProgress> lanes, std::size_t of);

}  // namespace quorvane
