#include "forms/control.h"

#include <array>
#include <utility>

#include "forms/form.h"

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
      return kPainted | Bit(Property::Text) | Bit(Property::Selection);
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
bool StandsOnWindow(ControlKind kind) {
  return kind == ControlKind::TextBox || kind == ControlKind::ComboBox;
}

}  // namespace

Control::Control(Form& form, ControlKind kind, std::string name, Control* parent)
    : form_(form),
      name_(std::move(name)),
      parent_(parent),
      kind_(kind),
      enabled_(kind != ControlKind::Timer),
      backColor_(StandsOnWindow(kind) ? kWindow : kButtonFace),
      foreColor_(StandsOnWindow(kind) ? kWindowText : kButtonText) {}

std::string Control::FullName() const {
  return form_.Name() + "." + name_;
}

bool Control::Has(Property property) const {
  return (PropertiesOf(kind_) & Bit(property)) != 0;
}

template <typename T>
void Control::Set(T& field, T value, Property property) {
  if (field == value) return;
  field = std::move(value);
  form_.Changed(*this, property);
}

void Control::SetCaption(std::string caption) {
  Set(caption_, std::move(caption), Property::Caption);
}
void Control::SetText(std::string text) {
  Set(text_, std::move(text), Property::Text);
}
void Control::SetEnabled(bool enabled) {
  Set(enabled_, enabled, Property::Enabled);
}
void Control::SetVisible(bool visible) {
  Set(visible_, visible, Property::Visible);
}
void Control::SetBackColor(Color color) {
  Set(backColor_, color, Property::BackColor);
}
void Control::SetForeColor(Color color) {
  Set(foreColor_, color, Property::ForeColor);
}
void Control::SetTag(std::string tag) {
  Set(tag_, std::move(tag), Property::Tag);
}
void Control::SetItems(std::vector<std::string> items) {
  Set(items_, std::move(items), Property::Items);
}
void Control::SetChecked(bool checked) {
  Set(value_, checked ? 1 : 0, Property::Checked);
}
void Control::SetInterval(std::int32_t ms) {
  Set(interval_, ms, Property::Interval);
}
void Control::SetAnchor(Control* anchor) {
  Set(anchor_, anchor, Property::Anchor);
}

void Control::SetToolTip(std::string toolTip) {
  Set(toolTip_, std::move(toolTip), Property::ToolTip);
}

void Control::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) index = -1;
  if (listIndex_ == index) return;
  listIndex_ = index;
  text_ = index >= 0 ? items_[static_cast<std::size_t>(index)] : std::string();
  form_.Changed(*this, Property::ListIndex);
}

void Control::SetSelection(int start, int length) {
  selectionStart_ = start;
  selectionLength_ = length;
  form_.Changed(*this, Property::Selection);
}

void Control::SetValue(int value) {
  if (value_ == value) return;
  value_ = value;
  form_.Changed(*this, Property::Value);
  if (kind_ == ControlKind::CheckBox && onClick) onClick();
}

bool Control::Reachable() const {
  if (!form_.Visible()) return false;
  for (const Control* c = this; c != nullptr; c = c->parent_) {
    if (!c->enabled_ || !c->visible_) return false;
  }
  return true;
}

std::string_view PropertyName(Property property) {
  static constexpr std::array<std::string_view, 15> kNames = {
      "caption", "text",      "value", "checked",  "enabled", "visible",   "backColor", "foreColor",
      "tag",     "listIndex", "items", "interval", "anchor",  "selection", "toolTip"};
  return kNames[static_cast<std::size_t>(property)];
}

}  // namespace quorvane
