#include "field/field.h"

#include <algorithm>

namespace quorvane::field {
namespace {

constexpr std::int64_t kStatusInterval = 3000 * kMs;
constexpr std::int64_t kReminderInterval = 700 * kMs;
constexpr std::int64_t kPollDelay = 15 * kMs;
constexpr std::int64_t kAckDelay = 10 * kMs;
constexpr std::int64_t kLitUnit = 8 * kMs;
constexpr std::uint8_t kTurnLitLeast = 38;  // 300 ms
constexpr std::uint8_t kReminderLit = 25;   // 200 ms: a late lap must not lock out the next one
constexpr std::uint8_t kHoldButton = 16;
constexpr std::uint8_t kTemperature = 65;  // 22 degrees

// By topic.
constexpr std::array<std::uint8_t, 9> kAddressees = {kStarter, kPylonBox, kPylonBox, kTimers, kJudge1,
                                                     kStarter, kConsole,  kConsole,  kStarter};

// The stations add about this much between reading their clock and the radio's last bit.
std::uint8_t DelayOf(std::uint8_t from) {
  return from == kStarter ? 6 : from == kTimers ? 5 : 4;
}

// Judges and timers run on four dry cells, the others on a car battery.
std::uint8_t VoltageOf(std::uint8_t station) {
  return station == kStarter || station == kPylonBox || station == kDisplay ? 171 : 67;
}

std::uint8_t LightLeft(std::int64_t ends_us, std::int64_t now_us) {
  const std::int64_t left = (ends_us - now_us + kLitUnit - 1) / kLitUnit;
  return static_cast<std::uint8_t>(std::clamp<std::int64_t>(left, 0, 255));
}

}  // namespace

Field::Field(const FieldOptions& options) : options_(options), line_(options.line, options.seed + 1) {
  MakePlan();
  if (options_.controlled) {
    options_.count = true;  // the console's frames count from the beginning of the count, flown or not
    options_.hold = false;
    for (const std::uint8_t station : {kStarter, kTimers}) {
      options_.silent.push_back({.station = station});
      if (options_.starter_at) options_.silent.back().to_ms = *options_.starter_at;
    }
    if (options_.starter_at) {
      At(*options_.starter_at * kMs, [this] {
        phase_ = Phase::kIdle;
        clock_start_us_.reset();
      });
    }
  }
  At(0, [this] { RaceTick(); });
  At(0, [this] { ReminderTick(); });
  std::int64_t first = 200 * kMs;
  for (const std::uint8_t station : {0, 1, 2, 4, 6, 7}) {
    At(first, [this, station] { StatusTick(station); });
    first += kStatusInterval / 6;
  }
}

void Field::BeginHeats(std::int64_t ms) {
  if (begun_ || options_.controlled) return;
  begun_ = true;
  At(std::max(ms * kMs, now_us_), [this] { PrepareHeat(); });
}

std::vector<Chunk> Field::AdvanceTo(std::int64_t ms) {
  RunUntil(ms * kMs);
  return line_.Deliver(ms * kMs);
}

void Field::Receive(std::span<const std::uint8_t> bytes, std::int64_t ms) {
  for (const Frame& frame : Listen(heard_, bytes)) {
    const std::int64_t us = std::max(ms * kMs, now_us_);
    if (frame[5] == kConsole) {
      Answer(frame[4], us);
    } else if (options_.controlled) {
      Follow(frame, us);
    }
  }
}

void Field::Answer(std::uint8_t station, std::int64_t us) {
  ++polls_;
  if (!IsStation(station) || !OnAir(station, us)) return;
  const std::int64_t at = us + kPollDelay + options_.late[station] * kMs;
  SpeakAt(at, {Topic::kPollAnswer, station});
  if (options_.twice[station]) SpeakAt(at, {Topic::kSecondAnswer, station});
}

void Field::Follow(const Frame& frame, std::int64_t us) {
  const auto hears = [&](std::uint8_t station) { return IsStation(station) && OnAir(station, us); };
  if (auto race = follower_.Hear(frame, us / kMs, hears)) {
    Conclude(*race);
    if (race->heat == options_.heats) EndSoon(us);
  }
  if (OnAir(kStarter, us)) return;  // which is who the stations believe
  phase_ = follower_.race().running ? Phase::kRunning : Phase::kIdle;
  clock_start_us_.reset();
  if (phase_ == Phase::kRunning) clock_start_us_ = us - follower_.race().clock * kMs;
}

ConsoleHeard Field::Heard() const {
  ConsoleHeard heard = follower_.heard();
  heard.polls = polls_before_ + polls_;
  heard.starter_ms = starter_heard_ms_;
  return heard;
}

bool Field::OnAir(std::uint8_t station, std::int64_t us) const {
  return std::ranges::none_of(options_.silent, [&](const Silence& off) {
    return off.station == station && us / kMs >= off.from_ms && us / kMs < off.to_ms;
  });
}

std::int64_t Field::NextDue() const {
  const std::int64_t next = std::min({agenda_.begin()->first, NextSend(), line_.NextDue()});
  return (next + kMs - 1) / kMs;
}

void Field::Speak(Wish wish) {
  if (std::ranges::find(wishes_, wish) == wishes_.end()) wishes_.push_back(wish);
}

void Field::RaceTick() {
  Speak({Topic::kRace, kStarter});
  At(now_us_ + RaceTickInterval(), [this] { RaceTick(); });
}

void Field::ReminderTick() {
  if (phase_ == Phase::kRunning) {
    reminder_due_ = true;
    Speak({Topic::kLaps, kTimers});
  }
  At(now_us_ + kReminderInterval, [this] { ReminderTick(); });
}

void Field::StatusTick(std::uint8_t station) {
  Speak({Topic::kStatus, station});
  At(now_us_ + kStatusInterval, [this, station] { StatusTick(station); });
}

std::int64_t Field::NextSend() const {
  return wishes_.empty() ? kNever : std::max(line_.free_us(), now_us_);
}

void Field::RunUntil(std::int64_t us) {
  for (;;) {
    const std::int64_t event_us = agenda_.begin()->first;  // the ticks keep the agenda from running dry
    const std::int64_t send_us = NextSend();
    if (std::min(event_us, send_us) > us) break;
    now_us_ = std::max(now_us_, std::min(event_us, send_us));
    if (event_us <= send_us) {
      const auto next = agenda_.extract(agenda_.begin());
      next.mapped()();
    } else {
      Transmit();
    }
  }
  now_us_ = std::max(now_us_, us);
}

void Field::Transmit() {
  const auto urgent = std::ranges::min_element(wishes_, {}, &Wish::topic);
  const Wish wish = *urgent;
  wishes_.erase(urgent);
  if (!OnAir(wish.station, now_us_)) return;
  const std::int64_t end_us = line_.Take(now_us_);
  if (wish.topic == Topic::kRace && phase_ == Phase::kStarting) {
    // Whoever starts a clock on the first running frame, as it arrives, runs with the starter.
    phase_ = Phase::kRunning;
    clock_start_us_ = end_us;
    ScheduleFlights();
  }
  const Report report = Compose(wish, end_us);
  line_.Send(Encode(report));
  AfterTransmission(wish, report, end_us);
}

Report Field::Compose(Wish wish, std::int64_t end_us) {
  Report report;
  const bool acknowledges = wish.topic == Topic::kAckLaps || wish.topic == Topic::kAckTurns;
  report.from = acknowledges ? kAcknowledgement : wish.station;
  report.to = kAddressees[static_cast<std::size_t>(wish.topic)];
  report.running = phase_ == Phase::kRunning;
  report.clock = (ClockMicros(end_us) + kMs / 2) / kMs;
  report.mode = static_cast<std::uint8_t>(plan_.mode);
  report.dif = DelayOf(report.from);
  report.temperature = kTemperature;
  report.voltage = VoltageOf(wish.station);
  AddStationState(report, wish.station, end_us);
  // The acknowledgement of a lap report repeats what it acknowledges.
  if (wish.topic == Topic::kAckLaps) AddLapLights(report, end_us, false);
  if (wish.station == kTimers) AddLapLights(report, end_us, std::exchange(reminder_due_, false));
  return report;
}

void Field::AddStationState(Report& report, std::uint8_t station, std::int64_t end_us) const {
  for (std::size_t i = 0; i < kLanes; ++i) {
    const Lane& lane = lanes_[i];
    if (station < kStarter) {
      report.cuts[i] = lane.judged_cuts & static_cast<std::uint8_t>(3 << (2 * station));
    } else if (station != kTimers) {
      report.cuts[i] = lane.starter_cuts;
    }
    if (station == kJudge1) {
      // Turns are not counted. A light about to go out is no longer reported, or a console that heard the
      // turn late could take it for another one.
      const std::uint8_t left = LightLeft(lane.turn_light_ends, end_us);
      if (left < kTurnLitLeast) continue;
      report.lit[i] = left;
      report.turns |= static_cast<std::uint8_t>(1 << i);
    }
  }
  if (station == kStarter && Holding(end_us)) report.buttons = kHoldButton;
}

// A lap light burns for two seconds after the lap and says how long the console shall refuse the next lap.
// After that a lane is lit only in the reminders, which bring a missed lap to the console all the same.
void Field::AddLapLights(Report& report, std::int64_t end_us, bool remind) const {
  for (std::size_t i = 0; i < kLanes; ++i) {
    report.lap[i] = lanes_[i].laps;
    if (phase_ != Phase::kRunning || lanes_[i].laps == 0) continue;
    report.lit[i] = LightLeft(lanes_[i].lap_light_ends, end_us);
    if (remind && report.lit[i] == 0) report.lit[i] = kReminderLit;
  }
}

void Field::AfterTransmission(Wish wish, const Report& report, std::int64_t end_us) {
  const bool to_console_only = report.to == kConsole;
  if (report.from == kStarter && !starter_heard_ms_) starter_heard_ms_ = end_us / kMs;
  if (report.from == kTimers && !to_console_only && NoteLapsOnAir(end_us)) {
    SpeakAt(end_us + kAckDelay, {Topic::kAckLaps, kStarter});
  }
  if (wish.topic == Topic::kRace) NoteCutsOnAir(end_us);
  if (wish.topic == Topic::kTurns && std::exchange(turn_unacknowledged_, false)) {
    SpeakAt(end_us + kAckDelay, {Topic::kAckTurns, kPylonBox});
  }
}

// The console books a lap at the arrival of the first report of it.
bool Field::NoteLapsOnAir(std::int64_t end_us) {
  bool fresh = false;
  for (std::size_t i = 0; i < result_.lanes.size(); ++i) {
    LaneResult& lane = result_.lanes[i];
    while (lane.expected.size() < lane.flown.size()) {
      lane.expected.push_back(LaneTime(i, end_us));
      fresh = true;
    }
  }
  return fresh;
}

void Field::NoteCutsOnAir(std::int64_t end_us) {
  for (std::size_t i = 0; i < result_.lanes.size(); ++i) {
    for (CutResult& cut : result_.lanes[i].cuts) {
      if (cut.expected < 0) cut.expected = LaneTime(i, end_us);
    }
  }
}

}  // namespace quorvane::field
