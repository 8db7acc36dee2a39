#pragma once

#include <cstdint>
#include <deque>
#include <random>
#include <vector>

#include "field/frame.h"

namespace quorvane::field {

// Air time of a number of bytes at 9600 baud, ten bits a byte, in microseconds (36 bytes: 37500).
constexpr std::int64_t AirTime(std::size_t bytes) {
  return static_cast<std::int64_t>(bytes) * 10 * 1'000'000 / 9600;
}

// Bytes as they come out of the receiver's modem. `due_us` is the time, in microseconds of the field's clock,
// at which the last of them has left the air.
struct Chunk {
  std::int64_t due_us = 0;
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

  std::int64_t Good() const { return sent - damaged; }
  std::int64_t Bytes() const { return sent * static_cast<std::int64_t>(kFrameBytes) + noise; }
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

  // Takes the line at `us` (not before free_us()), noise first if it happens, and returns the time at which a
  // frame sent now has arrived whole.
  std::int64_t Take(std::int64_t us);

  // Sends the frame for which the line was taken.
  void Send(Frame frame);

  // Hands out what is due by `us`, in order.
  std::vector<Chunk> Deliver(std::int64_t us);

  // When the next chunk is due; -1 when none is on the air.
  std::int64_t NextDue() const { return on_air_.empty() ? -1 : on_air_.front().due_us; }

  const LineCounters& counters() const { return counters_; }

 private:
  bool Happens(double probability);

  LineOptions options_;
  std::mt19937 random_;
  std::deque<Chunk> on_air_;
  std::int64_t free_us_ = 0;
  LineCounters counters_;
};

}  // namespace quorvane::field
