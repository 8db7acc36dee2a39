#include "field/compare.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
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
    throw Fault{fmt::format("\"{}\" is not a whole number", name)};
  return static_cast<int>(number);
}

int ReadNumber(const json& object, const char* name) {
  return ToInt(object.contains(name) ? object[name] : json(), name);
}

const json& ReadArray(const json& object, const char* name) {
  if (!object.contains(name) || !object[name].is_array())
    throw Fault{fmt::format("\"{}\" is not an array", name)};
  return object[name];
}

std::vector<int> ReadNumbers(const json& object, const char* name) {
  std::vector<int> numbers;
  for (const json& item : ReadArray(object, name)) numbers.push_back(ToInt(item, name));
  return numbers;
}

ToldLane ReadLane(const json& value) {
  ToldLane lane;
  lane.lane = ReadNumber(value, "lane");
  if (lane.lane < 1 || lane.lane > kLanes) throw Fault{fmt::format("there is no lane {}", lane.lane)};
  lane.laps = ReadNumbers(value, value.contains("laps") ? "laps" : "expected");
  for (const json& cut : ReadArray(value, "cuts")) {
    lane.cuts.push_back({ReadNumber(cut, "pylon"), {}});
    if (cut.contains("time")) lane.cuts.back().time = ReadNumber(cut, "time");
  }
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
  ToldHeat heat{ReadNumber(value, "heat"), {}};
  for (const json& lane : ReadArray(value, "lanes")) heat.lanes.push_back(ReadLane(lane));
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

const ToldLane* FindLane(const ToldHeat& heat, int number) {
  const auto found = std::ranges::find(heat.lanes, number, &ToldLane::lane);
  return found == heat.lanes.end() ? nullptr : &*found;
}

std::vector<ToldCut> CutsAt(const ToldLane& lane, int pylon) {
  std::vector<ToldCut> cuts;
  std::ranges::copy_if(lane.cuts, std::back_inserter(cuts),
                       [=](const ToldCut& cut) { return cut.pylon == pylon; });
  return cuts;
}

class Comparison {
 public:
  explicit Comparison(const CompareOptions& options) : options_(options) {}

  template <typename... Values>
  void Say(fmt::format_string<Values...> text, Values&&... values) {
    differences.push_back(where_ + fmt::format(text, std::forward<Values>(values)...));
  }

  void Heat(const ToldHeat& flown, const ToldHeat& shown) {
    const std::string heat = fmt::format("heat {}", flown.heat);
    where_ = heat + ": ";
    if (flown.heat != shown.heat) return Say("heat {} shown in its place", shown.heat);
    ToldLane idle;
    idle.turns = 0;
    for (int number = 1; number <= kLanes; ++number) {
      where_ = fmt::format("{} lane {}: ", heat, number);
      const ToldLane* f = FindLane(flown, number);
      const ToldLane* s = FindLane(shown, number);
      if (s != nullptr) {
        Lane(f == nullptr ? idle : *f, *s);
      } else if (f != nullptr) {
        Say("flown, but not shown");
      }
    }
    if (options_.lossy) ShownOrder(heat, shown);
  }

  std::vector<std::string> differences;

 private:
  // On a bad line late laps may change the order; the places are then held against the shown finals instead.
  void Lane(const ToldLane& flown, const ToldLane& shown) {
    Laps(flown, shown);
    Cuts(flown, shown);
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

  void Cuts(const ToldLane& flown_lane, const ToldLane& shown_lane) {
    for (int pylon = 1; pylon <= kHandCut; ++pylon) {
      const std::vector<ToldCut> flown = CutsAt(flown_lane, pylon);
      const std::vector<ToldCut> shown = CutsAt(shown_lane, pylon);
      if (flown.size() != shown.size()) {
        Say("{} cuts at pylon {} flown, {} shown", flown.size(), pylon, shown.size());
        continue;
      }
      for (std::size_t i = 0; i < flown.size(); ++i) {
        if (!flown[i].time || !shown[i].time || TimeFits(*flown[i].time, *shown[i].time)) continue;
        Say("cut at pylon {} at {} flown, at {} shown", pylon, *flown[i].time, *shown[i].time);
      }
    }
    const auto elsewhere = [](const ToldCut& cut) { return cut.pylon < 1 || cut.pylon > kHandCut; };
    if (std::ranges::any_of(shown_lane.cuts, elsewhere)) Say("a cut at no pylon shown");
  }

  // The places shown must be those of the finals shown.
  void ShownOrder(const std::string& heat, const ToldHeat& shown) {
    std::vector<ToldLane> finishers;
    for (int number = 1; number <= kLanes; ++number) {
      const ToldLane* lane = FindLane(shown, number);
      if (lane != nullptr && lane->final_time < kNoResult) finishers.push_back(*lane);
    }
    std::ranges::stable_sort(finishers, {}, &ToldLane::final_time);
    for (std::size_t i = 0; i < finishers.size(); ++i) {
      if (Rank(finishers[i].place) == i) continue;
      where_ = fmt::format("{} lane {}: ", heat, finishers[i].lane);
      Say("{} shown, but its final is {}", PlaceName(finishers[i].place), kPlaces.at(i));
    }
  }

  const CompareOptions& options_;
  std::string where_;
};

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
      error = fmt::format("line {}: {}", number, fault.text);
      return std::nullopt;
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
