#include "field/compare.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>

namespace quorvane::field {
namespace {

using nlohmann::json;

// What is wrong with a file, in words.
struct Fault {
  std::string text;
};

int ToInt(const json& value, const char* name) {
  const auto number = value.is_number_integer() ? value.get<std::int64_t>() : INT64_MAX;
  if (std::abs(static_cast<double>(number)) > 1e9)
    throw Fault{"\"" + std::string(name) + "\" is not a whole number"};
  return static_cast<int>(number);
}

int ReadNumber(const json& object, const char* name) {
  return ToInt(object.contains(name) ? object[name] : json(), name);
}

// The array of that name.
const json& ReadArray(const json& object, const char* name) {
  if (!object.contains(name) || !object[name].is_array())
    throw Fault{"\"" + std::string(name) + "\" is not an array"};
  return object[name];
}

std::vector<int> ReadNumbers(const json& object, const char* name) {
  std::vector<int> numbers;
  for (const json& item : ReadArray(object, name)) numbers.push_back(ToInt(item, name));
  return numbers;
}

ToldCut ReadCut(const json& value) {
  ToldCut cut{ReadNumber(value, "pylon"), {}};
  if (value.contains("time")) cut.time = ReadNumber(value, "time");
  return cut;
}

ToldLane ReadLane(const json& value) {
  ToldLane lane;
  lane.lane = ReadNumber(value, "lane");
  if (lane.lane < 1 || lane.lane > kLanes) throw Fault{"there is no lane " + std::to_string(lane.lane)};
  lane.laps = ReadNumbers(value, value.contains("laps") ? "laps" : "expected");
  for (const json& cut : ReadArray(value, "cuts")) lane.cuts.push_back(ReadCut(cut));
  if (value.contains("turns")) {
    const bool listed = value["turns"].is_array();
    lane.turns = listed ? static_cast<int>(ReadNumbers(value, "turns").size()) : ReadNumber(value, "turns");
  }
  lane.final_time = ReadNumber(value, "final");
  if (!value.contains("place") || !value["place"].is_string()) throw Fault{"\"place\" is not a text"};
  lane.place = value["place"];
  return lane;
}

ToldHeat ReadHeat(const json& value) {
  ToldHeat heat;
  heat.heat = ReadNumber(value, "heat");
  for (const json& lane : ReadArray(value, "lanes")) heat.lanes.push_back(ReadLane(lane));
  return heat;
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
    const json value = json::parse(line, nullptr, false);
    try {
      if (!value.is_object()) throw Fault{"not a JSON object"};
      if (value.contains("heat")) heats.push_back(ReadHeat(value));
    } catch (const Fault& fault) {
      error = "line " + std::to_string(number) + ": " + fault.text;
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
