#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "field/result.h"

namespace quorvane::field {

struct CompareOptions {
  int tolerance = 60;  // ms
  bool lossy = false;  // laps may be late, and a lane without a result may lack laps; nothing may be invented
};

// What a file says about one heat.
struct ToldCut {
  int pylon = 1;
  std::optional<int> time;
};
struct ToldLane {
  int lane = 1;
  std::vector<int> laps;
  std::vector<ToldCut> cuts;
  std::optional<int> turns;
  int final_time = kNoResult;
  std::string place;  // "First" to "Fourth"; any other caption counts as no place
};
struct ToldHeat {
  int heat = 1;
  std::vector<ToldLane> lanes;
};

// Reads one heat a line; blank lines and objects without "heat" are passed over. On failure gives nothing and
// says why in `error`, with the line's number.
std::optional<std::vector<ToldHeat>> ReadHeats(std::istream& in, std::string& error);

// One sentence for each difference; empty when the console showed what was flown.
std::vector<std::string> CompareHeats(const std::vector<ToldHeat>& flown, const std::vector<ToldHeat>& shown,
                                      const CompareOptions& options);

}  // namespace quorvane::field
