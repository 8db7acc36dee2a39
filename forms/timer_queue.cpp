#include "forms/timer_queue.h"

#include <algorithm>

namespace quorvane {

void TimerQueue::Arm(Control& timer, std::int64_t now) {
  Disarm(timer);
  if (timer.Enabled() && timer.Interval() > 0) {
    entries_.push_back({now + timer.Interval(), armed_++, &timer});
  }
}

void TimerQueue::Disarm(const Control& timer) {
  std::erase_if(entries_, [&](const Entry& entry) { return entry.timer == &timer; });
}

bool TimerQueue::IsArmed(const Control& timer) const {
  return std::any_of(entries_.begin(), entries_.end(),
                     [&](const Entry& entry) { return entry.timer == &timer; });
}

const TimerQueue::Entry* TimerQueue::Next() const {
  const auto next = std::min_element(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
    return a.due != b.due ? a.due < b.due : a.order < b.order;
  });
  return next == entries_.end() ? nullptr : &*next;
}

std::optional<std::int64_t> TimerQueue::NextDue() const {
  const Entry* next = Next();
  return next == nullptr ? std::nullopt : std::optional(next->due);
}

std::optional<std::int64_t> TimerQueue::DueTime(const Control& timer) const {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& candidate) { return candidate.timer == &timer; });
  return entry == entries_.end() ? std::nullopt : std::optional(entry->due);
}

std::optional<std::int64_t> TimerQueue::NextDueBut(const Control& timer) const {
  std::optional<std::int64_t> next;
  for (const Entry& entry : entries_) {
    if (entry.timer != &timer && (!next || entry.due < *next)) next = entry.due;
  }
  return next;
}

Control* TimerQueue::NextTimer() const {
  const Entry* next = Next();
  return next == nullptr ? nullptr : next->timer;
}

}  // namespace quorvane
