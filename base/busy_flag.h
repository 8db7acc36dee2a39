#pragma once

#include <utility>

namespace quorvane {

// Gives a variable another value for as long as it lives, however its procedure ends.
template <typename T>
class Restored {
 public:
  Restored(T& variable, T value) : variable_(variable), before_(std::exchange(variable, value)) {}
  ~Restored() { variable_ = before_; }
  Restored(const Restored&) = delete;
  Restored& operator=(const Restored&) = delete;

 private:
  T& variable_;
  const T before_;
};

// The same for a re-entrancy flag.
struct BusyFlag : Restored<bool> {
  explicit BusyFlag(bool& flag) : Restored(flag, true) {}
};

}  // namespace quorvane
