#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/color.h"

namespace quorvane {

class Form;

enum class ControlKind : std::uint8_t {
  Button,
  Label,
  TextBox,
  CheckBox,
  ComboBox,
  Frame,
  Option,
  Menu,
  Timer,
  List,  // each item's columns are parted by tabs
};

enum class Property : std::uint8_t {
  Caption,
  Text,
  Value,
  Checked,
  Enabled,
  Visible,
  BackColor,
  ForeColor,
  Tag,
  ListIndex,
  Items,
  Interval,
  Anchor,
  ToolTip,
};

// One control of a form as plain data, for the operator to see and event procedures to read. The window shows
// it and decides nothing. Every change is told to the one observer (see Forms). Lives as long as its form.
class Control {
 public:
  Control(Form& form, ControlKind kind, std::string name, Control* parent);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }  // "cmdStart", "lblLap(3)"
  std::string FullName() const;                      // "frmLane1.lblLap(3)"
  ControlKind Kind() const { return kind_; }
  Form& Owner() const { return form_; }
  Control* Parent() const { return parent_; }  // the frame it lies in, or null
  bool Has(Property property) const;           // whether its kind has what is shown or told by it

  const std::string& Caption() const { return caption_; }
  const std::string& Text() const { return text_; }  // of a menu of items: the one that is chosen
  int Value() const { return value_; }               // check box, option button: 0 or 1
  bool Checked() const { return value_ != 0; }       // menu entry
  bool Enabled() const { return enabled_; }
  bool Visible() const { return visible_; }  // its own flag; see Reachable for the frames around it
  Color BackColor() const { return backColor_; }
  Color ForeColor() const { return foreColor_; }
  const std::string& Tag() const { return tag_; }
  int ListIndex() const { return listIndex_; }                      // -1: none
  const std::vector<std::string>& Items() const { return items_; }  // a menu may have some as well
  std::int32_t Interval() const { return interval_; }               // timer, ms; 0 never fires
  // The control that this one is placed by: a cut mark's lap cell, the label that a pop-up button covers.
  Control* Anchor() const { return anchor_; }
  // What the pointer is told that rests on the control, such as why it is disabled now.
  const std::string& ToolTip() const { return toolTip_; }

  void SetCaption(std::string caption) { Set(caption_, std::move(caption), Property::Caption); }
  // Does not raise onChange.
  void SetText(std::string text) { Set(text_, std::move(text), Property::Text); }
  void SetEnabled(bool enabled) { Set(enabled_, enabled, Property::Enabled); }
  void SetVisible(bool visible) { Set(visible_, visible, Property::Visible); }
  void SetBackColor(Color color) { Set(backColor_, color, Property::BackColor); }
  void SetForeColor(Color color) { Set(foreColor_, color, Property::ForeColor); }
  void SetTag(std::string tag) { Set(tag_, std::move(tag), Property::Tag); }
  void SetListIndex(int index);  // does not raise onChange
  void SetItems(std::vector<std::string> items) { Set(items_, std::move(items), Property::Items); }
  void SetChecked(bool checked) { Set(value_, checked ? 1 : 0, Property::Checked); }
  void SetInterval(std::int32_t ms) { Set(interval_, ms, Property::Interval); }
  void SetAnchor(Control* anchor) { Set(anchor_, anchor, Property::Anchor); }
  void SetToolTip(std::string toolTip) { Set(toolTip_, std::move(toolTip), Property::ToolTip); }
  // A check box whose value really changes raises onClick, whoever changes it. An option button does not.
  void SetValue(int value);
  // Enabled where the reason against it is empty, otherwise told by the tool tip.
  void Lock(const std::string& why) {
    SetEnabled(why.empty());
    SetToolTip(why);
  }

  // Whether the operator can act on it: enabled and visible, and so is every frame around it and its form.
  bool Reachable() const;

  // Event procedures; empty ones do nothing.
  std::function<void()> onClick;
  std::function<void()> onChange;
  std::function<void()> onHover;
  std::function<void()> onTimer;

 private:
  template <typename T>
  void Set(T& field, T value, Property property) {
    if (field == value) return;
    field = std::move(value);
    Changed(property);
  }
  void Changed(Property property);

  Form& form_;
  const std::string name_;
  Control* const parent_;
  const ControlKind kind_;
  bool enabled_ = true;
  bool visible_ = true;
  int value_ = 0;
  int listIndex_ = -1;
  std::int32_t interval_ = 0;
  Color backColor_;
  Color foreColor_;
  Control* anchor_ = nullptr;
  std::string caption_;
  std::string text_;
  std::string tag_;
  std::string toolTip_;
  std::vector<std::string> items_;
};

// Told of every change of a control or form, at once and in order.
class ControlObserver {
 public:
  virtual ~ControlObserver() = default;
  virtual void ControlChanged(const Control& control, Property property) = 0;
  virtual void FormChanged(const Form& form) = 0;  // caption or visibility
};

}  // namespace quorvane
