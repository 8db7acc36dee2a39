#pragma once

#include "base/checked.h"
#include "forms/platform.h"
#include "race/race_state.h"

namespace quorvane {

// A free-running stopwatch in ms of the console clock, as the event in hand sees it.
class Stopwatch {
 public:
  explicit Stopwatch(const EventClock& clock) : clock_(clock) {}
  void Reset() { zero_ = clock_.Now(); }
  std::int32_t Elapsed() const { return ToLong(clock_.Now() - zero_); }  // ms since the last reset

 private:
  const EventClock& clock_;
  std::int64_t zero_ = 0;
};

// The race clock: ms of race time, counted from RaceStartRef on the race stopwatch. OverflowError beyond 32
// bits.
class RaceClock {
 public:
  RaceClock(const EventClock& clock, RaceState& race) : RaceStopwatch(clock), race_(race) {}

  std::int32_t RaceTime() const { return SubtractLong(RaceStopwatch.Elapsed(), race_.RaceStartRef); }
  // Starts the clock anew at `offset` ms of race time.
  void ResetRaceClock(std::int32_t offset) {
    RaceStopwatch.Reset();
    race_.RaceStartRef = SubtractLong(0, offset);
  }

  Stopwatch RaceStopwatch;

 private:
  RaceState& race_;
};

}  // namespace quorvane
