#pragma once

#include <QMenuBar>
#include <unordered_map>

#include "forms/door.h"

namespace quorvane {

// The menu bar of a form: each of its menu controls as a menu, or as an entry of the menu it lies in.
class MenuView : public QMenuBar {
 public:
  MenuView(const Form& form, Door& door, QWidget* parent);

  bool IsEmpty() const { return entries_.empty(); }
  void Apply();
  QAction* Find(const Control& control) const;

 private:
  void Add(const Control& control);

  Door& door_;
  std::unordered_map<const Control*, QAction*> entries_;
};

}  // namespace quorvane
