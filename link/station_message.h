#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <span>
#include <string>

namespace quorvane {

inline constexpr std::size_t kFrameSize = 36;
inline constexpr std::uint8_t kWig1 = 0x55;
inline constexpr std::uint8_t kWig2 = 0xAA;

// Addresses that the program treats specially; the eight stations are 0..7 (base/stations.h).
inline constexpr std::uint8_t kFirstJudge = 0;
inline constexpr std::uint8_t kStarter = 3;
inline constexpr std::uint8_t kTimers = 4;
inline constexpr std::uint8_t kPylonBox = 6;
inline constexpr std::uint8_t kConsole = 254;
inline constexpr std::uint8_t kAcknowledgement = 255;  // sender not named

using FrameBytes = std::array<std::uint8_t, kFrameSize>;

// The frame that the field stations and the console exchange by radio: 36 bytes, the same in memory as on the
// air, in this order. The layout is set by the stations' firmware. Lane arrays are indexed 0..3.
struct StationMessage {
  std::uint8_t Wig1 = 0;  // always 0x55
  std::uint8_t Wig2 = 0;  // always 0xAA
  std::uint8_t Ecc = 0;   // exclusive OR of everything after it
  std::uint8_t Strt = 0;  // start state of the race, 0: not running
  std::uint8_t To = 0;
  std::uint8_t From = 0;
  std::array<std::uint8_t, 4> Time = {};  // the sender's clock in ms, most significant byte first
  std::uint8_t Turns = 0;
  std::array<std::uint8_t, 4> Cuts = {};  // per lane: four two-bit slots, see base/stations.h
  std::uint8_t ssNun = 0;
  std::uint8_t ssSgl = 0;  // a bit per lane: it has a single cut
  std::uint8_t ssDbl = 0;  // a bit per lane: it has a double cut
  std::uint8_t ssBtn = 0;
  std::array<std::uint8_t, 5> Age = {};
  std::array<std::uint8_t, 4> Lit = {};  // per lane: what remains of its light, in units of 8 ms
  std::uint8_t Mode = 0;                 // race mode 1..6
  std::array<std::uint8_t, 4> Lap = {};  // per lane: laps flown
  std::uint8_t Dif = 0;                  // transmission delay, ms
  std::uint8_t Temp = 0;                 // raw
  std::uint8_t Volt = 0;                 // raw

  bool operator==(const StationMessage&) const = default;
};
static_assert(sizeof(StationMessage) == kFrameSize && alignof(StationMessage) == 1);

inline StationMessage DecodeFrame(const FrameBytes& bytes) {
  return std::bit_cast<StationMessage>(bytes);
}
inline FrameBytes EncodeFrame(const StationMessage& message) {
  return std::bit_cast<FrameBytes>(message);
}

// Exclusive OR of the bytes behind the check byte.
inline std::uint8_t ComputeEcc(const StationMessage& message) {
  const FrameBytes frame = EncodeFrame(message);
  return std::accumulate(frame.begin() + 3, frame.end(), std::uint8_t{0}, std::bit_xor<std::uint8_t>());
}

// The sender's clock in ms: the low 24 bits of Time.
inline std::int32_t FrameTime(const StationMessage& message) {
  return message.Time[1] * 65536 + message.Time[2] * 256 + message.Time[3];
}

void SetFrameTime(StationMessage& message, std::int32_t ms);  // most significant byte first
// Of lane index 0..3: how many cuts it has at each pylon and otherwise.
void SetCuts(StationMessage& message, std::size_t lane, const std::array<std::int16_t, 4>& cuts);

// "Judges 1", ... for 0..7 (5 has an empty name), "Laptop", "Ack", and "Stn(n)" for any other number above 7.
std::string StationName(int address);

// Every field of the frame as text; lines end with a carriage return, the last one does not.
std::string DebugDump(const StationMessage& message);

// 36 bytes are a frame, one with a wrong check byte, or do not start with the sync pair.
enum class Found : std::uint8_t { Good, Damaged, Unexpected };

// Cuts frames out of the radio's bytes, in whatever chunks they come. A damaged frame, or noise, costs more
// than itself: the 36 bytes from the next 0x55 on are dropped too, also those that are still to come.
class FrameReceiver {
 public:
  // Until the first 36 bytes after this have been looked at, Unexpected is not reported: they may begin in
  // the middle of a frame. Buffered bytes stay.
  void PortOpened() { PortJustOpened_ = true; }
  bool PortJustOpened() const { return PortJustOpened_; }

  // Moves on before it tells what it has found. `told` must not throw: the other bytes would be lost.
  using Told = std::function<void(Found found, const StationMessage& frame)>;
  void Receive(std::span<const std::uint8_t> bytes, const Told& told);

  // Bytes in the buffer; below zero: minus the number of bytes that are still to be dropped.
  int RxCount() const { return RxCount_; }

 private:
  void ReadMessage(const Told& told);

  FrameBytes RxBuffer_ = {};
  int RxCount_ = 0;
  bool PortJustOpened_ = false;
};

}  // namespace quorvane
