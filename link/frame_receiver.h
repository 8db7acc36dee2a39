#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "link/station_message.h"

namespace quorvane {

// Told what the receiver finds in the stream. The receiver has already moved on past the bytes it speaks of.
// Must not throw: the rest of the bytes in hand would be lost.
class FrameSink {
 public:
  virtual ~FrameSink() = default;
  virtual void GoodFrame(const StationMessage& frame) = 0;
  virtual void DamagedFrame(const StationMessage& frame, std::uint8_t computedEcc) = 0;
  virtual void Unexpected(std::uint8_t first,
                          std::uint8_t second) = 0;  // no sync pair where a frame should start
};

// Cuts frames out of the byte stream of the radio. Takes bytes in any chunking and does a constant amount of
// work per byte. A damaged frame, or noise, costs more than itself: the 36 bytes from the next 0x55 onward
// are discarded too, whether they have arrived yet or not.
class FrameReceiver {
 public:
  // Until the first 36 bytes after this have been looked at, Unexpected is not reported. Buffered bytes stay.
  void PortOpened() { PortJustOpened_ = true; }
  bool PortJustOpened() const { return PortJustOpened_; }

  void Receive(std::span<const std::uint8_t> bytes, FrameSink& sink);

  // Takes every whole frame from the buffer. Always 0.
  std::int32_t ReadMessage(FrameSink& sink);

  // Bytes in the buffer; below zero: minus the number of bytes that are still to be dropped.
  int RxCount() const { return RxCount_; }

 private:
  void TakeByte(std::uint8_t byte, FrameSink& sink);
  void ReadFront(FrameSink& sink);
  void SkipToSync();
  void Discard(int count);

  std::array<std::uint8_t, 257> RxBuffer_ = {};
  std::int16_t RxCount_ = 0;
  bool PortJustOpened_ = false;
};

}  // namespace quorvane
