#include "tools/field/result.h"

#include <algorithm>
#include <array>

namespace quorvane::field {
namespace {

// Writes values with commas between them and brackets round them.
template <typename Values, typename Write>
std::string Joined(const Values& values, Write write) {
  std::string text = "[";
  for (const auto& value : values) {
    if (text.size() > 1) text += ',';
    text += write(value);
  }
  return text + "]";
}

std::string Numbers(const std::vector<int>& values) {
  return Joined(values, [](int value) { return std::to_string(value); });
}

std::string CutJson(const CutResult& cut) {
  return "{\"pylon\":" + std::to_string(cut.pylon) + ",\"flown\":" + std::to_string(cut.flown) +
         ",\"time\":" + std::to_string(cut.expected) + "}";
}

// In the shape of what a console shows, so that it can be compared with either side.
std::string SeenLaneJson(const LaneResult& lane) {
  const auto cut = [](const CutResult& seen) {
    return "{\"pylon\":" + std::to_string(seen.pylon) + ",\"time\":" + std::to_string(seen.expected) + "}";
  };
  return "{\"lane\":" + std::to_string(lane.lane) + ",\"target\":" + std::to_string(lane.target) +
         ",\"laps\":" + Numbers(lane.expected) + ",\"lights\":" + Numbers(lane.lights) +
         ",\"cuts\":" + Joined(lane.cuts, cut) + ",\"cutBits\":" + std::to_string(lane.cut_bits) +
         ",\"final\":" + std::to_string(lane.final_time) + ",\"place\":\"" + lane.place + "\"}";
}

std::string LaneJson(const LaneResult& lane) {
  return "{\"lane\":" + std::to_string(lane.lane) + ",\"target\":" + std::to_string(lane.target) +
         ",\"flown\":" + Numbers(lane.flown) + ",\"expected\":" + Numbers(lane.expected) +
         ",\"cuts\":" + Joined(lane.cuts, CutJson) + ",\"turns\":" + Numbers(lane.turns) +
         ",\"final\":" + std::to_string(lane.final_time) + ",\"place\":\"" + lane.place + "\"}";
}

std::string LineJson(const LineCounters& line, std::int64_t polls) {
  return ",\"frames\":{\"sent\":" + std::to_string(line.sent) + ",\"lost\":" + std::to_string(line.lost) +
         ",\"damaged\":" + std::to_string(line.damaged) + "},\"noise\":" + std::to_string(line.noise) +
         ",\"polls\":" + std::to_string(polls) + "}";
}

std::string RaceJson(const FollowedRace& race) {
  return ",\"race\":{\"from\":" + std::to_string(race.from) + ",\"to\":" + std::to_string(race.to) +
         ",\"clock\":[" + std::to_string(race.first_clock) + "," + std::to_string(race.last_clock) +
         "],\"drift\":" + std::to_string(race.drift) + "}";
}

std::string Bool(bool value) {
  return value ? "true" : "false";
}

std::string OrNull(const std::optional<std::int64_t>& value) {
  return value ? std::to_string(*value) : "null";
}

std::string StationJson(std::size_t address, const StationView& view) {
  const Report& race = view.race;
  const auto number = [](std::uint8_t value) { return std::to_string(value); };
  return "{\"station\":" + std::to_string(address) + ",\"frames\":" + std::to_string(view.frames) +
         ",\"running\":" + Bool(race.running) + ",\"clock\":" + std::to_string(race.clock) +
         ",\"mode\":" + number(race.mode) + ",\"laps\":" + Joined(race.lap, number) +
         ",\"cuts\":" + Joined(race.cuts, number) + ",\"lights\":" + Joined(race.lit, number) + "}";
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
  return "{\"heat\":" + std::to_string(result.heat) + ",\"mode\":" + std::to_string(result.mode) +
         ",\"count\":" + Bool(result.count) +
         ",\"lanes\":" + Joined(result.lanes, result.followed ? SeenLaneJson : LaneJson) +
         (result.followed ? RaceJson(*result.followed) : "") + LineJson(result.line, result.polls);
}

std::string ToJson(const ConsoleHeard& heard, const LineCounters& line) {
  std::vector<std::size_t> stations;
  for (std::uint8_t i = 0; i < kAddresses; ++i) {
    if (IsStation(i)) stations.push_back(i);
  }
  return "{\"stations\":" +
         Joined(stations, [&](std::size_t i) { return StationJson(i, heard.stations[i]); }) +
         ",\"control\":{\"frames\":" + std::to_string(heard.frames) +
         ",\"odd\":" + std::to_string(heard.odd) + ",\"first\":" + OrNull(heard.first_ms) +
         ",\"last\":" + OrNull(heard.last_ms) + ",\"starter\":" + OrNull(heard.starter_ms) + "}" +
         LineJson(line, heard.polls);
}

}  // namespace quorvane::field
