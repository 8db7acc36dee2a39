#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/checked.h"
#include "forms/control.h"

namespace quorvane {

class Forms;

// A window as plain data: its controls and its event procedures. In the program's Forms while it lives.
class Form {
 public:
  Form(Forms& forms, std::string name);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  bool Visible() const { return visible_; }
  const std::deque<Control>& Controls() const { return controls_; }  // in the order in which they were added
  Control* Find(std::string_view name);                              // "lblLap(3)"; null when there is none

  void SetCaption(std::string caption) { Set(caption_, std::move(caption)); }
  void SetVisible(bool visible) { Set(visible_, visible); }

  // Event procedures of the form itself.
  virtual void KeyDown(const std::string& /*key*/) {}  // "F1".."F12", "7", "8", "9", "0"
  virtual void Activated() {}  // the operator came here from another form of the program
  virtual void CloseRequested() { SetVisible(false); }  // the window's own close command
  virtual void Resized() {}

  Forms& Owner() const { return forms_; }

 protected:
  Control& Add(ControlKind kind, std::string name, Control* parent = nullptr);
  Control& AddCaptioned(ControlKind kind, std::string name, std::string caption, Control* parent = nullptr);

 private:
  friend class ControlArray;
  template <typename T>
  void Set(T& field, T value) {
    if (field == value) return;
    field = std::move(value);
    Changed();
  }
  void Changed();

  Forms& forms_;
  const std::string name_;
  std::string caption_;
  bool visible_ = false;
  std::deque<Control> controls_;
  std::unordered_map<std::string, Control*> byName_;
};

// "lblLap(3)".
std::string IndexedName(const std::string& name, int index);

// Controls of one name and kind, "lblLap(0)".."lblLap(10)". An index outside is a SubscriptError.
class ControlArray {
 public:
  ControlArray(Form& form, ControlKind kind, const std::string& name, int lower, int upper,
               Control* parent = nullptr);

  int Upper() const { return lower_ + static_cast<int>(elements_.size()) - 1; }
  Control& operator[](std::int64_t index) const { return *Element(elements_, index - lower_); }

  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

 private:
  int lower_;
  std::vector<Control*> elements_;
};

}  // namespace quorvane
