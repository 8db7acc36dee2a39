#pragma once

#include <cstdint>

namespace quorvane {

// The console clock as an event sees it: ms since the program started, never falling. It stands still while
// an event is handled and is read again only after a dialog box has closed.
class EventClock {
 public:
  virtual ~EventClock() = default;
  virtual std::int64_t Now() const = 0;
};

}  // namespace quorvane
