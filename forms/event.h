#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "forms/platform.h"

namespace quorvane {

// The keys of the console, in the order of the lanes' actions.
inline constexpr std::array<std::string_view, 16> kKeyNames = {
    "F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12", "7", "8", "9", "0"};

enum class EventKind : std::uint8_t {
  Load,       // the program starts
  Click,      // target: a control
  Type,       // target: a text box; text: its new content
  Choose,     // target: a list; number: the entry, 0-based
  Hover,      // target: a control
  Key,        // text: one of kKeyNames
  Activate,   // target: a form
  Close,      // target: a form
  Resize,     // target: a form
  Bytes,      // bytes: what arrived on the serial port, in one receive event
  LineError,  // number: the serial control's code, 1000 and above
  Ports,      // numbers: the serial ports that exist now, rising
  Field,      // number: the serial port at which the practice field answers; 0: it does not, text: why
  Quit,       // the system ends the program: by a signal, or with the desktop session
  Timer,      // target: a timer
};

// Something from outside, as data, so that it can be written down and come again.
struct Event {
  EventKind kind = EventKind::Load;
  std::string target = {};  // "frmJudge.cmdStart", "frmSerialPort"
  std::string text = {};
  int number = 0;
  std::vector<int> numbers = {};
  std::vector<std::uint8_t> bytes = {};
};

// Told by the door of every event, answer and sent frame, and what else a replay has to know, with its ms on
// the console clock. Never throws and never waits. This one keeps nothing.
class Journal {
 public:
  virtual ~Journal() = default;
  virtual void Entered(std::int64_t /*ms*/, const Event& /*event*/) {}
  virtual void Answered(std::int64_t /*ms*/, const DialogBox& /*box*/, const DialogAnswer& /*answer*/) {}
  virtual void Sent(std::int64_t /*ms*/, const std::vector<std::uint8_t>& /*frame*/) {}
  // A project file has been opened, or (not taken) could not be.
  virtual void ProjectOpened(std::int64_t /*ms*/, const std::string& /*path*/, bool /*taken*/) {}
  // The computer's clock shows this time, not the one that it should by the console clock.
  virtual void ClockSet(std::int64_t /*ms*/, const LocalDateTime& /*shown*/) {}
  // The computer's own clocks have been looked at, and what follows depends on it.
  virtual void ComputerLooked(std::int64_t /*ms*/, const ComputerTime& /*time*/) {}
  // An entry of a log has been put right.
  virtual void Corrected(std::int64_t /*ms*/, const std::string& /*what*/) {}
  // An error has ended what was in hand.
  virtual void Failed(std::int64_t /*ms*/, const std::string& /*error*/) {}
};

}  // namespace quorvane
