#include "ui/qt/timer_driver.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quorvane {

TimerDriver::TimerDriver(Door& door) : door_(door) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, [this] {
    door_.RunDueTimers();
    Arm();
  });
}

void TimerDriver::Coarsen(const Control& display, std::function<int()> granularity) {
  display_ = &display;
  granularity_ = std::move(granularity);
}

std::optional<std::int64_t> TimerDriver::NextWake() const {
  const TimerQueue& timers = door_.AllForms().Timers();
  const auto display = display_ == nullptr ? std::nullopt : timers.DueTime(*display_);
  if (!display) return timers.NextDue();
  const std::int64_t step = std::max(1, granularity_());
  const std::int64_t late = (*display + step - 1) / step * step;
  return std::min(late, timers.NextDueBut(*display_).value_or(late));
}

void TimerDriver::Arm() {
  const auto due = NextWake();
  if (!due) return timer_.stop();
  const std::int64_t wait = *due - door_.System().ClockMs();
  constexpr std::int64_t kLongest = std::numeric_limits<int>::max();
  timer_.start(static_cast<int>(std::clamp<std::int64_t>(wait, 0, kLongest)));
}

}  // namespace quorvane
