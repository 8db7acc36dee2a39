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

std::string LaneJson(const LaneResult& lane) {
  return "{\"lane\":" + std::to_string(lane.lane) + ",\"target\":" + std::to_string(lane.target) +
         ",\"flown\":" + Numbers(lane.flown) + ",\"expected\":" + Numbers(lane.expected) +
         ",\"cuts\":" + Joined(lane.cuts, CutJson) + ",\"turns\":" + Numbers(lane.turns) +
         ",\"final\":" + std::to_string(lane.final_time) + ",\"place\":\"" + lane.place + "\"}";
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
  const LineCounters& line = result.line;
  return "{\"heat\":" + std::to_string(result.heat) + ",\"mode\":" + std::to_string(result.mode) +
         ",\"count\":" + (result.count ? "true" : "false") + ",\"lanes\":" + Joined(result.lanes, LaneJson) +
         ",\"frames\":{\"sent\":" + std::to_string(line.sent) + ",\"lost\":" + std::to_string(line.lost) +
         ",\"damaged\":" + std::to_string(line.damaged) + "},\"noise\":" + std::to_string(line.noise) +
         ",\"polls\":" + std::to_string(result.polls) + "}";
}

}  // namespace quorvane::field
