// The results as one JSON object.

#include "common/text.h"
#include "console/results_formats.h"
#include "console/results_words.h"
#include "records/project.h"

namespace quorvane {
namespace {

constexpr int kShapeVersion = 1;

template <typename Values, typename Write>
std::string Array(const Values& values, const std::string& separator, Write write) {
  std::string text;
  for (const auto& value : values) text += (text.empty() ? "" : separator) + write(value);
  return "[" + text + "]";
}

const char* Bool(bool value) {
  return value ? "true" : "false";
}

std::string Number(const char* name, std::int64_t value) {
  return "\"" + std::string(name) + "\":" + std::to_string(value);
}

std::string Text(const char* name, std::string_view value) {
  return "\"" + std::string(name) + "\":" + JsonString(value);
}

std::string BestJson(const char* name, const std::optional<BestTime>& best) {
  const std::string key = "\"" + std::string(name) + "\":";
  if (!best) return key + "null";
  return key + "{" + Number("ms", best->time) + "," + Number("race", best->race) + "," +
         Number("refly", best->refly) + "," + Number("lane", best->lane) +
         (best->lap != 0 ? "," + Number("lap", best->lap) : "") + "}";
}

std::string SummaryFields(const FlightSummary& summary) {
  return Number("racesFlown", summary.racesFlown) + "," + Number("cuts", summary.cuts) + "," +
         BestJson("fastestHeat", summary.fastestHeat) + "," + BestJson("fastestLap", summary.fastestLap);
}

std::string SummaryJson(const ContestSummary& summary) {
  int lane = 0;
  const std::string lanes = Array(summary.lanes, ",\n    ", [&](const LaneSummary& of) {
    return "{" + Number("lane", ++lane) + "," + SummaryFields(of) + "}";
  });
  return "{" + SummaryFields(summary) + ",\n   \"lanes\":" + lanes + "}";
}

std::string LapJson(const FlownLap& lap) {
  return "{" + Number("lap", lap.number) + "," + Number("ms", lap.time) +
         ",\"splitMs\":" + (lap.split ? std::to_string(*lap.split) : "null") +
         ",\"finishing\":" + Bool(lap.finishing) + "}";
}

std::string CutJson(const CutRecord& cut) {
  return "{" + Text("pylon", cut.pylon) + "," + Number("ms", cut.time) + "," + Number("lap", cut.lap) + "}";
}

std::string LaneJson(const LaneRecord& lane) {
  const auto fastest = FastestLap(lane);
  return "{" + Number("lane", lane.lane) + "," + Text("name", MarkingOf(lane)) + "," +
         Text("place", lane.placing) + "," + Text("position", lane.position) + "," +
         "\"finalMs\":" + (HasResult(lane) ? std::to_string(lane.final) : "null") + "," +
         Text("time", FinalText(lane)) +
         ",\"fastestLapMs\":" + (fastest ? std::to_string(*fastest->split) : "null") + "," +
         Number("lapTarget", lane.lapTarget) + ",\"novice\":" + Bool(lane.novice) +
         ",\n    \"laps\":" + Array(FlownLaps(lane), ",", LapJson) +
         ",\n    \"cuts\":" + Array(lane.cuts, ",", CutJson) +
         ",\"turns\":" + Array(lane.turns, ",", [](std::int32_t turn) { return std::to_string(turn); }) + "}";
}

std::string RaceJson(const RaceRecord& race) {
  std::vector<LaneRecord> lanes;
  for (const LaneRecord& lane : race.lanes) {
    if (lane.flies) lanes.push_back(lane);
  }
  return "{" + Number("race", race.number) + "," + Number("refly", race.refly) +
         ",\"counts\":" + Bool(race.stands) + "," + Number("reflownBy", race.reflownBy) + "," +
         Number("round", race.round) + "," + Number("heat", race.heat) + "," + Number("mode", race.mode) +
         "," + Text("modeName", race.modeName) + "," + Text("date", IsoDate(race.when, 'T')) + "," +
         Text("comments", CommentsOf(race)) + ",\n   \"lanes\":" + Array(lanes, ",\n   ", LaneJson) + "}";
}

}  // namespace

std::string ResultsJson(const ContestRecord& contest) {
  return "{" + Text("format", "quorvane-results") + "," + Number("version", kShapeVersion) + ",\n " +
         Text("event", contest.eventName) + "," + Text("project", FileNameOf(contest.projectFile)) +
         ",\n \"summary\":" + SummaryJson(SummaryOf(contest)) +
         ",\n \"races\":" + Array(contest.races, ",\n  ", RaceJson) + "}\n";
}

}  // namespace quorvane
