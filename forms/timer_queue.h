#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "forms/control.h"

namespace quorvane {

// The armed timers of the program in the order in which they fall due; those due in the same millisecond come
// in the order in which they were armed. Times are ms of the console clock.
class TimerQueue {
 public:
  // Arms the timer to fire at now + its interval when it is enabled and has an interval, and takes it out
  // otherwise.
  void Arm(Control& timer, std::int64_t now);
  void Disarm(const Control& timer);
  bool IsArmed(const Control& timer) const;

  std::optional<std::int64_t> NextDue() const;
  // When that timer is due; empty when it is not armed.
  std::optional<std::int64_t> DueTime(const Control& timer) const;
  // When the first of the others is due.
  std::optional<std::int64_t> NextDueBut(const Control& timer) const;
  Control* NextTimer() const;  // the timer that NextDue speaks of, null when none is armed

 private:
  struct Entry {
    std::int64_t due;
    std::uint64_t order;
    Control* timer;
  };
  const Entry* Next() const;

  std::vector<Entry> entries_;  // a dozen at the most: searched, not sorted
  std::uint64_t armed_ = 0;
};

}  // namespace quorvane
