#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane {

// The field stations by their address 0..7. Address 5 is assigned to nobody and has an empty name. The
// voltage limits are texts and keep the blanks they are written with.
inline constexpr std::array<std::string_view, 8> StationCodes = {"P1", "P2", "P3", "ST",
                                                                 "TM", "??", "PY", "DS"};
inline constexpr std::array<std::string_view, 8> StationNames = {
    "Judges 1", "Judges 2", "Judges 3", "Starter", "Timers", "", "Pylon 1", "Display"};
inline constexpr std::array<std::string_view, 8> StationVoltLimits = {
    "4.5     ", "4.5     ", "4.5     ", "12.0   ", "4.5  ", "0", "12.0   ", "12.0"};

}  // namespace quorvane
