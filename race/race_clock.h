#pragma once

#include <cstdint>
#include <string_view>

#include "forms/platform.h"
#include "race/race_state.h"

namespace quorvane {

// A free-running stopwatch in ms of the console clock, as the event in hand sees it.
class Stopwatch {
 public:
  explicit Stopwatch(const EventClock& clock) : clock_(clock) {}
  void Reset() { zero_ = clock_.Now(); }
  std::int32_t Elapsed() const;  // ms since the last reset

 private:
  const EventClock& clock_;
  std::int64_t zero_ = 0;
};

// The race clock: ms of race time, counted from RaceStartRef on the race stopwatch. OverflowError beyond 32
// bits.
class RaceClock {
 public:
  RaceClock(const EventClock& clock, RaceState& race) : RaceStopwatch(clock), race_(race) {}

  std::int32_t RaceTime() const;
  // Starts the clock anew at `offset` ms of race time. `caller` only says who asked.
  void ResetRaceClock(std::int32_t offset, std::string_view caller);

  Stopwatch RaceStopwatch;

 private:
  RaceState& race_;
};

}  // namespace quorvane
