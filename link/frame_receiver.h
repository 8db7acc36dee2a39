#pragma once

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
  // No sync pair where a frame should start.
  virtual void Unexpected(std::uint8_t first, std::uint8_t second) = 0;
};

// Cuts frames out of the byte stream of the radio, in whatever chunks it comes. A damaged frame, or noise,
// costs more than itself: the 36 bytes from the next 0x55 onward are dropped too, also those that are still
// to come.
class FrameReceiver {
 public:
  // Until the first 36 bytes after this have been looked at, Unexpected is not reported: they may begin in
  // the middle of a frame. Buffered bytes stay.
  void PortOpened() { PortJustOpened_ = true; }
  bool PortJustOpened() const { return PortJustOpened_; }

  void Receive(std::span<const std::uint8_t> bytes, FrameSink& sink);

  // Bytes in the buffer; below zero: minus the number of bytes that are still to be dropped.
  int RxCount() const { return RxCount_; }

 private:
  void ReadMessage(FrameSink& sink);

  FrameBytes RxBuffer_ = {};
  int RxCount_ = 0;
  bool PortJustOpened_ = false;
};

}  // namespace quorvane
