#include "forms/form.h"

#include <algorithm>
#include <utility>

#include "forms/forms.h"

namespace quorvane {

Form::Form(Forms& forms, std::string name) : forms_(forms), name_(std::move(name)) {
  forms_.Add(*this);
}

Form::~Form() {
  forms_.Remove(*this);
}

Control* Form::Find(std::string_view name) {
  const auto found = byName_.find(std::string(name));
  return found == byName_.end() ? nullptr : found->second;
}

void Form::Changed() {
  forms_.Changed(*this);
}

Control& Form::Add(ControlKind kind, std::string name, Control* parent) {
  Control& control = controls_.emplace_back(*this, kind, std::move(name), parent);
  byName_.emplace(control.Name(), &control);
  return control;
}

Control& Form::AddCaptioned(ControlKind kind, std::string name, std::string caption, Control* parent) {
  Control& control = Add(kind, std::move(name), parent);
  control.SetCaption(std::move(caption));
  return control;
}

std::string IndexedName(const std::string& name, int index) {
  return name + "(" + std::to_string(index) + ")";
}

ControlArray::ControlArray(Form& form, ControlKind kind, const std::string& name, int lower, int upper,
                           Control* parent)
    : lower_(lower) {
  for (int i = lower; i <= upper; ++i) {
    elements_.push_back(&form.Add(kind, IndexedName(name, i), parent));
  }
}

void TimerQueue::Arm(Control& timer, std::int64_t now) {
  Disarm(timer);
  if (timer.Enabled() && timer.Interval() > 0) timers_[{now + timer.Interval(), armed_++}] = &timer;
}

void TimerQueue::Disarm(const Control& timer) {
  std::erase_if(timers_, [&](const auto& entry) { return entry.second == &timer; });
}

void Forms::Remove(Form& form) {
  std::erase(forms_, &form);
  for (const Control& control : form.Controls()) timers_.Disarm(control);
  if (active_ == &form) active_ = nullptr;
  if (main_ == &form) main_ = nullptr;
}

Form* Forms::Find(std::string_view name) const {
  const auto found = std::ranges::find(forms_, name, &Form::Name);
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
  const bool timing = property == Property::Enabled || property == Property::Interval;
  if (timing && control.Kind() == ControlKind::Timer) timers_.Arm(control, clock_.Now());
  if (observer_ != nullptr) observer_->ControlChanged(control, property);
}

void Forms::Changed(Form& form) {
  if (observer_ != nullptr) observer_->FormChanged(form);
}

}  // namespace quorvane
