#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "field/plan.h"
#include "field/radio.h"
#include "field/result.h"

namespace quorvane::field {

inline constexpr std::int64_t kMs = 1000;                   // microseconds
inline constexpr std::int64_t kStartSignal = 60'000 * kMs;  // of the race clock

// A station that is switched off for a time.
struct Silence {
  std::uint8_t station = 0;
  std::int64_t from_ms = 0;
  std::int64_t to_ms = kNever;  // not included
};

struct FieldOptions {
  int heats = 1;           // 0: heat after heat without end
  int mode = 2;            // 1..6; 0: one after another, starting with 1
  std::uint32_t seed = 1;  // same value, same heats
  bool count = true;       // 60-second count; without it the starter's clock begins at 60000
  bool hold = false;       // hold the count at 56000 for three seconds
  bool quick = false;      // short laps
  std::int64_t pause = 0;  // ms by which the starter idles longer between two heats
  // Race clock at which the starter restarts, in the first heat: it is off for three seconds, has forgotten
  // the race, and the heat is flown again from its beginning.
  std::optional<std::int64_t> restart = {};
  LineOptions line = {};

  // No starter and no timers: the stations follow a console, and `heats` counts the races it runs.
  bool controlled = false;
  std::optional<std::int64_t> starter_at = {};  // ms; starter and timers come on the air and idle
  std::vector<Silence> silent = {};
  std::array<std::int64_t, kAddresses> late = {};  // ms by which a station answers polls later
  std::array<bool, kAddresses> twice = {};         // stations that answer every poll twice
};

// All stations of a pylon race on one radio channel: starter, timers, three judges, pylon box and display.
//
// Runs on the caller's clock, ms from 0 that never fall, and does no input or output. Until BeginHeats the
// starter idles and polls are answered. All that happens follows from the options, the calls and their times.
class Field {
 public:
  explicit Field(const FieldOptions& options);
  Field(const Field&) = delete;

  // The first heat begins with a few seconds of idling starter, from this time on.
  void BeginHeats(std::int64_t ms);

  // The chunks that have come on the air since the last call, in order.
  std::vector<Chunk> AdvanceTo(std::int64_t ms);

  // Bytes from the console in any chunking: polls, and when controlled what starter and timers would send.
  void Receive(std::span<const std::uint8_t> bytes, std::int64_t ms);

  // The next time at which AdvanceTo has something to do.
  std::int64_t NextDue() const;

  // Heats that ended since the last call.
  std::vector<HeatResult> TakeResults() { return std::exchange(finished_, {}); }

  // True a second after the last heat; the stations go on idling all the same.
  bool Done() const { return done_; }

  // What the field has sent since the beginning, and what it has heard.
  const LineCounters& counters() const { return line_.counters(); }
  ConsoleHeard Heard() const;

 private:
  enum class Phase { kIdle, kStarting, kRunning, kStopping };
  // What a station wants to say, the most urgent first.
  enum class Topic { kLaps, kRace, kTurns, kAckLaps, kAckTurns, kCut, kPollAnswer, kSecondAnswer, kStatus };
  struct Wish {
    Topic topic = Topic::kStatus;
    std::uint8_t station = 0;
    bool operator==(const Wish&) const = default;
  };
  struct Lane {
    std::uint8_t laps = 0;
    std::uint8_t judged_cuts = 0;   // the judges' lights
    std::uint8_t starter_cuts = 0;  // what the starter has heard of them
    std::int64_t lap_light_ends = 0;
    std::int64_t turn_light_ends = 0;
  };

  // Traffic (field.cpp).
  void At(std::int64_t us, std::function<void()> action) { agenda_.emplace(us, std::move(action)); }
  void SpeakAt(std::int64_t us, Wish wish) {
    At(us, [this, wish] { Speak(wish); });
  }
  void Speak(Wish wish);
  void RaceTick();
  void ReminderTick();
  void StatusTick(std::uint8_t station);
  std::int64_t NextSend() const;
  void RunUntil(std::int64_t us);
  void Transmit();
  bool OnAir(std::uint8_t station, std::int64_t us) const;
  void Answer(std::uint8_t station, std::int64_t us);
  void Follow(const Frame& frame, std::int64_t us);
  Report Compose(Wish wish, std::int64_t end_us);
  void AddStationState(Report& report, std::uint8_t station, std::int64_t end_us) const;
  void AddLapLights(Report& report, std::int64_t end_us, bool remind) const;
  void AfterTransmission(Wish wish, const Report& report, std::int64_t end_us);
  bool NoteLapsOnAir(std::int64_t end_us);
  void NoteCutsOnAir(std::int64_t end_us);

  // The course of a heat (heat.cpp).
  void MakePlan();
  void PrepareHeat();
  void StartRace();
  void ScheduleFlights();
  std::int64_t RaceEnd() const;
  void FlyLap(std::size_t lane, std::size_t index);
  void FlyTurn(std::size_t lane);
  void FlyCut(std::size_t lane, const PlannedCut& cut);
  void StarterHearsCut(std::size_t lane, const PlannedCut& cut);
  void StopRace();
  void RestartStarter();
  void EndHeat();
  void Conclude(HeatResult& result);
  void EndSoon(std::int64_t us) {
    At(us + 1'000 * kMs, [this] { done_ = true; });
  }
  std::int64_t RaceTickInterval() const;
  std::int64_t FirstClock() const { return options_.count ? 0 : kStartSignal; }
  bool Holding(std::int64_t us) const;
  std::int64_t ClockMicros(std::int64_t us) const;
  int LaneTime(std::size_t lane, std::int64_t us) const;
  std::int64_t LaneMoment(std::size_t lane, int lane_ms) const;

  FieldOptions options_;
  Line line_;
  std::deque<std::uint8_t> heard_;  // of the console's next frame
  // By time in microseconds; equal times in order of entry.
  std::multimap<std::int64_t, std::function<void()>> agenda_;
  std::vector<Wish> wishes_;  // who waits for the air; nobody waits twice for the same topic
  std::vector<HeatResult> finished_;
  std::int64_t now_us_ = 0;

  Phase phase_ = Phase::kIdle;
  int start_ = 0;  // counts the starts: what was to come of an earlier one no longer happens
  bool begun_ = false;
  bool done_ = false;
  bool reminder_due_ = false;
  bool turn_unacknowledged_ = false;
  HeatPlan plan_;
  HeatResult result_;  // of the heat in hand; an expected time is -1 until the first report is on the air
  LineCounters counters_before_;
  std::int64_t polls_ = 0;         // in the heat in hand
  std::int64_t polls_before_ = 0;  // in earlier ones
  Follower follower_;
  std::optional<std::int64_t> starter_heard_ms_;
  std::array<Lane, kLanes> lanes_{};
  std::optional<std::int64_t> clock_start_us_;  // when the race clock left its first value
};

}  // namespace quorvane::field
