#pragma once

#include <functional>
#include <string>

namespace quorvane {

// A value of the project file: section, key, fallback.
using ReadValue = std::function<std::string(const std::string&, const std::string&, const std::string&)>;
// Keeps one there: section, key, value.
using KeepValue = std::function<void(const std::string&, const std::string&, const std::string&)>;

// The sections of a flight: "Race7", or "Refly2" that has repeated a race; and of its lanes, "Race7_Lane3".
inline std::string RaceSection(int race) {
  return "Race" + std::to_string(race);
}
inline std::string ReflySection(int refly) {
  return "Refly" + std::to_string(refly);
}
inline std::string LaneSection(const std::string& flight, int lane) {
  return flight + "_Lane" + std::to_string(lane);
}

}  // namespace quorvane
