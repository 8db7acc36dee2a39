#include "link/frame_receiver.h"

#include <algorithm>

namespace quorvane {

void FrameReceiver::Receive(std::span<const std::uint8_t> bytes, FrameSink& sink) {
  for (const std::uint8_t byte : bytes) {
    if (RxCount_ >= 0) RxBuffer_[static_cast<std::size_t>(RxCount_)] = byte;
    if (++RxCount_ < static_cast<int>(kFrameSize)) continue;
    ReadMessage(sink);
    PortJustOpened_ = false;
  }
}

// The buffer holds a frame's length exactly. Of what is dropped from the next 0x55 on, the part behind it in
// the buffer goes at once; as many bytes as lie before it are still to come.
void FrameReceiver::ReadMessage(FrameSink& sink) {
  const StationMessage frame = DecodeFrame(RxBuffer_);
  const std::uint8_t ecc = ComputeEcc(RxBuffer_);
  const bool synced = frame.Wig1 == kWig1 && frame.Wig2 == kWig2;
  const bool good = synced && ecc == frame.Ecc;
  const auto next = std::find(RxBuffer_.begin() + 1, RxBuffer_.end(), kWig1);
  RxCount_ = good ? 0 : static_cast<int>(RxBuffer_.begin() - next);

  if (good) {
    sink.GoodFrame(frame);
  } else if (synced) {
    sink.DamagedFrame(frame, ecc);
  } else if (!PortJustOpened_) {
    sink.Unexpected(frame.Wig1, frame.Wig2);
  }
}

}  // namespace quorvane
