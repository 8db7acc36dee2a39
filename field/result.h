#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "field/radio.h"

namespace quorvane::field {

inline constexpr int kNoResult = 1000000;  // a final from here on means "no result"

inline constexpr std::array<const char*, kLanes> kPlaces = {"First", "Second", "Third", "Fourth"};

inline constexpr int kHandCut = 4;  // in place of the pylon of a cut that no judge has reported

struct CutResult {
  int pylon = 1;  // 1..3, or kHandCut
  int flown = 0;
  int expected = 0;
};

// One lane of a heat. Times are ms since the lane's start: as flown, and as the console should show them,
// later by the first report's time on the air.
struct LaneResult {
  int lane = 1;  // 1..4
  int target = 10;
  std::vector<int> flown = {};
  std::vector<int> expected = {};
  std::vector<CutResult> cuts = {};
  std::vector<int> turns = {};  // as flown
  int final_time = kNoResult;
  std::string place = {};  // "First" to "Fourth", empty without a result

  // Of a race that the console runs: the lane's light in the report of each lap, and its cut byte at the end.
  std::vector<int> lights = {};
  std::uint8_t cut_bits = 0;
};

// A race that the console runs, in ms of the field's clock.
struct FollowedRace {
  std::int64_t from = 0, to = 0;                 // when the race state went to running and back
  std::int64_t first_clock = 0, last_clock = 0;  // the race clock in the first and last running frame
  std::int64_t drift = 0;  // most by which the race clock and the field's went apart between these two
};

struct HeatResult {
  int heat = 1;
  int mode = 2;
  bool count = true;
  std::vector<LaneResult> lanes = {};  // those that fly
  LineCounters line = {};              // since the heat before, or since the beginning
  std::int64_t polls = 0;
  std::optional<FollowedRace> followed = {};  // the laps and cuts are then those that were seen
};

// What a station knows of the race from the frames of the console that controls it.
struct StationView {
  std::int64_t frames = 0;  // heard
  Report race;              // state, clock, mode, laps, cuts and lights as last heard
};

// What the field has heard from the console since the beginning.
struct ConsoleHeard {
  std::array<StationView, kAddresses> stations;  // by address
  std::int64_t polls = 0;
  std::int64_t frames = 0;                        // for the starter or the timers
  std::int64_t odd = 0;                           // of these, not as a station would build them
  std::optional<std::int64_t> first_ms, last_ms;  // the first and last of them
  std::optional<std::int64_t> starter_ms;         // when a real starter spoke first
};

// Fills in finals and places from the expected laps, the earliest first, of equal ones the lower lane.
void RankLanes(std::vector<LaneResult>& lanes);

// One line, without its line feed.
std::string ToJson(const HeatResult& result);
std::string ToJson(const ConsoleHeard& heard, const LineCounters& line);

// Follows a console that runs the race itself, as the stations do. Frames from starter to pylon box carry the
// race state, the mode and the cuts, those from timers to starter the laps, both the race clock and the
// lights. A race lasts from the first frame that says "running" to the next that does not. Laps and cuts get
// the race clock of the frame that brought them; withdrawn ones are forgotten.
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
