#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "field/radio.h"
#include "field/result.h"

namespace quorvane::field {

// Follows a console that runs the race itself, as the stations do. Race and time events (starter to pylon
// box) carry the race state, the mode and the cuts; lap events (timers to starter) carry the laps; both carry
// the race clock and the lights. A race lasts from the first frame that says "running" to the next that does
// not. Laps and cuts get the race clock of the frame that brought them; withdrawn ones are forgotten.
class Follower {
 public:
  // A good frame at `ms`; `hears` tells of a station whether it is listening. Returns the race that the frame
  // has ended, numbered from 1, without finals and places.
  std::optional<HeatResult> Hear(const Frame& frame, std::int64_t ms,
                                 const std::function<bool(std::uint8_t)>& hears);

  // What the frames say up to now, whoever was listening.
  const Report& race() const { return all_.race; }

  const ConsoleHeard& heard() const { return heard_; }

 private:
  void Begin(std::int64_t ms);
  void NoteClock(std::int64_t ms);
  void NoteLaps();
  void NoteCuts();
  int LaneTime(const LaneResult& lane) const;

  StationView all_;
  ConsoleHeard heard_;
  HeatResult race_;  // the one in hand
};

}  // namespace quorvane::field
