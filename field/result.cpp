#include "field/result.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace quorvane::field {
namespace {

using Json = nlohmann::ordered_json;

Json CutJson(const CutResult& cut) {
  return {{"pylon", cut.pylon}, {"flown", cut.flown}, {"time", cut.expected}};
}

// In the shape of what a console shows, so that it can be compared with either side.
Json SeenLaneJson(const LaneResult& lane) {
  Json cuts = Json::array();
  for (const CutResult& cut : lane.cuts) cuts.push_back({{"pylon", cut.pylon}, {"time", cut.expected}});
  return {{"lane", lane.lane},        {"target", lane.target}, {"laps", lane.expected},
          {"lights", lane.lights},    {"cuts", cuts},          {"cutBits", lane.cut_bits},
          {"final", lane.final_time}, {"place", lane.place}};
}

Json LaneJson(const LaneResult& lane) {
  Json cuts = Json::array();
  for (const CutResult& cut : lane.cuts) cuts.push_back(CutJson(cut));
  return {{"lane", lane.lane},         {"target", lane.target}, {"flown", lane.flown},
          {"expected", lane.expected}, {"cuts", cuts},          {"turns", lane.turns},
          {"final", lane.final_time},  {"place", lane.place}};
}

void AddLine(Json& object, const LineCounters& line, std::int64_t polls) {
  object["frames"] = {{"sent", line.sent}, {"lost", line.lost}, {"damaged", line.damaged}};
  object["noise"] = line.noise;
  object["polls"] = polls;
}

Json RaceJson(const FollowedRace& race) {
  return {{"from", race.from},
          {"to", race.to},
          {"clock", {race.first_clock, race.last_clock}},
          {"drift", race.drift}};
}

Json OrNull(const std::optional<std::int64_t>& value) {
  return value ? Json(*value) : Json();
}

Json StationJson(std::size_t address, const StationView& view) {
  const Report& race = view.race;
  return {{"station", address}, {"frames", view.frames}, {"running", race.running}, {"clock", race.clock},
          {"mode", race.mode},  {"laps", race.lap},      {"cuts", race.cuts},       {"lights", race.lit}};
}

}  // namespace

void RankLanes(std::vector<LaneResult>& lanes) {
  static constexpr std::array<const char*, 4> kPlaces = {"First", "Second", "Third", "Fourth"};
  std::vector<LaneResult*> finishers;
  for (LaneResult& lane : lanes) {
    const auto target = static_cast<std::size_t>(lane.target);
    const bool finished = lane.expected.size() >= target && lane.cuts.size() < 2;
    lane.final_time = finished ? lane.expected[target - 1] : kNoResult;
    lane.place.clear();
    if (finished) finishers.push_back(&lane);
  }
  std::stable_sort(finishers.begin(), finishers.end(),
                   [](const LaneResult* a, const LaneResult* b) { return a->final_time < b->final_time; });
  for (std::size_t i = 0; i < finishers.size() && i < kPlaces.size(); ++i) finishers[i]->place = kPlaces[i];
}

std::string ToJson(const HeatResult& result) {
  Json lanes = Json::array();
  for (const LaneResult& lane : result.lanes)
    lanes.push_back(result.followed ? SeenLaneJson(lane) : LaneJson(lane));
  Json object = {{"heat", result.heat}, {"mode", result.mode}, {"count", result.count}, {"lanes", lanes}};
  if (result.followed) object["race"] = RaceJson(*result.followed);
  AddLine(object, result.line, result.polls);
  return object.dump();
}

std::string ToJson(const ConsoleHeard& heard, const LineCounters& line) {
  Json stations = Json::array();
  for (std::uint8_t i = 0; i < kAddresses; ++i) {
    if (IsStation(i)) stations.push_back(StationJson(i, heard.stations[i]));
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

}  // namespace quorvane::field
