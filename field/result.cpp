#include "field/result.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace quorvane::field {
namespace {

using Json = nlohmann::ordered_json;

// A lane of a race that the console runs is told in the shape of what a console shows, so that it can be
// compared with either side.
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

}  // namespace quorvane::field
