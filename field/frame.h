#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

namespace quorvane::field {

// The stations' 36-byte radio frame, as the stations themselves build it. Written from the frame table of the
// field equipment and on purpose independent of the console's own codec, so that each can catch the other
// out.

inline constexpr std::size_t kFrameBytes = 36;
inline constexpr int kLanes = 4;

// Station addresses on the radio network.
inline constexpr std::uint8_t kJudge1 = 0;
inline constexpr std::uint8_t kStarter = 3;
inline constexpr std::uint8_t kTimers = 4;
inline constexpr std::uint8_t kPylonBox = 6;
inline constexpr std::uint8_t kDisplay = 7;
inline constexpr std::uint8_t kConsole = 254;
inline constexpr std::uint8_t kAcknowledgement = 255;
inline constexpr std::size_t kAddresses = 8;  // 0..7; nobody has address 5

constexpr bool IsStation(std::uint8_t address) {
  return address < kAddresses && address != 5;
}

using Frame = std::array<std::uint8_t, kFrameBytes>;

// What one frame says. `clock` is the race clock in milliseconds at the moment the frame's last byte arrives;
// the frame carries it advanced by the delay `dif` (twice the delay in an acknowledgement), which the
// receiver takes off again. Bits 2j and 2j+1 of a lane's `cuts` are the lights of pylon judge j.
struct Report {
  std::uint8_t from = 0;
  std::uint8_t to = 0;
  bool running = false;
  std::int64_t clock = 0;
  std::uint8_t turns = 0;
  std::array<std::uint8_t, kLanes> cuts{};
  std::uint8_t buttons = 0;
  std::array<std::uint8_t, kLanes> lit{};
  std::uint8_t mode = 0;
  std::array<std::uint8_t, kLanes> lap{};
  std::uint8_t dif = 0;
  std::uint8_t temperature = 0;
  std::uint8_t voltage = 0;
};

Frame Encode(const Report& report);

// What a frame says, whoever sent it; the clock has only the 24 bits that the stations read.
Report Decode(const Frame& frame);

// Exclusive OR of bytes 3 to 35.
std::uint8_t CheckByte(const Frame& frame);

// Finds the console's frames in what it sends, whatever the chunks; bytes that are no frame are skipped one
// by one.
class Listener {
 public:
  // Returns the good frames completed by these bytes, in order.
  std::vector<Frame> Hear(std::span<const std::uint8_t> bytes);

 private:
  std::deque<std::uint8_t> heard_;
};

}  // namespace quorvane::field
