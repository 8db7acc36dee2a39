#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "field/radio.h"

namespace quorvane::field {

// A whole number from 0 to `below` - 1, which comes out the same everywhere, unlike the library's own.
int Draw(std::mt19937& random, int below);

struct PlannedCut {
  int pylon = 1;  // 1..3
  int time = 0;   // ms since the lane's start
};

// What one aircraft does. Times are milliseconds since the lane's own start signal.
struct LanePlan {
  int stagger = 0;         // ms from the race's start signal to the lane's own
  std::vector<int> laps;   // when each lap is completed, rising
  std::vector<int> turns;  // at most one in each completed lap
  std::vector<PlannedCut> cuts;

  int target = 10;  // laps needed for a result

  bool Finishes() const { return static_cast<int>(laps.size()) >= target && cuts.size() < 2; }
};

struct HeatPlan {
  int mode = 2;                 // 1..6
  std::vector<LanePlan> lanes;  // those that fly
};

inline bool IsFai(int mode) {
  return mode >= 4;
}

// Laps for a result: a cut costs one more outside the FAI modes.
inline int TargetLaps(int mode, bool cut) {
  return cut && !IsFai(mode) ? 11 : 10;
}

inline std::size_t FlyingLanes(int mode) {
  return IsFai(mode) ? 3 : kLanes;
}

// Milliseconds from the race's start signal to each lane's own: the staggered starts of the FAI modes.
std::array<int, kLanes> Staggers(int mode);

// Heat number `heat` of the contest that belongs to `seed`. At least two lanes finish, far enough apart for
// the radio's delay not to change their order.
HeatPlan PlanHeat(std::uint32_t seed, int heat, int mode, bool quick);

}  // namespace quorvane::field
