#include "link/station_message.h"

#include <bit>
#include <string_view>

#include "base/bits.h"
#include "base/checked.h"
#include "base/stations.h"
#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::size_t kFirstChecked = 3;  // the byte behind the check byte

std::string HexByte(std::uint8_t value) {
  return "0x" + Hex2(value);
}

std::string HexBytes(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ',';
    text += HexByte(byte);
  }
  return text;
}

std::string BitLine(std::string_view label, std::uint8_t byte) {
  return std::string(label) + "=" + HexByte(byte) + " = " + BitString(byte) + "\r";
}

// The sender's clock less the time the frame was under way, in seconds.
std::string SecondsText(const StationMessage& message) {
  return FormatRatio(std::int64_t{FrameTime(message)} - message.Dif, 1000, 2);
}

std::string LapList(const StationMessage& message) {
  std::string text;
  for (const std::uint8_t laps : message.Lap) {
    if (!text.empty()) text += ',';
    text += std::to_string(laps);
  }
  return text;
}

}  // namespace

StationMessage DecodeFrame(std::span<const std::uint8_t, kFrameSize> bytes) {
  FrameBytes copy;
  for (std::size_t i = 0; i < kFrameSize; ++i) copy[i] = bytes[i];
  return std::bit_cast<StationMessage>(copy);
}

FrameBytes EncodeFrame(const StationMessage& message) {
  return std::bit_cast<FrameBytes>(message);
}

std::uint8_t ComputeEcc(std::span<const std::uint8_t, kFrameSize> frame) {
  std::uint8_t ecc = 0;
  for (std::size_t i = kFirstChecked; i < kFrameSize; ++i) ecc ^= frame[i];
  return ecc;
}

std::int32_t FrameTime(const StationMessage& message) {
  return message.Time[1] * 65536 + message.Time[2] * 256 + message.Time[3];
}

std::string StationName(int address) {
  if (address > 7) {
    if (address == kConsole) return "Laptop";
    if (address == kAcknowledgement) return "Ack";
    return "Stn(" + std::to_string(address) + ")";
  }
  return std::string(Element(StationNames, address));
}

std::string DebugDump(const StationMessage& m) {
  std::array<std::uint8_t, 5> lit = {m.Lit[0], m.Lit[1], m.Lit[2], m.Lit[3], m.Mode};
  std::string text;
  text += "Wig1=" + HexByte(m.Wig1) + ", Wig2=" + HexByte(m.Wig2) + ", Ecc=" + HexByte(m.Ecc) + "\r";
  text += "Strt=" + HexByte(m.Strt) + ", From=" + HexByte(m.From) + ", To =" + HexByte(m.To) + "\r";
  text += "Time=" + HexBytes(m.Time) + " (" + SecondsText(m) + ")\r";
  text += BitLine("Turns", m.Turns);
  text += "Cuts =" + HexBytes(m.Cuts) + "\r";
  text += BitLine("ssNun", m.ssNun);
  text += BitLine("ssSgl", m.ssSgl);
  text += BitLine("ssDbl", m.ssDbl);
  text += BitLine("ssBtn", m.ssBtn);
  text += "Age=" + HexBytes(m.Age) + "\r";
  text += "Lit=" + HexBytes(lit) + "\r";
  text += "Lap=" + LapList(m) + "\r";
  text += "Dif=" + HexByte(m.Dif) + ", Temp=" + HexByte(m.Temp) + ", Volt=" + HexByte(m.Volt);
  return text;
}

}  // namespace quorvane
