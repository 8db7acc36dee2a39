#include "forms/form.h"

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

void Form::SetCaption(std::string caption) {
  if (caption_ == caption) return;
  caption_ = std::move(caption);
  forms_.Changed(*this);
}

void Form::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  forms_.Changed(*this);
}

void Form::Changed(Control& control, Property property) {
  forms_.Changed(control, property);
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

}  // namespace quorvane
