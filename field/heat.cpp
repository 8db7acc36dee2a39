// The course of a heat: idling, the start, what the aircraft do and which station sees it, the stop.
#include <algorithm>

#include "field/field.h"

namespace quorvane::field {
namespace {

constexpr std::int64_t kHoldAt = 56'000 * kMs;
constexpr std::int64_t kHoldFor = 3'000 * kMs;
constexpr std::int64_t kRestartFor = 3'000 * kMs;
constexpr std::int64_t kEarliestStop = 66'500 * kMs;  // a stop within the first 65 s would be a reset
constexpr std::int64_t kLapLight = 2'000 * kMs;
constexpr std::int64_t kTurnLight = 800 * kMs;
constexpr std::int64_t kJudgeToStarter = 60 * kMs;
constexpr int kLapRepeats = 7;
constexpr int kTurnRepeats = 2;
constexpr int kFinishedAfter = 10'000;  // ms without a lap when a lane is done
constexpr int kGivenUpAfter = 30'000;   // ms without a lap when it is not
constexpr int kStopMargin = 1'500;      // ms

}  // namespace

void Field::MakePlan() {
  const int mode = options_.mode == 0 ? (result_.heat - 1) % 6 + 1 : options_.mode;
  plan_ = PlanHeat(options_.seed, result_.heat, mode, options_.quick);
}

void Field::PrepareHeat() {
  lanes_ = {};
  result_ = {.heat = result_.heat, .mode = plan_.mode, .count = options_.count};
  for (std::size_t i = 0; i < plan_.lanes.size(); ++i) {
    result_.lanes.push_back({.lane = static_cast<int>(i) + 1});
  }
  const std::int64_t pause = result_.heat > 1 ? options_.pause : 0;
  At(now_us_ + ((options_.quick ? 3'000 : 4'000) + pause) * kMs, [this] { StartRace(); });
}

// Told in quick succession, so that a lost frame does not cost the first seconds of the count.
void Field::StartRace() {
  phase_ = Phase::kStarting;
  for (int i = 0; i < 3; ++i) SpeakAt(now_us_ + i * 100 * kMs, {Topic::kRace, kStarter});
}

void Field::ScheduleFlights() {
  const auto later = [this, start = ++start_](std::int64_t us, std::function<void()> action) {
    At(us, [this, start, action = std::move(action)] {
      if (start == start_) action();
    });
  };
  if (options_.restart) {
    later(*clock_start_us_ + std::max(*options_.restart * kMs - FirstClock(), kMs),
          [this] { RestartStarter(); });
  }
  for (std::size_t i = 0; i < plan_.lanes.size(); ++i) {
    const LanePlan& lane = plan_.lanes[i];
    for (std::size_t lap = 0; lap < lane.laps.size(); ++lap) {
      later(LaneMoment(i, lane.laps[lap]), [this, i, lap] { FlyLap(i, lap); });
    }
    for (const int turn : lane.turns) later(LaneMoment(i, turn), [this, i] { FlyTurn(i); });
    for (const PlannedCut& cut : lane.cuts) {
      const std::int64_t seen = LaneMoment(i, cut.time);
      later(seen, [this, i, cut] { FlyCut(i, cut); });
      later(seen + kJudgeToStarter, [this, i, cut] { StarterHearsCut(i, cut); });
    }
  }
  later(RaceEnd(), [this] { StopRace(); });
}

// The starter waits until every lane is finished: a while after its last lap.
std::int64_t Field::RaceEnd() const {
  std::int64_t end = *clock_start_us_ + kEarliestStop - FirstClock();
  for (std::size_t i = 0; i < plan_.lanes.size(); ++i) {
    const LanePlan& lane = plan_.lanes[i];
    const bool done = lane.Finishes() || lane.cuts.size() >= 2;
    int last = (lane.laps.empty() ? 0 : lane.laps.back()) + (done ? kFinishedAfter : kGivenUpAfter);
    if (!lane.cuts.empty()) last = std::max(last, lane.cuts.back().time);
    end = std::max(end, LaneMoment(i, last + kStopMargin));
  }
  return end;
}

void Field::FlyLap(std::size_t lane, std::size_t index) {
  lanes_[lane].laps = static_cast<std::uint8_t>(index + 1);
  lanes_[lane].lap_light_ends = now_us_ + kLapLight;
  result_.lanes[lane].flown.push_back(plan_.lanes[lane].laps[index]);
  for (int i = 0; i <= kLapRepeats; ++i) {
    SpeakAt(now_us_ + i * kLapLight / (kLapRepeats + 1), {Topic::kLaps, kTimers});
  }
}

void Field::FlyTurn(std::size_t lane) {
  if (!OnAir(kJudge1, now_us_)) return;
  lanes_[lane].turn_light_ends = now_us_ + kTurnLight;
  turn_unacknowledged_ = true;
  result_.lanes[lane].turns.push_back(LaneTime(lane, now_us_));
  for (int i = 0; i <= kTurnRepeats; ++i) SpeakAt(now_us_ + i * kTurnLight / 4, {Topic::kTurns, kJudge1});
}

void Field::FlyCut(std::size_t lane, const PlannedCut& cut) {
  const int shift = 2 * (cut.pylon - 1);
  std::uint8_t& lights = lanes_[lane].judged_cuts;
  const int shown = (lights >> shift) & 3;  // dark, 1 for one cut, 3 for two
  lights |= static_cast<std::uint8_t>((shown == 0 ? 1 : 3) << shift);
  Speak({Topic::kCut, static_cast<std::uint8_t>(cut.pylon - 1)});
}

void Field::StarterHearsCut(std::size_t lane, const PlannedCut& cut) {
  if (!OnAir(static_cast<std::uint8_t>(cut.pylon - 1), now_us_)) return;
  lanes_[lane].starter_cuts = lanes_[lane].judged_cuts;
  result_.lanes[lane].cuts.push_back({cut.pylon, cut.time, -1});
  Speak({Topic::kRace, kStarter});
}

// It knows nothing of a race when it is back, and those who wait for it begin anew.
void Field::RestartStarter() {
  options_.restart.reset();
  ++start_;
  phase_ = Phase::kIdle;
  clock_start_us_.reset();
  lanes_ = {};
  result_.lanes.clear();
  options_.silent.push_back(
      {.station = kStarter, .from_ms = now_us_ / kMs, .to_ms = (now_us_ + kRestartFor) / kMs});
  At(now_us_ + kRestartFor + options_.pause * kMs, [this] { PrepareHeat(); });
}

// From here on no lap or turn may be lit: the console could book it to the next race.
void Field::StopRace() {
  phase_ = Phase::kStopping;
  reminder_due_ = false;
  for (Lane& lane : lanes_) lane.lap_light_ends = lane.turn_light_ends = 0;
  At(now_us_ + (options_.quick ? 3'000 : 4'000) * kMs, [this] { EndHeat(); });
}

void Field::EndHeat() {
  phase_ = Phase::kIdle;
  for (LaneResult& lane : result_.lanes) lane.target = TargetLaps(result_.mode, !lane.cuts.empty());
  Conclude(result_);
  if (options_.heats != 0 && result_.heat >= options_.heats) return EndSoon(now_us_);
  ++result_.heat;
  MakePlan();
  PrepareHeat();
}

void Field::Conclude(HeatResult& result) {
  RankLanes(result.lanes);
  result.line = line_.counters() - counters_before_;
  result.polls = polls_;
  counters_before_ = line_.counters();
  polls_before_ += std::exchange(polls_, 0);
  finished_.push_back(result);
}

// Twice a second; faster while a frame must not be missed.
std::int64_t Field::RaceTickInterval() const {
  const bool just_started = clock_start_us_ && now_us_ - *clock_start_us_ < 500 * kMs;
  const bool hurry = phase_ == Phase::kStopping || just_started || Holding(now_us_);
  return (hurry ? 200 : 500) * kMs;
}

bool Field::Holding(std::int64_t us) const {
  if (!options_.hold || !options_.count || phase_ != Phase::kRunning) return false;
  return us - *clock_start_us_ >= kHoldAt && us - *clock_start_us_ < kHoldAt + kHoldFor;
}

std::int64_t Field::ClockMicros(std::int64_t us) const {
  if (!clock_start_us_) return 0;
  std::int64_t run = us - *clock_start_us_;
  if (options_.hold && options_.count && run > kHoldAt) run = std::max(kHoldAt, run - kHoldFor);
  return run + FirstClock();
}

int Field::LaneTime(std::size_t lane, std::int64_t us) const {
  return static_cast<int>((ClockMicros(us) - kStartSignal + kMs / 2) / kMs) - plan_.lanes[lane].stagger;
}

std::int64_t Field::LaneMoment(std::size_t lane, int lane_ms) const {
  const std::int64_t since_signal = (plan_.lanes[lane].stagger + lane_ms) * kMs;
  if (!options_.count) return *clock_start_us_ + since_signal;
  return *clock_start_us_ + kStartSignal + (options_.hold ? kHoldFor : 0) + since_signal;
}

}  // namespace quorvane::field
