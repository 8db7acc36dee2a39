#include "forms/control.h"

#include "forms/forms.h"

namespace quorvane {
namespace {

constexpr unsigned Bit(Property property) {
  return 1U << static_cast<unsigned>(property);
}

constexpr unsigned kSeen = Bit(Property::Enabled) | Bit(Property::Visible) | Bit(Property::Tag);
constexpr unsigned kPainted = kSeen | Bit(Property::BackColor) | Bit(Property::ForeColor);

constexpr unsigned PropertiesOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::Button:
    case ControlKind::Label:
    case ControlKind::Frame:
      return kPainted | Bit(Property::Caption) | Bit(Property::Anchor);
    case ControlKind::TextBox:
      return kPainted | Bit(Property::Text);
    case ControlKind::CheckBox:
    case ControlKind::Option:
      return kPainted | Bit(Property::Caption) | Bit(Property::Value);
    case ControlKind::ComboBox:
      return kPainted | Bit(Property::Text) | Bit(Property::ListIndex) | Bit(Property::Items);
    case ControlKind::Menu:
      return kSeen | Bit(Property::Caption) | Bit(Property::Checked);
    case ControlKind::Timer:
      return Bit(Property::Enabled) | Bit(Property::Interval) | Bit(Property::Tag);
  }
  return 0;
}

// Texts and lists are written on the window's colours, everything else on the button face.
bool TakesText(ControlKind kind) {
  return kind == ControlKind::TextBox || kind == ControlKind::ComboBox;
}

}  // namespace

Control::Control(Form& form, ControlKind kind, std::string name, Control* parent)
    : form_(form),
      name_(std::move(name)),
      parent_(parent),
      kind_(kind),
      enabled_(kind != ControlKind::Timer),
      backColor_(TakesText(kind) ? kWindow : kButtonFace),
      foreColor_(TakesText(kind) ? kWindowText : kButtonText) {}

std::string Control::FullName() const {
  return form_.Name() + "." + name_;
}

bool Control::Has(Property property) const {
  return (PropertiesOf(kind_) & Bit(property)) != 0;
}

void Control::Changed(Property property) {
  form_.Owner().Changed(*this, property);
}

void Control::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) index = -1;
  if (listIndex_ == index) return;
  listIndex_ = index;
  text_ = index >= 0 ? items_[static_cast<std::size_t>(index)] : std::string();
  Changed(Property::ListIndex);
}

void Control::SetValue(int value) {
  if (value_ == value) return;
  value_ = value;
  Changed(Property::Value);
  if (kind_ == ControlKind::CheckBox && onClick) onClick();
}

bool Control::Reachable() const {
  if (!form_.Visible()) return false;
  for (const Control* c = this; c != nullptr; c = c->parent_) {
    if (!c->enabled_ || !c->visible_) return false;
  }
  return true;
}

}  // namespace quorvane
