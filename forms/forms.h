#pragma once

#include <string_view>
#include <vector>

#include "forms/form.h"
#include "forms/platform.h"
#include "forms/timer_queue.h"

namespace quorvane {

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
