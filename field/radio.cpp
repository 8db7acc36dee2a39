#include "field/radio.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "field/plan.h"

namespace quorvane::field {
namespace {

constexpr std::uint8_t kSync1 = 0x55;
constexpr std::uint8_t kSync2 = 0xAA;

std::uint8_t Byte(std::int64_t value) {
  return static_cast<std::uint8_t>(value & 0xFF);
}

// The lanes that show a single (want 1) or a double (want 3) cut at some pylon.
std::uint8_t LanesWithCut(const std::array<std::uint8_t, kLanes>& cuts, int want) {
  int lanes = 0;
  for (int lane = 0; lane < kLanes; ++lane) {
    for (int shift = 0; shift < 8; shift += 2) {
      if (((cuts[static_cast<std::size_t>(lane)] >> shift) & 3) == want) lanes |= 1 << lane;
    }
  }
  return Byte(lanes);
}

std::int64_t Delay(const Report& report) {
  return report.from == kAcknowledgement ? 2 * report.dif : report.dif;
}

// The bytes that stand in the frame as they are: take(place in the frame, value).
void ForEachByte(auto& report, const auto& take) {
  take(4, report.to);
  take(5, report.from);
  take(10, report.turns);
  take(18, report.buttons);
  take(28, report.mode);
  take(33, report.dif);
  take(34, report.temperature);
  take(35, report.voltage);
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    take(11 + lane, report.cuts[lane]);
    take(24 + lane, report.lit[lane]);
    take(29 + lane, report.lap[lane]);
  }
}

// Exclusive OR of bytes 3 to 35.
std::uint8_t CheckByte(const Frame& frame) {
  return std::accumulate(frame.begin() + 3, frame.end(), std::uint8_t{0}, std::bit_xor());
}

}  // namespace

Frame Encode(const Report& report) {
  Frame frame{kSync1, kSync2};
  ForEachByte(report, [&](std::size_t at, std::uint8_t value) { frame[at] = value; });
  frame[3] = report.running ? 1 : 0;
  const std::int64_t time = report.clock + Delay(report);
  for (std::size_t i = 0; i < 4; ++i) frame[6 + i] = Byte(time >> (24 - 8 * i));
  frame[16] = LanesWithCut(report.cuts, 1);
  frame[17] = LanesWithCut(report.cuts, 3);
  frame[2] = CheckByte(frame);
  return frame;
}

Report Decode(const Frame& frame) {
  Report report;
  ForEachByte(report, [&](std::size_t at, std::uint8_t& value) { value = frame[at]; });
  report.running = frame[3] != 0;
  report.clock = (frame[7] << 16) + (frame[8] << 8) + frame[9] - Delay(report);
  return report;
}

std::vector<Frame> Listen(std::deque<std::uint8_t>& heard, std::span<const std::uint8_t> bytes) {
  std::vector<Frame> frames;
  for (const std::uint8_t byte : bytes) {
    heard.push_back(byte);
    if (heard.size() < kFrameBytes) continue;
    Frame frame;
    std::ranges::copy(heard, frame.begin());
    if (frame[0] == kSync1 && frame[1] == kSync2 && frame[2] == CheckByte(frame)) {
      frames.push_back(frame);
      heard.clear();
    } else {
      heard.pop_front();
    }
  }
  return frames;
}

std::int64_t Line::Take(std::int64_t us) {
  if (Happens(options_.noise)) {
    std::vector<std::uint8_t> bytes(1 + static_cast<std::size_t>(Draw(random_, 8)));
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(Draw(random_, 256));
    us += AirTime(bytes.size());
    counters_.noise += static_cast<std::int64_t>(bytes.size());
    on_air_.push_back({us, std::move(bytes)});
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
