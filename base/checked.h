#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>

namespace quorvane {

// An error that abandons the operation in hand: an overflow, a subscript out of range, a wrong argument.
// The door ends the event that raised it; the program and everything recorded before go on.
class RunTimeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class OverflowError : public RunTimeError {
 public:
  OverflowError() : RunTimeError("Overflow") {}
};

class SubscriptError : public RunTimeError {
 public:
  SubscriptError() : RunTimeError("Subscript out of range") {}
};

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

// Whole-number arithmetic in which an overflow is an error and never a wrong number: done in 64 bits and
// narrowed to the type in which the value is kept.
template <std::integral To>
constexpr To Narrow(std::int64_t value) {
  if (value < std::int64_t{std::numeric_limits<To>::min()} ||
      value > std::int64_t{std::numeric_limits<To>::max()}) {
    throw OverflowError();
  }
  return static_cast<To>(value);
}

inline constexpr auto& ToInteger = Narrow<std::int16_t>;
inline constexpr auto& ToLong = Narrow<std::int32_t>;
inline constexpr auto& ToByte = Narrow<std::uint8_t>;

constexpr std::int32_t AddLong(std::int32_t a, std::int32_t b) {
  return ToLong(std::int64_t{a} + b);
}
constexpr std::int32_t SubtractLong(std::int32_t a, std::int32_t b) {
  return ToLong(std::int64_t{a} - b);
}

// The whole number nearest to value, halves to the even neighbour; an error when it does not fit.
template <std::integral To>
To RoundTo(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<To>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<To>::max()))) {
    throw OverflowError();
  }
  return Narrow<To>(static_cast<std::int64_t>(rounded));
}

// Element(container, i): a subscript out of range is an error.
template <typename Container>
decltype(auto) Element(Container& container, std::int64_t index) {
  if (index < 0 || index >= static_cast<std::int64_t>(std::size(container))) throw SubscriptError();
  return container[static_cast<std::size_t>(index)];
}

}  // namespace quorvane
