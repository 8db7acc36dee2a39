#include "field/result.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "field/plan.h"

namespace quorvane::field {
namespace {

using Json = nlohmann::ordered_json;

// A race that the console runs is told as a console shows it, to be compared with either side.
Json LaneJson(const LaneResult& lane, bool followed) {
  Json cuts = Json::array();
  for (const CutResult& cut : lane.cuts) {
    Json told = {{"pylon", cut.pylon}};
    if (!followed) told["flown"] = cut.flown;
    told["time"] = cut.expected;
    cuts.push_back(told);
  }
  Json object = {{"lane", lane.lane}, {"target", lane.target}};
  if (followed) {
    object.update(
        {{"laps", lane.expected}, {"lights", lane.lights}, {"cuts", cuts}, {"cutBits", lane.cut_bits}});
  } else {
    object.update(
        {{"flown", lane.flown}, {"expected", lane.expected}, {"cuts", cuts}, {"turns", lane.turns}});
  }
  object.update({{"final", lane.final_time}, {"place", lane.place}});
  return object;
}

void AddLine(Json& object, const LineCounters& line, std::int64_t polls) {
  object["frames"] = {{"sent", line.sent}, {"lost", line.lost}, {"damaged", line.damaged}};
  object["noise"] = line.noise;
  object["polls"] = polls;
}

Json OrNull(const std::optional<std::int64_t>& value) {
  return value ? Json(*value) : Json();
}

// ---- Following a console.

constexpr std::int64_t kStartSignalMs = 60'000;
constexpr std::int64_t kCountBelow = 59'000;  // without a count the clock begins just before the start signal

bool IsRaceEvent(const Report& report) {
  return report.from == kStarter && report.to == kPylonBox;
}

bool IsLapEvent(const Report& report) {
  return report.from == kTimers && report.to == kStarter;
}

void Learn(StationView& view, const Report& report) {
  ++view.frames;
  view.race.clock = report.clock;
  view.race.lit = report.lit;
  if (IsLapEvent(report)) {
    view.race.lap = report.lap;
    return;
  }
  view.race.running = report.running;
  view.race.mode = report.mode;
  view.race.cuts = report.cuts;
  if (!report.running) view.race.lap = {};
}

// How many cuts a judge's two lights show: dark, one, or both for a double cut.
std::size_t CutsAt(std::uint8_t cuts, int pylon) {
  return static_cast<std::size_t>(std::popcount((unsigned{cuts} >> (2 * (pylon - 1))) & 3U));
}

}  // namespace

void RankLanes(std::vector<LaneResult>& lanes) {
  std::vector<LaneResult*> finishers;
  for (LaneResult& lane : lanes) {
    const auto target = static_cast<std::size_t>(lane.target);
    const bool finished = lane.expected.size() >= target && lane.cuts.size() < 2;
    lane.final_time = finished ? lane.expected[target - 1] : kNoResult;
    lane.place.clear();
    if (finished) finishers.push_back(&lane);
  }
  std::ranges::stable_sort(finishers, {}, &LaneResult::final_time);
  for (std::size_t i = 0; i < finishers.size(); ++i) finishers[i]->place = kPlaces.at(i);
}

std::string ToJson(const HeatResult& result) {
  Json lanes = Json::array();
  for (const LaneResult& lane : result.lanes) lanes.push_back(LaneJson(lane, result.followed.has_value()));
  Json object = {{"heat", result.heat}, {"mode", result.mode}, {"count", result.count}, {"lanes", lanes}};
  if (const auto& race = result.followed) {
    object["race"] = {{"from", race->from},
                      {"to", race->to},
                      {"clock", {race->first_clock, race->last_clock}},
                      {"drift", race->drift}};
  }
  AddLine(object, result.line, result.polls);
  return object.dump();
}

std::string ToJson(const ConsoleHeard& heard, const LineCounters& line) {
  Json stations = Json::array();
  for (std::uint8_t i = 0; i < kAddresses; ++i) {
    if (!IsStation(i)) continue;
    const Report& race = heard.stations[i].race;
    stations.push_back({{"station", i},
                        {"frames", heard.stations[i].frames},
                        {"running", race.running},
                        {"clock", race.clock},
                        {"mode", race.mode},
                        {"laps", race.lap},
                        {"cuts", race.cuts},
                        {"lights", race.lit}});
  }
  Json object = {{"stations", stations},
                 {"control",
                  {{"frames", heard.frames},
                   {"odd", heard.odd},
                   {"first", OrNull(heard.first_ms)},
                   {"last", OrNull(heard.last_ms)},
                   {"starter", OrNull(heard.starter_ms)}}}};
  AddLine(object, line, heard.polls);
  return object.dump();
}

std::optional<HeatResult> Follower::Hear(const Frame& frame, std::int64_t ms,
                                         const std::function<bool(std::uint8_t)>& hears) {
  const Report report = Decode(frame);
  if (report.from != kStarter && report.from != kTimers) return {};
  ++heard_.frames;
  heard_.last_ms = ms;
  if (!heard_.first_ms) heard_.first_ms = ms;
  const bool known = IsRaceEvent(report) || IsLapEvent(report);
  if (!known || Encode(report) != frame) ++heard_.odd;
  if (!known) return {};

  for (std::uint8_t i = 0; i < kAddresses; ++i) {
    if (hears(i)) Learn(heard_.stations[i], report);
  }
  const bool was_running = all_.race.running;
  Learn(all_, report);
  if (!was_running && all_.race.running) Begin(ms);
  if (all_.race.running) {
    NoteClock(ms);
    if (IsLapEvent(report)) NoteLaps();
    NoteCuts();
  } else if (was_running) {
    race_.followed->to = ms;
    return race_;
  }
  return {};
}

void Follower::Begin(std::int64_t ms) {
  const Report& race = all_.race;
  const int number = race_.followed ? race_.heat + 1 : 1;
  race_ = {};
  race_.heat = number;
  race_.mode = race.mode;
  race_.count = race.clock < kCountBelow;
  race_.followed = {.from = ms, .to = ms, .first_clock = race.clock, .last_clock = race.clock};
  race_.lanes.resize(FlyingLanes(race.mode));
  for (std::size_t i = 0; i < race_.lanes.size(); ++i) race_.lanes[i].lane = static_cast<int>(i) + 1;
}

void Follower::NoteClock(std::int64_t ms) {
  FollowedRace& race = *race_.followed;
  race.last_clock = all_.race.clock;
  const std::int64_t apart = (race.last_clock - race.first_clock) - (ms - race.from);
  race.drift = std::max(race.drift, std::abs(apart));
}

void Follower::NoteLaps() {
  for (std::size_t i = 0; i < race_.lanes.size(); ++i) {
    LaneResult& lane = race_.lanes[i];
    const std::size_t laps = all_.race.lap[i];
    lane.expected.resize(laps, LaneTime(lane));
    lane.lights.resize(laps, all_.race.lit[i]);
  }
}

void Follower::NoteCuts() {
  for (std::size_t i = 0; i < race_.lanes.size(); ++i) {
    LaneResult& lane = race_.lanes[i];
    lane.cut_bits = all_.race.cuts[i];
    for (int pylon = 1; pylon <= kHandCut; ++pylon) {
      const auto is_here = [pylon](const CutResult& cut) { return cut.pylon == pylon; };
      auto seen = static_cast<std::size_t>(std::count_if(lane.cuts.begin(), lane.cuts.end(), is_here));
      for (; seen < CutsAt(lane.cut_bits, pylon); ++seen) {
        lane.cuts.push_back({.pylon = pylon, .expected = LaneTime(lane)});
      }
      for (; seen > CutsAt(lane.cut_bits, pylon); --seen) {
        lane.cuts.erase(std::find_if(lane.cuts.rbegin(), lane.cuts.rend(), is_here).base() - 1);
      }
    }
    lane.target = TargetLaps(race_.mode, !lane.cuts.empty());
  }
}

// By the clock of the frame in hand, since the lane's own start signal.
int Follower::LaneTime(const LaneResult& lane) const {
  const int stagger = Staggers(race_.mode)[static_cast<std::size_t>(lane.lane - 1)];
  return static_cast<int>(all_.race.clock - kStartSignalMs) - stagger;
}

}  // namespace quorvane::field
