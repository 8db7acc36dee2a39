#include "forms/forms.h"

#include <algorithm>

namespace quorvane {

void Forms::Remove(Form& form) {
  std::erase(forms_, &form);
  for (const Control& control : form.Controls()) timers_.Disarm(control);
  if (active_ == &form) active_ = nullptr;
  if (main_ == &form) main_ = nullptr;
}

Form* Forms::Find(std::string_view name) const {
  const auto found =
      std::find_if(forms_.begin(), forms_.end(), [&](const Form* form) { return form->Name() == name; });
  return found == forms_.end() ? nullptr : *found;
}

Control* Forms::FindControl(std::string_view fullName) const {
  const std::size_t dot = fullName.find('.');
  if (dot == std::string_view::npos) return nullptr;
  Form* form = Find(fullName.substr(0, dot));
  return form == nullptr ? nullptr : form->Find(fullName.substr(dot + 1));
}

void Forms::Show(Form& form) {
  form.SetVisible(true);
  Activate(form);
}

void Forms::Activate(Form& form) {
  active_ = &form;
  Changed(form);
  form.Activated();
}

void Forms::Changed(Control& control, Property property) {
  if (control.Kind() == ControlKind::Timer) {
    if (property == Property::Enabled || property == Property::Interval) timers_.Arm(control, clock_.Now());
  }
  if (observer_ != nullptr) observer_->ControlChanged(control, property);
}

void Forms::Changed(Form& form) {
  if (observer_ != nullptr) observer_->FormChanged(form);
}

}  // namespace quorvane
