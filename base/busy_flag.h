#pragma once

namespace quorvane {

// Sets a re-entrancy flag for as long as it lives, so that the flag falls however its procedure ends.
class BusyFlag {
 public:
  explicit BusyFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~BusyFlag() { flag_ = false; }
  BusyFlag(const BusyFlag&) = delete;
  BusyFlag& operator=(const BusyFlag&) = delete;

 private:
  bool& flag_;
};

}  // namespace quorvane
