#include "field/line.h"

#include <algorithm>

#include "field/plan.h"

namespace quorvane::field {

bool Line::Happens(double probability) {
  return static_cast<double>(random_()) / 4294967296.0 < probability;
}

std::int64_t Line::Take(std::int64_t us) {
  if (Happens(options_.noise)) {
    Chunk chunk;
    const int bytes = 1 + Draw(random_, 8);
    for (int i = 0; i < bytes; ++i) chunk.bytes.push_back(static_cast<std::uint8_t>(Draw(random_, 256)));
    us += AirTime(chunk.bytes.size());
    chunk.due_us = us;
    counters_.noise += bytes;
    on_air_.push_back(std::move(chunk));
  }
  free_us_ = us + AirTime(kFrameBytes);
  return free_us_;
}

void Line::Send(Frame frame) {
  if (Happens(options_.loss)) {
    ++counters_.lost;
    return;
  }
  ++counters_.sent;
  if (Happens(options_.damage)) {
    ++counters_.damaged;
    frame[static_cast<std::size_t>(Draw(random_, kFrameBytes))] ^=
        static_cast<std::uint8_t>(1 + Draw(random_, 255));
  }
  std::size_t begin = 0;
  const int cuts = options_.split ? 1 + Draw(random_, 3) : 0;
  for (int piece = 0; piece <= cuts && begin < kFrameBytes; ++piece) {
    const int left = static_cast<int>(kFrameBytes - begin);
    const std::size_t end =
        piece == cuts ? kFrameBytes : begin + 1 + static_cast<std::size_t>(Draw(random_, left));
    on_air_.push_back(
        {free_us_ - AirTime(kFrameBytes) + AirTime(end), {frame.begin() + begin, frame.begin() + end}});
    begin = end;
  }
}

std::vector<Chunk> Line::Deliver(std::int64_t us) {
  std::vector<Chunk> due;
  for (; !on_air_.empty() && on_air_.front().due_us <= us; on_air_.pop_front()) {
    due.push_back(std::move(on_air_.front()));
  }
  return due;
}

}  // namespace quorvane::field
