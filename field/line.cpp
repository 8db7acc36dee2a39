#include "field/line.h"

#include <algorithm>

#include "field/plan.h"

namespace quorvane::field {

LineCounters LineCounters::operator-(const LineCounters& earlier) const {
  return {sent - earlier.sent, lost - earlier.lost, damaged - earlier.damaged, noise - earlier.noise};
}

Line::Line(const LineOptions& options, std::uint32_t seed) : options_(options), random_(seed) {}

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

void Line::Send(const Frame& frame) {
  if (Happens(options_.loss)) {
    ++counters_.lost;
    return;
  }
  ++counters_.sent;
  std::vector<std::uint8_t> bytes(frame.begin(), frame.end());
  if (Happens(options_.damage)) {
    ++counters_.damaged;
    bytes[static_cast<std::size_t>(Draw(random_, kFrameBytes))] ^=
        static_cast<std::uint8_t>(1 + Draw(random_, 255));
  }
  std::size_t begin = 0;
  const int cuts = options_.split ? 1 + Draw(random_, 3) : 0;
  for (int piece = 0; piece <= cuts && begin < kFrameBytes; ++piece) {
    const int left = static_cast<int>(kFrameBytes - begin);
    const std::size_t end =
        piece == cuts ? kFrameBytes : begin + 1 + static_cast<std::size_t>(Draw(random_, left));
    Chunk chunk;
    chunk.due_us = free_us_ - AirTime(kFrameBytes) + AirTime(end);
    chunk.bytes.assign(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                       bytes.begin() + static_cast<std::ptrdiff_t>(end));
    on_air_.push_back(std::move(chunk));
    begin = end;
  }
}

std::vector<Chunk> Line::Deliver(std::int64_t us) {
  const auto later =
      std::find_if(on_air_.begin(), on_air_.end(), [us](const Chunk& c) { return c.due_us > us; });
  std::vector<Chunk> due(std::make_move_iterator(on_air_.begin()), std::make_move_iterator(later));
  on_air_.erase(on_air_.begin(), later);
  return due;
}

}  // namespace quorvane::field
