#include "tools/field/compare.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <map>

#include "tools/field/json.h"

namespace quorvane::field {
namespace {

// ---- Reading. A false result means that the value is there but is not what it should be.

bool ToInt(const JsonValue& value, int& result) {
  const double* number = value.As<double>();
  if (number == nullptr || std::abs(*number) > 1e9 || *number != std::floor(*number)) return false;
  result = static_cast<int>(*number);
  return true;
}

bool ReadNumber(const JsonValue& object, std::string_view name, int& result) {
  const JsonValue* value = object.Find(name);
  return value != nullptr && ToInt(*value, result);
}

bool ReadNumbers(const JsonValue& value, std::vector<int>& result) {
  const JsonArray* items = value.As<JsonArray>();
  if (items == nullptr) return false;
  for (const JsonValue& item : *items) {
    if (!ToInt(item, result.emplace_back())) return false;
  }
  return true;
}

bool ReadCuts(const JsonValue& value, std::vector<ToldCut>& cuts) {
  const JsonArray* items = value.As<JsonArray>();
  if (items == nullptr) return false;
  for (const JsonValue& item : *items) {
    ToldCut cut;
    if (!ReadNumber(item, "pylon", cut.pylon)) return false;
    int time = 0;
    if (item.Find("time") != nullptr) {
      if (!ReadNumber(item, "time", time)) return false;
      cut.time = time;
    }
    cuts.push_back(cut);
  }
  return true;
}

bool ReadTurns(const JsonValue& value, std::optional<int>& turns) {
  std::vector<int> times;
  if (value.As<JsonArray>() != nullptr) {
    turns = static_cast<int>(value.As<JsonArray>()->size());
    return ReadNumbers(value, times);
  }
  return ToInt(value, turns.emplace());
}

// The name of the member that is missing or wrong; empty when the lane could be read.
std::string ReadLane(const JsonValue& value, ToldLane& lane) {
  if (!ReadNumber(value, "lane", lane.lane) || lane.lane < 1 || lane.lane > kLanes) return "lane";
  const JsonValue* laps = value.Find("laps");
  if (laps == nullptr) laps = value.Find("expected");
  if (laps == nullptr || !ReadNumbers(*laps, lane.laps)) return "laps";
  const JsonValue* cuts = value.Find("cuts");
  if (cuts == nullptr || !ReadCuts(*cuts, lane.cuts)) return "cuts";
  const JsonValue* turns = value.Find("turns");
  if (turns != nullptr && !ReadTurns(*turns, lane.turns)) return "turns";
  if (!ReadNumber(value, "final", lane.final_time)) return "final";
  const JsonValue* place = value.Find("place");
  if (place == nullptr || place->As<std::string>() == nullptr) return "place";
  lane.place = *place->As<std::string>();
  return "";
}

std::string ReadHeat(const JsonValue& value, ToldHeat& heat) {
  if (!ReadNumber(value, "heat", heat.heat)) return "\"heat\" is not a whole number";
  const JsonValue* lanes = value.Find("lanes");
  if (lanes == nullptr || lanes->As<JsonArray>() == nullptr) return "\"lanes\" is not an array";
  for (const JsonValue& item : *lanes->As<JsonArray>()) {
    const std::string fault = ReadLane(item, heat.lanes.emplace_back());
    if (!fault.empty()) return "a lane's \"" + fault + "\" is missing or wrong";
  }
  return "";
}

// ---- Comparing.

constexpr std::array<const char*, 4> kPlaces = {"First", "Second", "Third", "Fourth"};

// 0 for "First" to 3, 4 for everything that is no place.
std::size_t Rank(const std::string& place) {
  return static_cast<std::size_t>(std::find(kPlaces.begin(), kPlaces.end(), place) - kPlaces.begin());
}

std::string PlaceName(const std::string& place) {
  return Rank(place) < 4 ? place : "no place";
}

std::string FinalName(int final_time) {
  return final_time >= kNoResult ? "no result" : std::to_string(final_time);
}

class LaneComparison {
 public:
  LaneComparison(const ToldLane& flown, const ToldLane& shown, const CompareOptions& options,
                 std::string where, std::vector<std::string>& differences)
      : flown_(flown),
        shown_(shown),
        options_(options),
        where_(std::move(where)),
        differences_(differences) {}

  void Run() {
    Laps();
    Cuts();
    Turns();
    if (!TimeFits(flown_.final_time, shown_.final_time)) {
      Say("final " + FinalName(flown_.final_time) + " flown, " + FinalName(shown_.final_time) + " shown");
    }
    // On a bad line late laps may change the order; the places are then held against the shown finals
    // instead.
    if (!options_.lossy && Rank(flown_.place) != Rank(shown_.place)) {
      Say(PlaceName(flown_.place) + " flown, " + PlaceName(shown_.place) + " shown");
    }
  }

 private:
  void Say(const std::string& what) { differences_.push_back(where_ + ": " + what); }

  bool TimeFits(int flown, int shown) const {
    if (flown >= kNoResult || shown >= kNoResult) return flown >= kNoResult && shown >= kNoResult;
    return shown >= flown - options_.tolerance && (options_.lossy || shown <= flown + options_.tolerance);
  }

  void Laps() {
    const std::size_t flown = flown_.laps.size();
    const std::size_t shown = shown_.laps.size();
    const bool may_lack = options_.lossy && flown_.final_time >= kNoResult;
    if (shown > flown || (shown < flown && !may_lack)) {
      Say(std::to_string(flown) + " laps flown, " + std::to_string(shown) + " shown");
    }
    for (std::size_t i = 0; i < std::min(flown, shown); ++i) {
      if (TimeFits(flown_.laps[i], shown_.laps[i])) continue;
      Say("lap " + std::to_string(i + 1) + " at " + std::to_string(flown_.laps[i]) + " flown, at " +
          std::to_string(shown_.laps[i]) + " shown");
    }
  }

