#include "console/starter.h"

#include <algorithm>
#include <utility>

namespace quorvane {

// A race by hand is not the starter's to end as long as it only idles or counts, and a race that was flown is
// not called off by a starter that starts anew.
Starter::Means Starter::FrameMeans(bool runs) const {
  if (!race_.RaceActive) return Means::kGoesOn;
  const bool flownByHand = race_.ManualStart && race_.BeingFlown();
  if (runs) {
    // A race that was started by hand and has had its start signal is no more counted down.
    const bool signalGiven = AddLong(clock_.RaceTime(), laneStart_) >= kSignal;
    if (flownByHand) return BeforeSignal() && signalGiven ? Means::kNothing : Means::kGoesOn;
    if (!BeginsNextRace()) return Means::kGoesOn;
  } else {
    if (race_.ManualStart && !Ran() && !(StoppedEarly() && flownByHand)) return Means::kNothing;
    if (!StoppedEarly()) return Means::kConcludes;
    if (flownByHand && !HasBeenFlown()) return Means::kNothing;
  }
  return HasBeenFlown() ? Means::kConcludes : Means::kCallsOff;
}

// The starter's clock rises during a race, together with ours, and falls back for the next one. What rises
// all the same is the next race when we have not heard how it came, but know that ours has been flown.
bool Starter::BeginsNextRace() const {
  if (!ranAt_) return BeforeSignal();
  if (race_.LaneStartOffset < *ranAt_ - kHeldUp) return BeforeSignal() || race_.RaceDone;
  if (BeforeSignal()) return *ranAt_ < kSignal && (race_.RaceDone || LapFlown());
  // The next race begins a whole count later at least, however late a frame may come. One of which nothing is
  // known but its count may also have been held, and is about to be flown.
  return race_.RaceDone && !race_.ManualStart && ClockAhead() > (NothingFlown() ? 5 * kHeldUp : kSignal);
}

std::int32_t Starter::ClockAhead() const {
  return SubtractLong(clock_.RaceTime(), race_.LaneStartOffset);
}

bool Starter::LapFlown() const {
  return std::ranges::any_of(lanes_, [](const auto& lane) { return lane->CountLaps() > 0; });
}

// Nobody has told anything of the race since its count, or since its start by hand.
bool Starter::NothingFlown() const {
  if (!race_.ManualStart && ranAt_.value_or(kSignal) >= kSignal) return false;
  return std::ranges::all_of(
      lanes_, [](const auto& lane) { return lane->EventCount() == 0 && !lane->StatusLocked(); });
}

// Its laps tell as well as the starter's clock, of which we may have heard nothing since the signal.
bool Starter::HasBeenFlown() const {
  if (ranAt_.value_or(0) > kEarlyStop || (!race_.ManualStart && LapFlown())) return true;
  const auto finished = [](const auto& lane) { return lane->IsFinished(); };
  return (race_.RaceDone || std::ranges::all_of(lanes_, finished)) && !NothingFlown();
}

// The count does. After that a frame may come late but never early: when the starter is further on than we
// are, our clock was set by a late one (twice, lest a damaged frame sets it). The first frame after the count
// may also tell that the count was held unheard; if it was only late, the next ones tell that. A finished
// race is still set right until it is saved.
bool Starter::SetsClock() {
  if (BeforeSignal()) return !race_.RaceDone;
  if (race_.ManualStart) return false;
  const std::int32_t ahead = ClockAhead();
  const bool wasEarly = std::exchange(early_, ahead < -kNoise);
  if (early_) return wasEarly;
  return ahead > kNoise && ranAt_.value_or(kSignal) < kSignal;
}

}  // namespace quorvane
