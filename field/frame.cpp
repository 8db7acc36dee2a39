#include "field/frame.h"

#include <algorithm>

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

}  // namespace

Frame Encode(const Report& report) {
  const std::int64_t time = report.clock + Delay(report);
  Frame frame{};
  frame[0] = kSync1;
  frame[1] = kSync2;
  frame[3] = report.running ? 1 : 0;
  frame[4] = report.to;
  frame[5] = report.from;
  for (std::size_t i = 0; i < 4; ++i) frame[6 + i] = Byte(time >> (24 - 8 * i));
  frame[10] = report.turns;
  std::copy(report.cuts.begin(), report.cuts.end(), frame.begin() + 11);
  frame[16] = LanesWithCut(report.cuts, 1);
  frame[17] = LanesWithCut(report.cuts, 3);
  frame[18] = report.buttons;
  std::copy(report.lit.begin(), report.lit.end(), frame.begin() + 24);
  frame[28] = report.mode;
  std::copy(report.lap.begin(), report.lap.end(), frame.begin() + 29);
  frame[33] = report.dif;
  frame[34] = report.temperature;
  frame[35] = report.voltage;
  frame[2] = CheckByte(frame);
  return frame;
}

Report Decode(const Frame& frame) {
  Report report;
  report.running = frame[3] != 0;
  report.to = frame[4];
  report.from = frame[5];
  report.turns = frame[10];
  std::copy_n(frame.begin() + 11, kLanes, report.cuts.begin());
  report.buttons = frame[18];
  std::copy_n(frame.begin() + 24, kLanes, report.lit.begin());
  report.mode = frame[28];
  std::copy_n(frame.begin() + 29, kLanes, report.lap.begin());
  report.dif = frame[33];
  report.temperature = frame[34];
  report.voltage = frame[35];
  report.clock = (frame[7] << 16) + (frame[8] << 8) + frame[9] - Delay(report);
  return report;
}

std::uint8_t CheckByte(const Frame& frame) {
  std::uint8_t check = 0;
  for (std::size_t i = 3; i < kFrameBytes; ++i) check ^= frame[i];
  return check;
}

std::int64_t AirTime(std::size_t bytes) {
  return static_cast<std::int64_t>(bytes) * 10 * 1'000'000 / 9600;
}

std::vector<Frame> Listener::Hear(std::span<const std::uint8_t> bytes) {
  std::vector<Frame> frames;
  heard_.insert(heard_.end(), bytes.begin(), bytes.end());
  while (heard_.size() >= kFrameBytes) {
    Frame frame;
    std::copy_n(heard_.begin(), kFrameBytes, frame.begin());
    const bool good = frame[0] == kSync1 && frame[1] == kSync2 && frame[2] == CheckByte(frame);
    if (good) frames.push_back(frame);
    heard_.erase(heard_.begin(), heard_.begin() + (good ? static_cast<std::ptrdiff_t>(kFrameBytes) : 1));
  }
  return frames;
}

}  // namespace quorvane::field
