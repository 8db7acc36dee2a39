#pragma once

#include <QHash>
#include <QMenuBar>

#include "forms/door.h"

namespace quorvane {

// The menu bar of a form: each of its menu controls as a menu, or as an entry of the menu it lies in.
class MenuView : public QMenuBar {
 public:
  MenuView(const Form& form, Door& door, QWidget* parent);

  void Apply();
  // Keys that choose the entry from anywhere in the window. Held down they choose it once.
  void SetShortcut(const Control& control, const QString& keys);
  QAction* Find(const Control& control) const { return entries_.value(&control); }

 private:
  void Add(const Control& control);

  Door& door_;
  QHash<const Control*, QAction*> entries_;
};

}  // namespace quorvane
