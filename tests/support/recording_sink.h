#pragma once

#include <string>
#include <vector>

#include "link/frame_receiver.h"
#include "tests/support/naive_receiver.h"

namespace quorvane {

// Writes down what a receiver reports, in the words of NaiveReceiver.
class RecordingSink : public FrameSink {
 public:
  void GoodFrame(const StationMessage& frame) override {
    found.push_back("good " + HexText(EncodeFrame(frame)));
  }
  void DamagedFrame(const StationMessage& frame, std::uint8_t computedEcc) override {
    found.push_back(fmt::format("damaged {} {:02X}", HexText(EncodeFrame(frame)), computedEcc));
  }
  void Unexpected(std::uint8_t first, std::uint8_t second) override {
    found.push_back(fmt::format("unexpected {:02X} {:02X}", first, second));
  }

  std::vector<std::string> found;
};

}  // namespace quorvane
