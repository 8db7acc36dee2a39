#include "link/link_counters.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "link/serial_control.h"
#include "link/station_message.h"

namespace quorvane {
namespace {

constexpr std::int64_t kSilentAfterMs = 4400;  // looked at twice a second, late at times: seen within five
constexpr int kLivelyStations = 4;
constexpr std::int64_t kRateSeconds = 10;

struct LineErrorWords {
  const char* name;  // among the counters
  const char* text;
};

const std::map<int, LineErrorWords> kLineErrors = {
    {kCommBreak, {"break", "A Break signal was received"}},
    {kCommFraming, {"framing", "Framing Error. The hardware detected a framing error."}},
    {kCommOverrun,
     {"overrun",
      "Port Overrun. A character was not read from the hardware before the next character arrived and was "
      "lost."}},
    {kCommOverflow, {"overflow", "Receive Buffer Overflow. There is no room in the receive buffer."}},
    {kCommParity, {"parity", "Parity Error. The hardware detected a parity error."}},
    {kCommSendFull,
     {"unsent", "Transmit Buffer Full. The transmit buffer was full while trying to queue a character."}},
    {1011, {"#1011", "Unexpected error retrieving Device Control Block (DCB) for the port."}}};

}  // namespace

std::string StationLabel(int address) {
  const std::string name = StationName(address);
  return name.empty() ? fmt::format("Station {}", address) : name;
}

std::string LineErrorText(int code) {
  const auto found = kLineErrors.find(code);
  return found == kLineErrors.end() ? fmt::format("Unexpected error #{}", code) : found->second.text;
}

void LinkCounters::Good(int from, std::int64_t now) {
  ++good;
  const std::int64_t second = now / 1000;
  ++goodInSecond[second];
  goodInSecond.erase(goodInSecond.begin(), goodInSecond.lower_bound(second - kRateSeconds));
  if (from >= kStations) return;
  ++stations[static_cast<std::size_t>(from)].frames;
  Heard(from, now);
  const auto speaks = [now](const Station& s) { return s.frames > 0 && now - s.lastHeard <= kSilentAfterMs; };
  lively = lively || std::ranges::count_if(stations, speaks) >= kLivelyStations;
}

void LinkCounters::Heard(int address, std::int64_t now) {
  if (address >= kStations) return;
  Station& station = stations[static_cast<std::size_t>(address)];
  station.longestSilence = LongestSilence(address, now);
  station.lastHeard = now;
  ++station.heard;
}

LinkCounters LinkCounters::Since(std::int64_t now) {
  LinkCounters counters;
  for (Station& station : counters.stations) station.lastHeard = now;
  return counters;
}

std::int64_t LinkCounters::LongestSilence(int address, std::int64_t now) const {
  return WasHeard(address) ? std::max(Of(address).longestSilence, now - Of(address).lastHeard) : 0;
}

bool LinkCounters::IsSilent(int address, std::int64_t now, std::int64_t since) const {
  return now - std::max(Of(address).lastHeard, since) > kSilentAfterMs;
}

std::string LinkCounters::Text(int buffered, std::int64_t now) const {
  // Over the last whole seconds, as many of the ten as have passed.
  const std::int64_t running = now / 1000;
  std::int64_t frames = 0;
  for (const auto& [second, count] : goodInSecond) {
    if (second >= running - kRateSeconds && second < running) frames += count;
  }
  // "5 framing, 2 overrun": what the line itself did wrong.
  std::vector<std::string> errors;
  for (const auto& [code, count] : lineErrors) {
    const auto known = kLineErrors.find(code);
    const std::string name = known == kLineErrors.end() ? fmt::format("#{}", code) : known->second.name;
    errors.push_back(fmt::format("{} {}", count, name));
  }
  std::string text = fmt::format(
      "Good frames: {}, {} per second\rDamaged frames: {}\rBytes skipped: {}\rLine errors: {}\r"
      "Frames sent: {}\rStation: frames, longest silence",
      good, FormatRatio(frames, std::clamp<std::int64_t>(running, 1, kRateSeconds), 1), damaged,
      bytesReceived - good * std::int64_t{kFrameSize} - std::max(buffered, 0),
      errors.empty() ? "0" : fmt::format("{}", fmt::join(errors, ", ")), sent);
  for (int i = 0; i < kStations; ++i) {
    text += fmt::format("\r{}: {}", StationLabel(i), Of(i).frames);
    if (WasHeard(i)) text += ", " + FormatRatio(LongestSilence(i, now), 1000, 1) + " s";
  }
  return text;
}

}  // namespace quorvane
