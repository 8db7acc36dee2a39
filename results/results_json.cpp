// The results as one JSON object.

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "records/project.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kShapeVersion = 1;

Json BestJson(const std::optional<BestTime>& best) {
  if (!best) return nullptr;
  Json json = {{"ms", best->time}, {"race", best->race}, {"refly", best->refly}, {"lane", best->lane}};
  if (best->lap != 0) json["lap"] = best->lap;
  return json;
}

Json SummaryJson(const FlightSummary& summary) {
  return {{"racesFlown", summary.racesFlown},
          {"cuts", summary.cuts},
          {"fastestHeat", BestJson(summary.fastestHeat)},
          {"fastestLap", BestJson(summary.fastestLap)}};
}

Json ContestJson(const ContestSummary& summary) {
  Json json = SummaryJson(summary);
  for (const FlightSummary& of : summary.lanes) {
    Json lane = {{"lane", json["lanes"].size() + 1}};
    lane.update(SummaryJson(of));
    json["lanes"].push_back(lane);
  }
  return json;
}

Json LapJson(const FlownLap& lap) {
  return {{"lap", lap.number},
          {"ms", lap.time},
          {"splitMs", lap.split ? Json(*lap.split) : Json()},
          {"finishing", lap.finishing}};
}

// Members that only a race has that did not go as usual.

Json CorrectionJson(const CorrectionRecord& correction) {
  const auto entry = [](const auto& of) { return of ? Json(EntryText(*of)) : Json(); };
  Json json = {{"ms", correction.time},
               {"what", correction.what},
               {"by", correction.by},
               {"before", entry(correction.before)},
               {"after", entry(correction.after)}};
  if (correction.amended) json["amended"] = MomentText(*correction.amended);
  return json;
}

void AddUnusual(Json& json, const RaceRecord& race) {
  if (!race.recovered.empty()) json["recovered"] = race.recovered;
  if (race.amendments > 0) json["amendments"] = race.amendments;
  if (!race.radio) return;
  Json silent = Json::array();
  for (const auto& [name, frames, silence] : SilentStations(*race.radio)) {
    silent.push_back({{"station", name}, {"ms", silence}, {"frames", frames}});
  }
  json["radio"] = {{"framesDamaged", race.radio->damaged}, {"silent", silent}};
}

Json LaneJson(const LaneRecord& lane) {
  const auto fastest = FastestLap(lane);
  Json laps = Json::array();
  for (const FlownLap& lap : FlownLaps(lane)) laps.push_back(LapJson(lap));
  Json cuts = Json::array();
  for (const CutRecord& cut : lane.cuts)
    cuts.push_back({{"pylon", cut.pylon}, {"ms", cut.time}, {"lap", cut.lap}});
  Json json = {{"lane", lane.lane},
               {"name", lane.name},
               {"place", lane.placing},
               {"position", lane.position},
               {"finalMs", HasResult(lane) ? Json(lane.final) : Json()},
               {"time", FinalText(lane)},
               {"fastestLapMs", fastest ? Json(*fastest->split) : Json()},
               {"lapTarget", lane.lapTarget},
               {"novice", lane.novice},
               {"laps", laps},
               {"cuts", cuts},
               {"turns", lane.turns}};
  for (const CorrectionRecord& correction : lane.corrections) {
    json["corrections"].push_back(CorrectionJson(correction));
  }
  return json;
}

Json RaceJson(const RaceRecord& race) {
  Json lanes = Json::array();
  for (const LaneRecord& lane : FlyingLanes(race)) lanes.push_back(LaneJson(lane));
  Json json = {{"race", race.number},         {"refly", race.refly},       {"counts", race.stands},
               {"reflownBy", race.reflownBy}, {"round", race.round},       {"heat", race.heat},
               {"mode", race.mode},           {"modeName", race.modeName}, {"date", MomentText(race.when)},
               {"comments", CommentsOf(race)}};
  AddUnusual(json, race);
  json["lanes"] = lanes;
  return json;
}

// New lines for people who read it. No quote stands bare in a string, so none of these is part of a value.
constexpr std::pair<std::string_view, std::string_view> kBreaks[] = {
    {",\"event\":", ",\n \"event\":"},        {",\"summary\":", ",\n \"summary\":"},
    {",\"races\":", ",\n \"races\":"},        {",\"lanes\":", ",\n   \"lanes\":"},
    {",\"laps\":", ",\n    \"laps\":"},       {",\"cuts\":[", ",\n    \"cuts\":["},
    {"}},{\"lane\":", "}},\n    {\"lane\":"}, {"null},{\"lane\":", "null},\n    {\"lane\":"},
    {"]},{\"lane\":", "]},\n   {\"lane\":"},  {"]},{\"race\":", "]},\n  {\"race\":"}};

}  // namespace

std::string ResultsJson(const ContestRecord& contest) {
  Json races = Json::array();
  for (const RaceRecord& race : contest.races) races.push_back(RaceJson(race));
  const Json json = {{"format", "quorvane-results"},
                     {"version", kShapeVersion},
                     {"event", contest.eventName},
                     {"project", FileNameOf(contest.projectFile)},
                     {"summary", ContestJson(SummaryOf(contest))},
                     {"races", races}};
  std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
  for (const auto& [together, apart] : kBreaks) text = Replaced(text, together, apart);
  return text;
}

}  // namespace quorvane
