#pragma once

#include <map>
#include <optional>

#include "forms/form.h"
#include "forms/platform.h"

namespace quorvane {

// The armed timers in the order in which they fall due, in ms of the console clock; of those due together the
// first that was armed. By hand, because the timers of a library run by the computer's clock: a replay and
// the tests bring their own time, and need this very order.
class TimerQueue {
 public:
  // To fire at now + its interval; takes out one that is disabled or has no interval.
  void Arm(Control& timer, std::int64_t now);
  void Disarm(const Control& timer);

  std::optional<std::int64_t> NextDue() const {  // when the first is due; empty when none is armed
    return timers_.empty() ? std::nullopt : std::optional(timers_.begin()->first.first);
  }
  Control* NextTimer() const { return timers_.empty() ? nullptr : timers_.begin()->second; }  // that, or null
  const auto& Armed() const { return timers_; }

 private:
  std::map<std::pair<std::int64_t, std::uint64_t>, Control*> timers_;  // by due time and order of arming
  std::uint64_t armed_ = 0;
};

// All forms of the program: finds a control by name, passes changes on to the one observer, keeps the timers
// armed as their properties say, and knows which form the operator is at.
class Forms {
 public:
  explicit Forms(const EventClock& clock) : clock_(clock) {}

  void Add(Form& form) { forms_.push_back(&form); }
  void Remove(Form& form);
  const std::vector<Form*>& All() const { return forms_; }
  Form* Find(std::string_view name) const;                // "frmJudge"
  Control* FindControl(std::string_view fullName) const;  // "frmJudge.cmdStart"

  void SetObserver(ControlObserver* observer) { observer_ = observer; }

  // The form that takes the console's keys.
  void SetMain(Form& form) { main_ = &form; }
  Form* Main() const { return main_; }

  // Shows a form modeless and brings the operator to it, which activates it.
  void Show(Form& form);
  // The operator is at this form; runs its Activated.
  void Activate(Form& form);
  Form* Active() const { return active_; }

  TimerQueue& Timers() { return timers_; }

  void Changed(Control& control, Property property);
  void Changed(Form& form);

 private:
  const EventClock& clock_;
  ControlObserver* observer_ = nullptr;
  Form* main_ = nullptr;
  Form* active_ = nullptr;
  std::vector<Form*> forms_;
  TimerQueue timers_;
};

}  // namespace quorvane
