#include "ui/timer_driver.h"

#include <algorithm>
#include <limits>

namespace quorvane {

TimerDriver::TimerDriver(Door& door) : door_(door) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, [this] {
    door_.RunDueTimers();
    Arm();
  });
}

void TimerDriver::Arm() {
  const auto due = door_.AllForms().Timers().NextDue();
  if (!due) return timer_.stop();
  const std::int64_t wait = *due - door_.System().ClockMs();
  constexpr std::int64_t kLongest = std::numeric_limits<int>::max();
  timer_.start(static_cast<int>(std::clamp<std::int64_t>(wait, 0, kLongest)));
}

}  // namespace quorvane
