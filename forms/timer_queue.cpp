#include "forms/timer_queue.h"

#include <algorithm>

namespace quorvane {
namespace {

template <typename Timers, typename Test>
std::optional<std::int64_t> FirstDue(const Timers& timers, Test test) {
  const auto found =
      std::find_if(timers.begin(), timers.end(), [&](const auto& entry) { return test(entry.second); });
  return found == timers.end() ? std::nullopt : std::optional(found->first.first);
}

}  // namespace

void TimerQueue::Arm(Control& timer, std::int64_t now) {
  Disarm(timer);
  if (timer.Enabled() && timer.Interval() > 0) timers_[{now + timer.Interval(), armed_++}] = &timer;
}

void TimerQueue::Disarm(const Control& timer) {
  std::erase_if(timers_, [&](const auto& entry) { return entry.second == &timer; });
}

std::optional<std::int64_t> TimerQueue::NextDue() const {
  return FirstDue(timers_, [](const Control*) { return true; });
}

std::optional<std::int64_t> TimerQueue::DueTime(const Control& timer) const {
  return FirstDue(timers_, [&](const Control* armed) { return armed == &timer; });
}

std::optional<std::int64_t> TimerQueue::NextDueBut(const Control& timer) const {
  return FirstDue(timers_, [&](const Control* armed) { return armed != &timer; });
}

Control* TimerQueue::NextTimer() const {
  return timers_.empty() ? nullptr : timers_.begin()->second;
}

}  // namespace quorvane
