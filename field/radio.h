#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <random>
#include <span>
#include <vector>

namespace quorvane::field {

// The stations' 36-byte radio frame. Written from the frame table of the field equipment and on purpose
// independent of the console's own codec, so that each can catch the other out.

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

// The good frames that are completed by these bytes, in order, whatever the chunks; what is no frame is
// skipped byte by byte. `heard` keeps the beginning of the next one.
std::vector<Frame> Listen(std::deque<std::uint8_t>& heard, std::span<const std::uint8_t> bytes);

inline constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

// Air time of a number of bytes at 9600 baud, ten bits a byte, in microseconds (36 bytes: 37500).
constexpr std::int64_t AirTime(std::size_t bytes) {
  return static_cast<std::int64_t>(bytes) * 10 * 1'000'000 / 9600;
}

// Bytes as they come out of the receiver's modem.
struct Chunk {
  std::int64_t due_us = 0;  // when the last of them has left the air, by the field's clock
  std::vector<std::uint8_t> bytes;

  // The first whole millisecond at which the chunk is there.
  std::int64_t DueMs() const { return (due_us + 999) / 1000; }
};

// How bad the line is. Probabilities are per frame, 0 to 1.
struct LineOptions {
  double noise = 0;    // one to eight random bytes before a frame
  double loss = 0;     // the frame is not sent
  double damage = 0;   // one byte of the frame is changed
  bool split = false;  // frames arrive in two to four pieces
};

struct LineCounters {
  std::int64_t sent = 0;     // frames that left, damaged ones included
  std::int64_t lost = 0;     // frames that did not
  std::int64_t damaged = 0;  // frames that left with a changed byte
  std::int64_t noise = 0;    // random bytes between frames

  LineCounters operator-(const LineCounters& earlier) const {
    return {sent - earlier.sent, lost - earlier.lost, damaged - earlier.damaged, noise - earlier.noise};
  }
};

// The radio channel: one sender at a time, at the pace of a 9600-baud line. A lost frame keeps its place in
// time, so that the times of all other frames do not depend on losses.
class Line {
 public:
  Line(const LineOptions& options, std::uint32_t seed) : options_(options), random_(seed) {}

  std::int64_t free_us() const { return free_us_; }

  // Takes the line at `us` (not before free_us()), noise first if it happens. Returns the time at which a
  // frame sent now has arrived whole.
  std::int64_t Take(std::int64_t us);

  // Sends the frame for which the line was taken.
  void Send(Frame frame);

  // Hands out what is due by `us`, in order.
  std::vector<Chunk> Deliver(std::int64_t us);

  // When the next chunk is due.
  std::int64_t NextDue() const { return on_air_.empty() ? kNever : on_air_.front().due_us; }

  const LineCounters& counters() const { return counters_; }

 private:
  bool Happens(double probability) { return static_cast<double>(random_()) / 4294967296.0 < probability; }

  LineOptions options_;
  std::mt19937 random_;
  std::deque<Chunk> on_air_;
  std::int64_t free_us_ = 0;
  LineCounters counters_;
};

}  // namespace quorvane::field
