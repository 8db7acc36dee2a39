#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "forms/platform.h"
#include "race/race_state.h"

namespace quorvane {

// The marking of each lane by scheme. 3 and 5 are alike on purpose, 6 to 8 mark three lanes, 9 names lanes
// without colours and can only be set in the settings store.
inline constexpr std::array<std::string_view, 10> kLaneColorSchemes = {
    "",
    "1 - Low Green, Low Red, High Green, High Red",
    "2 - Low Red, Low Green, High Red, High Green",
    "3 - High Red, Low Red, High Green, Low Green",
    "4 - High Green, High Red, Low Green, Low Red",
    "5 - High Red, Low Red, High Green, Low Green",
    "6 - High Red, High Blue, High Green",
    "7 - High Blue, High Red, High Green",
    "8 - High Green, High Red, High Blue",
    "9 - Lane 1, Lane 2, Lane 3, Lane 4",
};
inline constexpr int kLaneColorSchemesOffered = 8;

// Of lane 1..4, its name with the blank before it in the scheme; plain for a scheme outside the table.
LaneMarking LaneMarkingOf(int scheme, int lane);

// The scheme kept in the settings; 0, the empty scheme, for a value that is no 16-bit number.
std::int16_t LoadLaneColorScheme(const SettingsStore& settings);
void SaveLaneColorScheme(SettingsStore& settings, std::int16_t scheme);

}  // namespace quorvane
