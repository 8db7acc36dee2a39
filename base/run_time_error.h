#pragma once

#include <stdexcept>
#include <string>

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

}  // namespace quorvane
