#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "lane/frm_lane.h"
#include "race/race_state.h"

namespace quorvane {

using LanePanels = std::array<std::unique_ptr<frmLane>, 4>;

// What is known of the starter, and what its frames mean for the race on the console; changes nothing of that
// race. The starter's clock is RaceState's LaneStartOffset: ms, with the start signal at 60000.
class Starter {
 public:
  static constexpr std::int32_t kSignal = 60000;
  static constexpr std::int32_t kEarlyStop = 65000;  // a stop up to here calls the start off
  static constexpr std::int32_t kHeldUp = 1000;      // ms by which a frame may come late
  static constexpr std::int32_t kNoise = 50;         // ms by which two clocks that agree may differ

  Starter(const RaceState& race, const RaceClock& clock, const LanePanels& lanes)
      : race_(race), clock_(clock), lanes_(lanes) {}

  // A frame does nothing to the race on the console, or it goes on, is saved or is called off.
  enum class Means : std::uint8_t { kNothing, kGoesOn, kConcludes, kCallsOff };
  Means FrameMeans(bool runs) const;

  bool BeforeSignal() const { return race_.LaneStartOffset < kSignal; }
  bool StoppedEarly() const { return race_.LaneStartOffset <= kEarlyStop; }
  std::int32_t ClockAhead() const;  // by how much our clock is further on than the starter's
  // The same of the signals: that of a race by hand may be anywhere on our clock.
  std::int32_t SignalAhead() const { return ClockAhead() + laneStart_; }
  bool LapFlown() const;
  bool Ran() const { return ranAt_.has_value(); }  // during the race on the console

  // Added to the race clock, `laneStart` gives 60000 at the start signal.
  void RaceBegins(std::int32_t laneStart) {
    ranAt_.reset();
    laneStart_ = laneStart;
    early_ = false;
  }
  // At `now` on the console clock it was saved or reset.
  void RaceEnds(std::int64_t now) {
    ranAt_.reset();
    raceOver_ = now;
  }
  void RunsRace() { ranAt_ = race_.LaneStartOffset; }
  void RunsNoRaceOfOurs() { ranAt_.reset(); }
  void Stops() { raceOver_ = kNoRaceYet; }

  // It runs a race whose signal came after the last one on the console, and does not only run on after that.
  bool RunsAnotherRace(std::int64_t now) const { return now - race_.LaneStartOffset + kSignal > raceOver_; }
  // Its frame sets our clock.
  bool SetsClock();

  // What has to outlive the program with the race.
  struct Memory {
    std::int32_t laneStart = 0;
    bool ran = false;
    std::array<std::uint8_t, 4> cuts = {};
    bool operator==(const Memory&) const = default;
  };
  Memory Remember() const { return {laneStart_, Ran(), cuts}; }
  // At `raceTime` of the race that it belongs to.
  void Resume(const Memory& memory, std::int32_t raceTime) {
    laneStart_ = memory.laneStart;
    ranAt_ = memory.ran ? std::optional(AddLong(raceTime, laneStart_)) : std::nullopt;
    cuts = memory.cuts;
    early_ = false;
  }

  // What the console remembers of it.
  std::array<std::uint8_t, 4> cuts{};  // those that its next frame is compared with
  bool resetAsked = false;
  bool countTold = false;  // that it counts over a race by hand

 private:
  bool BeginsNextRace() const;
  bool NothingFlown() const;
  bool HasBeenFlown() const;

  static constexpr std::int64_t kNoRaceYet = INT64_MIN;

  const RaceState& race_;
  const RaceClock& clock_;
  const LanePanels& lanes_;
  // When the last race was saved or reset, ms of the console clock, unless the starter has stopped since.
  std::int64_t raceOver_ = kNoRaceYet;
  // Its clock when it was last running during the race on the console; empty: it was not.
  std::optional<std::int32_t> ranAt_;
  bool early_ = false;  // by our clock, in its last frame of the flight
  std::int32_t laneStart_ = 0;
};

}  // namespace quorvane
