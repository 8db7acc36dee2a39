#include "link/station_message.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "base/stations.h"
#include "base/text.h"

namespace quorvane {
namespace {

std::string HexBytes(const auto& bytes) {
  return fmt::format("0x{:02X}", fmt::join(bytes, ",0x"));
}

std::string BitLine(const char* label, std::uint8_t byte) {
  return fmt::format("{}=0x{:02X} = {}\r", label, byte, BitString(byte));
}

}  // namespace

void SetFrameTime(StationMessage& message, std::int32_t ms) {
  message.Time = std::bit_cast<std::array<std::uint8_t, 4>>(ms);
  if constexpr (std::endian::native == std::endian::little) std::ranges::reverse(message.Time);
}

// A cut byte has a slot for each count: its low bit for one cut, both of its bits for more.
void SetCuts(StationMessage& message, std::size_t lane, const std::array<std::int16_t, 4>& cuts) {
  message.Cuts[lane] = 0;
  message.ssSgl &= static_cast<std::uint8_t>(~BitMask[lane]);
  message.ssDbl &= static_cast<std::uint8_t>(~BitMask[lane]);
  for (std::size_t slot = 0; slot < cuts.size(); ++slot) {
    if (cuts[slot] < 1) continue;
    const bool single = cuts[slot] == 1;
    message.Cuts[lane] |= single ? LaneBitLow[slot] : LaneBitPair[slot];
    (single ? message.ssSgl : message.ssDbl) |= BitMask[lane];
  }
}

std::string StationName(int address) {
  if (address == kConsole) return "Laptop";
  if (address == kAcknowledgement) return "Ack";
  if (address > 7) return fmt::format("Stn({})", address);
  return std::string(StationNames[static_cast<std::size_t>(address)]);
}

std::string DebugDump(const StationMessage& m) {
  std::string text = fmt::format(
      "Wig1=0x{:02X}, Wig2=0x{:02X}, Ecc=0x{:02X}\r"
      "Strt=0x{:02X}, From=0x{:02X}, To =0x{:02X}\r",
      m.Wig1, m.Wig2, m.Ecc, m.Strt, m.From, m.To);
  // In seconds, less the time that the frame was under way.
  const std::string seconds = FormatRatio(std::int64_t{FrameTime(m)} - m.Dif, 1000, 2);
  text += fmt::format("Time={} ({})\r", HexBytes(m.Time), seconds) + BitLine("Turns", m.Turns);
  text += fmt::format("Cuts ={}\r", HexBytes(m.Cuts));
  text += BitLine("ssNun", m.ssNun) + BitLine("ssSgl", m.ssSgl) + BitLine("ssDbl", m.ssDbl);
  text += BitLine("ssBtn", m.ssBtn) + fmt::format("Age={}\r", HexBytes(m.Age));
  text += fmt::format("Lit={},0x{:02X}\rLap={}\r", HexBytes(m.Lit), m.Mode, fmt::join(m.Lap, ","));
  return text + fmt::format("Dif=0x{:02X}, Temp=0x{:02X}, Volt=0x{:02X}", m.Dif, m.Temp, m.Volt);
}

void FrameReceiver::Receive(std::span<const std::uint8_t> bytes, const Told& told) {
  while (!bytes.empty()) {
    const bool dropping = RxCount_ < 0;
    const auto wanted = static_cast<std::size_t>(dropping ? -RxCount_ : int{kFrameSize} - RxCount_);
    const auto taken = bytes.first(std::min(wanted, bytes.size()));
    if (!dropping) std::ranges::copy(taken, RxBuffer_.begin() + RxCount_);
    RxCount_ += static_cast<int>(taken.size());
    bytes = bytes.subspan(taken.size());
    if (RxCount_ < static_cast<int>(kFrameSize)) continue;
    ReadMessage(told);
    PortJustOpened_ = false;
  }
}

// The buffer holds a frame's length exactly. Of what is dropped from the next 0x55 on, the part behind it in
// the buffer goes at once; as many bytes as lie before it are still to come.
void FrameReceiver::ReadMessage(const Told& told) {
  const StationMessage frame = DecodeFrame(RxBuffer_);
  Found found = Found::Unexpected;
  if (frame.Wig1 == kWig1 && frame.Wig2 == kWig2) {
    found = frame.Ecc == ComputeEcc(frame) ? Found::Good : Found::Damaged;
  }
  RxCount_ = 0;
  if (found != Found::Good) {
    RxCount_ -=
        static_cast<int>(std::find(RxBuffer_.begin() + 1, RxBuffer_.end(), kWig1) - RxBuffer_.begin());
  }
  if (found != Found::Unexpected || !PortJustOpened_) told(found, frame);
}

}  // namespace quorvane
