#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

// The field stations by their address 0..7. Address 5 is assigned to nobody and has an empty name.
inline constexpr std::array<std::string_view, 8> StationCodes = {"P1", "P2", "P3", "ST",
                                                                 "TM", "??", "PY", "DS"};
inline constexpr std::array<std::string_view, 8> StationNames = {
    "Judges 1", "Judges 2", "Judges 3", "Starter", "Timers", "", "Pylon 1", "Display"};

inline constexpr std::array<std::uint8_t, 8> BitMask = {1, 2, 4, 8, 16, 32, 64, 128};
// Of the four two-bit fields of a byte: the low bit, for a single cut, and both bits, for a double one.
inline constexpr std::array<std::uint8_t, 4> LaneBitLow = {1, 4, 16, 64};
inline constexpr std::array<std::uint8_t, 4> LaneBitPair = {3, 12, 48, 192};

// Bit 128 first: "1" for a set bit, the letter "o" for a clear one, which nobody mistakes for "8".
inline std::string BitString(std::uint8_t byte) {
  return std::bitset<8>(byte).to_string('o', '1');
}

}  // namespace quorvane
