#include "link/frame_receiver.h"

#include <algorithm>

#include "base/checked.h"

namespace quorvane {
namespace {

constexpr int kLastIndex = 256;
constexpr int kFrame = static_cast<int>(kFrameSize);

}  // namespace

void FrameReceiver::Receive(std::span<const std::uint8_t> bytes, FrameSink& sink) {
  for (const std::uint8_t byte : bytes) TakeByte(byte, sink);
}

void FrameReceiver::TakeByte(std::uint8_t byte, FrameSink& sink) {
  if (RxCount_ == kLastIndex) ReadMessage(sink);
  if (RxCount_ >= 0 && RxCount_ <= kLastIndex) RxBuffer_[static_cast<std::size_t>(RxCount_)] = byte;
  ++RxCount_;
  if (RxCount_ < kFrame) return;
  // The first look after opening may find the middle of a frame, which nobody needs to be told.
  ReadMessage(sink);
  PortJustOpened_ = false;
}

// The buffer is looked at as soon as it holds a frame, so it never grows beyond one and what is moved in it
// is short.
std::int32_t FrameReceiver::ReadMessage(FrameSink& sink) {
  while (RxCount_ >= kFrame) ReadFront(sink);
  return 0;
}

void FrameReceiver::ReadFront(FrameSink& sink) {
  const std::span<const std::uint8_t, kFrameSize> front(RxBuffer_.data(), kFrameSize);
  const bool synced = front[0] == kWig1 && front[1] == kWig2;
  const StationMessage frame = DecodeFrame(front);
  const std::uint8_t ecc = synced ? ComputeEcc(front) : std::uint8_t{0};
  const bool good = synced && ecc == frame.Ecc;
  const bool report = !PortJustOpened_;

  if (!good) SkipToSync();
  Discard(kFrame);

  if (good) {
    sink.GoodFrame(frame);
  } else if (synced) {
    sink.DamagedFrame(frame, ecc);
  } else if (report) {
    sink.Unexpected(frame.Wig1, frame.Wig2);
  }
}

// Brings the next 0x55 behind the first byte to the front, or empties the buffer.
void FrameReceiver::SkipToSync() {
  const auto end = RxBuffer_.begin() + RxCount_;
  const auto found = std::find(RxBuffer_.begin() + 1, end, kWig1);
  Discard(static_cast<int>(found - RxBuffer_.begin()));
}

// Discarding more than there is leaves a count below zero: bytes still to come are dropped.
void FrameReceiver::Discard(int count) {
  if (count < RxCount_) std::copy(RxBuffer_.begin() + count, RxBuffer_.begin() + RxCount_, RxBuffer_.begin());
  RxCount_ = ToInteger(RxCount_ - count);
}

}  // namespace quorvane
