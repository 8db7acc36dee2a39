#include "race/race_clock.h"

#include "base/checked.h"

namespace quorvane {

std::int32_t Stopwatch::Elapsed() const {
  return ToLong(clock_.Now() - zero_);
}

std::int32_t RaceClock::RaceTime() const {
  return SubtractLong(RaceStopwatch.Elapsed(), race_.RaceStartRef);
}

void RaceClock::ResetRaceClock(std::int32_t offset, std::string_view /*caller*/) {
  RaceStopwatch.Reset();
  race_.RaceStartRef = SubtractLong(RaceStopwatch.Elapsed(), offset);
}

}  // namespace quorvane
