#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "forms/control.h"

namespace quorvane {

// The armed timers of the program in the order in which they fall due; those due in the same millisecond come
// in the order in which they were armed. Times are ms of the console clock. By hand, because the timers of a
// library run by the computer's clock: a replay and the tests bring their own time, and need this very order.
class TimerQueue {
 public:
  // Arms the timer to fire at now + its interval when it is enabled and has an interval, and takes it out
  // otherwise.
  void Arm(Control& timer, std::int64_t now);
  void Disarm(const Control& timer);

  // When the first is due; empty when none is armed.
  std::optional<std::int64_t> NextDue() const;
  // When that timer is due; empty when it is not armed.
  std::optional<std::int64_t> DueTime(const Control& timer) const;
  // When the first of the others is due.
  std::optional<std::int64_t> NextDueBut(const Control& timer) const;
  Control* NextTimer() const;  // the timer that NextDue speaks of, null when none is armed

 private:
  std::map<std::pair<std::int64_t, std::uint64_t>, Control*> timers_;  // by due time and order of arming
  std::uint64_t armed_ = 0;
};

}  // namespace quorvane
