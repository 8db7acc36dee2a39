#pragma once

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "link/station_message.h"

namespace quorvane {

inline std::string HexText(std::span<const std::uint8_t> bytes) {
  return fmt::format("{:02X}", fmt::join(bytes, ""));
}

// The receive path in the plainest possible way, byte shifted after byte, to compare the real one with. What
// it finds is a list of texts: "good <hex>", "damaged <hex> <computed>", "unexpected <hex> <hex>".
class NaiveReceiver {
 public:
  void PortOpened() { justOpened_ = true; }

  void Byte(std::uint8_t byte) {
    if (count_ >= 0 && count_ <= 256) buffer_[count_] = byte;
    count_ = count_ + 1;
    if (count_ < 36) return;
    while (count_ >= 36) Read();
    justOpened_ = false;
  }

  int Count() const { return count_; }
  std::vector<std::string> TakeFound() { return std::exchange(found_, {}); }

 private:
  void Read() {
    std::uint8_t check = 0;
    for (int i = 3; i <= 35; ++i) check = check ^ buffer_[i];
    const std::string frame = HexText(std::span(buffer_).first(36));
    const bool synced = buffer_[0] == 0x55 && buffer_[1] == 0xAA;
    const bool good = synced && check == buffer_[2];
    if (good) {
      found_.push_back("good " + frame);
    } else if (synced) {
      found_.push_back(fmt::format("damaged {} {:02X}", frame, check));
    } else if (!justOpened_) {
      found_.push_back(fmt::format("unexpected {:02X} {:02X}", buffer_[0], buffer_[1]));
    }
    int next = 1;
    while (next <= count_ - 1 && buffer_[next] != 0x55) next = next + 1;
    if (!good) ShiftLeft(next);
    ShiftLeft(36);
  }

  void ShiftLeft(int by) {
    for (int from = by; from <= count_ - 1; ++from) buffer_[from - by] = buffer_[from];
    count_ = count_ - by;
  }

  std::uint8_t buffer_[257] = {};
  int count_ = 0;
  bool justOpened_ = false;
  std::vector<std::string> found_;
};

// What a receiver tells, in the words of NaiveReceiver.
inline std::string FoundText(Found found, const StationMessage& frame) {
  const std::string bytes = HexText(EncodeFrame(frame));
  if (found == Found::Good) return "good " + bytes;
  if (found == Found::Damaged) return fmt::format("damaged {} {:02X}", bytes, ComputeEcc(frame));
  return fmt::format("unexpected {:02X} {:02X}", frame.Wig1, frame.Wig2);
}

}  // namespace quorvane
