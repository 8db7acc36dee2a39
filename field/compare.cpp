#include "field/compare.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace quorvane::field {
namespace {

using nlohmann::json;

template <typename... Values>
[[noreturn]] void Fail(fmt::format_string<Values...> text, Values&&... values) {
  throw std::runtime_error(fmt::format(text, std::forward<Values>(values)...));
}

int ToInt(const json& value, const char* name) {
  const auto number = value.is_number_integer() ? value.get<std::int64_t>() : INT64_MAX;
  if (std::abs(static_cast<double>(number)) > 1e9) Fail("\"{}\" is not a whole number", name);
  return static_cast<int>(number);
}

int ReadNumber(const json& object, const char* name) {
  return ToInt(object.contains(name) ? object[name] : json(), name);
}

const json& ReadArray(const json& object, const char* name) {
  if (!object.contains(name) || !object[name].is_array()) Fail("\"{}\" is not an array", name);
  return object[name];
}

std::vector<int> ReadNumbers(const json& object, const char* name) {
  std::vector<int> numbers;
  for (const json& item : ReadArray(object, name)) numbers.push_back(ToInt(item, name));
  return numbers;
}

ToldLane ReadLane(const json& value) {
  ToldLane lane{.laps = ReadNumbers(value, value.contains("laps") ? "laps" : "expected")};
  for (const json& cut : ReadArray(value, "cuts")) {
    auto& time = lane.cuts[ReadNumber(cut, "pylon")].emplace_back();
    if (cut.contains("time")) time = ReadNumber(cut, "time");
  }
  if (value.contains("turns")) {
    const bool listed = value["turns"].is_array();
    lane.turns = listed ? static_cast<int>(ReadNumbers(value, "turns").size()) : ReadNumber(value, "turns");
  }
  lane.final_time = ReadNumber(value, "final");
  if (!value.contains("place") || !value["place"].is_string()) Fail("\"place\" is not a text");
  lane.place = value["place"];
  return lane;
}

ToldHeat ReadHeat(const json& value) {
  ToldHeat heat{ReadNumber(value, "heat")};
  for (const json& lane : ReadArray(value, "lanes")) {
    const int number = ReadNumber(lane, "lane");
    if (number < 1 || number > kLanes) Fail("there is no lane {}", number);
    heat.lanes.emplace(number, ReadLane(lane));
  }
  return heat;
}

// ---- Comparing.

// 0 for "First" to 3, 4 for everything that is no place.
std::size_t Rank(const std::string& place) {
  return static_cast<std::size_t>(std::ranges::find(kPlaces, place) - kPlaces.begin());
}

std::string PlaceName(const std::string& place) {
  return Rank(place) < 4 ? place : "no place";
}

std::string FinalName(int final_time) {
  return final_time >= kNoResult ? "no result" : std::to_string(final_time);
}

class Comparison {
 public:
  explicit Comparison(const CompareOptions& options) : options_(options) {}

  template <typename... Values>
  void Say(fmt::format_string<Values...> text, Values&&... values) {
    differences.push_back(where_ + fmt::format(text, std::forward<Values>(values)...));
  }

  void Heat(const ToldHeat& flown, const ToldHeat& shown) {
    where_ = fmt::format("heat {}: ", flown.heat);
    if (flown.heat != shown.heat) return Say("heat {} shown in its place", shown.heat);
    for (int number = 1; number <= kLanes; ++number) {
      where_ = fmt::format("heat {} lane {}: ", flown.heat, number);
      const auto lane = flown.lanes.find(number);
      const bool flies = lane != flown.lanes.end();
      if (shown.lanes.contains(number)) {
        Lane(flies ? lane->second : ToldLane{.turns = 0}, shown.lanes.at(number));
      } else if (flies) {
        Say("flown, but not shown");
      }
    }
    if (options_.lossy) ShownOrder(shown);
  }

  std::vector<std::string> differences;

