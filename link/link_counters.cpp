#include "link/link_counters.h"

#include <algorithm>

#include "base/checked.h"
#include "base/text.h"
#include "link/serial_control.h"
#include "link/station_message.h"

namespace quorvane {
namespace {

constexpr std::size_t Slot(std::int64_t second, std::size_t slots) {
  return static_cast<std::size_t>(second) % slots;
}

std::string LineErrorName(int code) {
  switch (code) {
    case kCommBreak:
      return "break";
    case kCommFraming:
      return "framing";
    case kCommOverrun:
      return "overrun";
    case kCommOverflow:
      return "overflow";
    case kCommParity:
      return "parity";
    case kCommSendFull:
      return "unsent";
    default:
      return "#" + std::to_string(code);
  }
}

}  // namespace

std::string StationLabel(int address) {
  const std::string name = StationName(address);
  return name.empty() ? "Station " + std::to_string(address) : name;
}

void LinkCounters::Good(int from, std::int64_t now) {
  ++good_;
  Second& second = seconds_[Slot(now / 1000, seconds_.size())];
  if (second.number != now / 1000) second = {now / 1000, 0};
  ++second.frames;
  if (from >= kStations) return;
  ++Element(stations_, from).frames;
  Heard(from, now);
}

void LinkCounters::Heard(int address, std::int64_t now) {
  if (address >= kStations) return;
  Station& station = Element(stations_, address);
  station.longestSilence = LongestSilence(address, now);
  station.lastHeard = now;
}

std::int64_t LinkCounters::BytesSkipped(int buffered) const {
  return bytesReceived_ - good_ * static_cast<std::int64_t>(kFrameSize) - std::max(buffered, 0);
}

std::int64_t LinkCounters::FramesFrom(int address) const {
  return Element(stations_, address).frames;
}

std::int64_t LinkCounters::LongestSilence(int address, std::int64_t now) const {
  const Station& station = Element(stations_, address);
  if (station.lastHeard < 0) return 0;
  return std::max(station.longestSilence, now - station.lastHeard);
}

bool LinkCounters::WasHeard(int address) const {
  return Element(stations_, address).lastHeard >= 0;
}

bool LinkCounters::IsSilent(int address, std::int64_t now, std::int64_t since) const {
  const Station& station = Element(stations_, address);
  return now - std::max(station.lastHeard, since) > kSilentAfterMs;
}

// Over the last whole seconds, as many of the ten as have passed.
std::string LinkCounters::RateText(std::int64_t now) const {
  const std::int64_t running = now / 1000;
  std::int64_t frames = 0;
  for (const Second& second : seconds_) {
    if (second.number >= running - kRateSeconds && second.number < running) frames += second.frames;
  }
  return FormatRatio(frames, std::clamp<std::int64_t>(running, 1, kRateSeconds), 1);
}

// "5 framing, 2 overrun": what the line itself did wrong, by the names of its errors.
std::string LinkCounters::LineErrorsText() const {
  std::string text;
  for (const auto& [code, count] : lineErrors_) {
    text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + LineErrorName(code);
  }
  return text.empty() ? "0" : text;
}

std::string LinkCounters::Text(int buffered, std::int64_t now) const {
  std::string text = "Good frames: " + std::to_string(good_) + ", " + RateText(now) + " per second";
  text += "\rDamaged frames: " + std::to_string(damaged_);
  text += "\rBytes skipped: " + std::to_string(BytesSkipped(buffered));
  text += "\rLine errors: " + LineErrorsText();
  text += "\rFrames sent: " + std::to_string(sent_);
  text += "\rStation: frames, longest silence";
  for (int i = 0; i < kStations; ++i) {
    text += "\r" + StationLabel(i) + ": " + std::to_string(FramesFrom(i));
    if (WasHeard(i)) text += ", " + FormatRatio(LongestSilence(i, now), 1000, 1) + " s";
  }
  return text;
}

}  // namespace quorvane
