#include "forms/control.h"

#include <array>

#include "forms/forms.h"

namespace quorvane {
namespace {

template <typename... Properties>
constexpr unsigned Bits(Properties... properties) {
  return ((1U << static_cast<unsigned>(properties)) | ...);
}

unsigned PropertiesOf(ControlKind kind) {
  using enum Property;
  constexpr unsigned kSeen = Bits(Enabled, Visible, Tag);
  constexpr unsigned kPainted = kSeen | Bits(BackColor, ForeColor);
  constexpr std::array kKinds = {kPainted | Bits(Caption),                  // button
                                 kPainted | Bits(Caption),                  // label
                                 kPainted | Bits(Text),                     // text box
                                 kPainted | Bits(Caption, Value),           // check box
                                 kPainted | Bits(Text, ListIndex, Items),   // list
                                 kPainted | Bits(Caption),                  // frame
                                 kPainted | Bits(Caption, Value),           // option
                                 kSeen | Bits(Caption, Checked),            // menu
                                 Bits(Enabled, Tag),                        // timer
                                 kPainted | Bits(Text, ListIndex, Items)};  // table
  return kKinds[static_cast<std::size_t>(kind)];
}

// Texts and lists are written on the window's colours, everything else on the button face.
bool TakesText(ControlKind kind) {
  return kind == ControlKind::TextBox || kind == ControlKind::ComboBox || kind == ControlKind::List;
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
  return (PropertiesOf(kind_) & Bits(property)) != 0;
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