 private:
  // On a bad line late laps may change the order; the places are then held against the shown finals instead.
  void Lane(const ToldLane& flown, const ToldLane& shown) {
    Laps(flown, shown);
    Cuts(flown.cuts, shown.cuts);
    if (flown.turns && shown.turns &&
        (*shown.turns > *flown.turns || (!options_.lossy && *shown.turns < *flown.turns))) {
      Say("{} turns flown, {} shown", *flown.turns, *shown.turns);
    }
    if (!TimeFits(flown.final_time, shown.final_time)) {
      Say("final {} flown, {} shown", FinalName(flown.final_time), FinalName(shown.final_time));
    }
    if (!options_.lossy && Rank(flown.place) != Rank(shown.place)) {
      Say("{} flown, {} shown", PlaceName(flown.place), PlaceName(shown.place));
    }
  }

  bool TimeFits(int flown, int shown) const {
    if (flown >= kNoResult || shown >= kNoResult) return flown >= kNoResult && shown >= kNoResult;
    return shown >= flown - options_.tolerance && (options_.lossy || shown <= flown + options_.tolerance);
  }

  void Laps(const ToldLane& flown, const ToldLane& shown) {
    const std::size_t laps = flown.laps.size();
    const bool may_lack = options_.lossy && flown.final_time >= kNoResult;
    if (shown.laps.size() > laps || (shown.laps.size() < laps && !may_lack)) {
      Say("{} laps flown, {} shown", laps, shown.laps.size());
    }
    for (std::size_t i = 0; i < std::min(laps, shown.laps.size()); ++i) {
      if (TimeFits(flown.laps[i], shown.laps[i])) continue;
      Say("lap {} at {} flown, at {} shown", i + 1, flown.laps[i], shown.laps[i]);
    }
  }

  void Cuts(decltype(ToldLane::cuts) flown_cuts, decltype(ToldLane::cuts) shown_cuts) {
    for (int pylon = 1; pylon <= kHandCut; ++pylon) {
      const auto& flown = flown_cuts[pylon];
      const auto& shown = shown_cuts[pylon];
      if (flown.size() != shown.size()) {
        Say("{} cuts at pylon {} flown, {} shown", flown.size(), pylon, shown.size());
        continue;
      }
      for (std::size_t i = 0; i < flown.size(); ++i) {
        if (!flown[i] || !shown[i] || TimeFits(*flown[i], *shown[i])) continue;
        Say("cut at pylon {} at {} flown, at {} shown", pylon, *flown[i], *shown[i]);
      }
    }
    const bool elsewhere = shown_cuts.begin()->first < 1 || shown_cuts.rbegin()->first > kHandCut;
    if (elsewhere) Say("a cut at no pylon shown");
  }

  // The places shown must be those of the finals shown.
  void ShownOrder(const ToldHeat& shown) {
    std::vector<std::pair<int, ToldLane>> finishers(shown.lanes.begin(), shown.lanes.end());
    std::erase_if(finishers, [](const auto& lane) { return lane.second.final_time >= kNoResult; });
    std::ranges::stable_sort(finishers, {}, [](const auto& lane) { return lane.second.final_time; });
    for (std::size_t i = 0; i < finishers.size(); ++i) {
      const auto& [number, lane] = finishers[i];
      if (Rank(lane.place) == i) continue;
      where_ = fmt::format("heat {} lane {}: ", shown.heat, number);
      Say("{} shown, but its final is {}", PlaceName(lane.place), kPlaces.at(i));
    }
  }

  const CompareOptions& options_;
  std::string where_;
};

}  // namespace

std::vector<ToldHeat> ReadHeats(std::string_view text) {
  std::vector<ToldHeat> heats;
  std::istringstream in{std::string(text)};
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    try {
      const json value = json::parse(line, nullptr, false);
      if (!value.is_object()) Fail("not a JSON object");
      if (value.contains("heat")) heats.push_back(ReadHeat(value));
    } catch (const std::runtime_error& fault) {
      Fail("line {}: {}", number, fault.what());
    }
  }
  return heats;
}

std::vector<std::string> CompareHeats(const std::vector<ToldHeat>& flown, const std::vector<ToldHeat>& shown,
                                      const CompareOptions& options) {
  Comparison comparison(options);
  if (flown.size() != shown.size()) comparison.Say("{} heats flown, {} shown", flown.size(), shown.size());
  for (std::size_t i = 0; i < std::min(flown.size(), shown.size()); ++i) comparison.Heat(flown[i], shown[i]);
  return comparison.differences;
}

}  // namespace quorvane::field
