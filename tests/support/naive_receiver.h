#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorvane {

// The receive path in the plainest possible way, byte shifted after byte, to compare the real one with. What
// it finds is a list of texts: "good <hex>", "damaged <hex> <computed>", "unexpected <hex> <hex>".
class NaiveReceiver {
 public:
  void PortOpened() { justOpened_ = true; }

  void Byte(std::uint8_t byte) {
    if (count_ == 256) Read();
    if (count_ >= 0 && count_ <= 256) buffer_[count_] = byte;
    count_ = count_ + 1;
    if (count_ >= 36) {
      Read();
      justOpened_ = false;
    }
  }

  int Count() const { return count_; }
  const std::vector<std::string>& Found() const { return found_; }
  void Forget() { found_.clear(); }

  static std::string Hex(const std::uint8_t* bytes, int count) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += kDigits[bytes[i] >> 4];
      text += kDigits[bytes[i] & 15];
    }
    return text;
  }

 private:
  void Read() {
    for (;;) {
      if (count_ < 36) return;
      if (buffer_[0] == 0x55 && buffer_[1] == 0xAA) {
        std::uint8_t check = 0;
        for (int i = 3; i <= 35; ++i) check = check ^ buffer_[i];
        if (check != buffer_[2]) {
          found_.push_back("damaged " + Hex(buffer_, 36) + " " + Hex(&check, 1));
          buffer_[0] = 0;
        }
      } else {
        if (!justOpened_) found_.push_back("unexpected " + Hex(buffer_, 1) + " " + Hex(buffer_ + 1, 1));
        buffer_[0] = 0;
      }
      if (buffer_[0] == 0) {
        int i = 1;
        while (i <= count_ - 1 && buffer_[i] != 0x55) i = i + 1;
        ShiftLeft(i);
      } else {
        found_.push_back("good " + Hex(buffer_, 36));
      }
      ShiftLeft(36);
    }
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

}  // namespace quorvane
