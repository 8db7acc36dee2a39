#pragma once

#include <array>
#include <cstdint>

#include "race/race_state.h"

namespace quorvane {

// A lane at the end of its race.
struct Finish {
  std::int32_t final = 0;  // ms; kNoResult and above: none
  bool locked = false;     // the operator has said what it is, and it keeps that
  int placeByHand = 0;     // 1..4 of a locked one; 0: no place
};

// The place of each lane, 1..4; 0 for one that is locked or has no result. A place given by hand is not given
// again; of equal finals the lower lane comes first.
std::array<int, 4> PlacesOf(const std::array<Finish, 4>& lanes);

// Ms after the start signal at which each lane of an FAI mode (4, 5, 6) starts. The fourth does not fly.
inline constexpr std::array<std::array<std::int32_t, 3>, 3> kStagger = {
    {{0, 1000, 2000}, {2000, 0, 1000}, {1000, 2000, 0}}};

}  // namespace quorvane