  static std::vector<ToldCut> CutsAt(const ToldLane& lane, int pylon) {
    std::vector<ToldCut> cuts;
    std::copy_if(lane.cuts.begin(), lane.cuts.end(), std::back_inserter(cuts),
                 [pylon](const ToldCut& cut) { return cut.pylon == pylon; });
    return cuts;
  }

  void Cuts() {
    for (int pylon = 1; pylon <= kHandCut; ++pylon) {
      const std::vector<ToldCut> flown = CutsAt(flown_, pylon);
      const std::vector<ToldCut> shown = CutsAt(shown_, pylon);
      const std::string at = " at pylon " + std::to_string(pylon);
      if (flown.size() != shown.size()) {
        Say(std::to_string(flown.size()) + " cuts" + at + " flown, " + std::to_string(shown.size()) +
            " shown");
        continue;
      }
      for (std::size_t i = 0; i < flown.size(); ++i) {
        if (!flown[i].time || !shown[i].time || TimeFits(*flown[i].time, *shown[i].time)) continue;
        Say("cut" + at + " at " + std::to_string(*flown[i].time) + " flown, at " +
            std::to_string(*shown[i].time) + " shown");
      }
    }
    const auto elsewhere = std::find_if(shown_.cuts.begin(), shown_.cuts.end(), [](const ToldCut& cut) {
      return cut.pylon < 1 || cut.pylon > kHandCut;
    });
    if (elsewhere != shown_.cuts.end()) Say("a cut at no pylon shown");
  }

  void Turns() {
    if (!flown_.turns || !shown_.turns) return;
    if (*shown_.turns <= *flown_.turns && (options_.lossy || *shown_.turns == *flown_.turns)) return;
    Say(std::to_string(*flown_.turns) + " turns flown, " + std::to_string(*shown_.turns) + " shown");
  }

  const ToldLane& flown_;
  const ToldLane& shown_;
  const CompareOptions& options_;
  const std::string where_;
  std::vector<std::string>& differences_;
};

std::map<int, ToldLane> ByLane(const ToldHeat& heat) {
  std::map<int, ToldLane> lanes;
  for (const ToldLane& lane : heat.lanes) lanes.emplace(lane.lane, lane);
  return lanes;
}

// The places shown must be those of the finals shown.
void CheckShownOrder(const ToldHeat& heat, const std::string& where, std::vector<std::string>& differences) {
  std::vector<ToldLane> finishers;
  for (const auto& [number, lane] : ByLane(heat)) {
    if (lane.final_time < kNoResult) finishers.push_back(lane);
  }
  std::stable_sort(finishers.begin(), finishers.end(),
                   [](const ToldLane& a, const ToldLane& b) { return a.final_time < b.final_time; });
  for (std::size_t i = 0; i < finishers.size(); ++i) {
    if (Rank(finishers[i].place) == i) continue;
    differences.push_back(where + " lane " + std::to_string(finishers[i].lane) + ": " +
                          PlaceName(finishers[i].place) + " shown, but its final is " + kPlaces[i]);
  }
}

void CompareHeat(const ToldHeat& flown, const ToldHeat& shown, const CompareOptions& options,
                 std::vector<std::string>& differences) {
  const std::string heat = "heat " + std::to_string(flown.heat);
  if (flown.heat != shown.heat) {
    differences.push_back(heat + ": heat " + std::to_string(shown.heat) + " shown in its place");
    return;
  }
  const std::map<int, ToldLane> flown_lanes = ByLane(flown);
  const std::map<int, ToldLane> shown_lanes = ByLane(shown);
  for (int number = 1; number <= kLanes; ++number) {
    const std::string where = heat + " lane " + std::to_string(number);
    const auto f = flown_lanes.find(number);
    const auto s = shown_lanes.find(number);
    if (f != flown_lanes.end() && s == shown_lanes.end()) {
      differences.push_back(where + ": flown, but not shown");
    } else if (s != shown_lanes.end()) {
      ToldLane idle;
      idle.turns = 0;
      LaneComparison(f == flown_lanes.end() ? idle : f->second, s->second, options, where, differences).Run();
    }
  }
  if (options.lossy) CheckShownOrder(shown, heat, differences);
}

}  // namespace

std::optional<std::vector<ToldHeat>> ReadHeats(std::istream& in, std::string& error) {
  std::vector<ToldHeat> heats;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    const std::optional<JsonValue> value = ParseJson(line);
    std::string fault;
    if (!value || value->As<JsonObject>() == nullptr) {
      fault = "not a JSON object";
    } else if (value->Find("heat") != nullptr) {
      fault = ReadHeat(*value, heats.emplace_back());
    }
    if (!fault.empty()) {
      error = "line " + std::to_string(number) + ": " + fault;
      return std::nullopt;
    }
  }
  if (in.bad()) {
    error = "cannot be read";
    return std::nullopt;
  }
  return heats;
}

std::vector<std::string> CompareHeats(const std::vector<ToldHeat>& flown, const std::vector<ToldHeat>& shown,
                                      const CompareOptions& options) {
  std::vector<std::string> differences;
  if (flown.size() != shown.size()) {
    differences.push_back(std::to_string(flown.size()) + " heats flown, " + std::to_string(shown.size()) +
                          " shown");
  }
  for (std::size_t i = 0; i < std::min(flown.size(), shown.size()); ++i) {
    CompareHeat(flown[i], shown[i], options, differences);
  }
  return differences;
}

}  // namespace quorvane::field
