#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "field/result.h"

namespace quorvane::field {

struct CompareOptions {
  int tolerance = 60;  // ms
  bool lossy = false;  // laps may be late, and a lane without a result may lack laps; nothing may be invented
};

// What a file says about one heat.
struct ToldLane {
  std::vector<int> laps = {};
  std::map<int, std::vector<std::optional<int>>> cuts = {};  // their times, as far as told, by pylon
  std::optional<int> turns = {};
  int final_time = kNoResult;
  std::string place = {};  // "First" to "Fourth"; any other caption counts as no place
};
struct ToldHeat {
  int heat = 1;
  std::map<int, ToldLane> lanes = {};  // by number, 1..4
};

// Reads one heat a line, passing over what has no "heat". Throws std::runtime_error, which names the line.
std::vector<ToldHeat> ReadHeats(std::string_view text);

// One sentence for each difference; empty when the console showed what was flown.
std::vector<std::string> CompareHeats(const std::vector<ToldHeat>& flown, const std::vector<ToldHeat>& shown,
                                      const CompareOptions& options);

}  // namespace quorvane::field
