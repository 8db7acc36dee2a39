#pragma once

#include <string>
#include <vector>

#include "link/frame_receiver.h"
#include "tests/support/naive_receiver.h"

namespace quorvane {

// Writes down what a receiver reports, in the words of NaiveReceiver.
class RecordingSink : public FrameSink {
 public:
  void GoodFrame(const StationMessage& frame) override { found.push_back("good " + Text(frame)); }
  void DamagedFrame(const StationMessage& frame, std::uint8_t computedEcc) override {
    found.push_back("damaged " + Text(frame) + " " + NaiveReceiver::Hex(&computedEcc, 1));
  }
  void Unexpected(std::uint8_t first, std::uint8_t second) override {
    found.push_back("unexpected " + NaiveReceiver::Hex(&first, 1) + " " + NaiveReceiver::Hex(&second, 1));
  }

  std::vector<std::string> found;

 private:
  static std::string Text(const StationMessage& frame) {
    return NaiveReceiver::Hex(EncodeFrame(frame).data(), static_cast<int>(kFrameSize));
  }
};

}  // namespace quorvane
