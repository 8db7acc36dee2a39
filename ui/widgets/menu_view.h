#pragma once

#include <QHash>
#include <QMenuBar>
#include <map>
#include <string>
#include <vector>

#include "forms/door.h"

namespace quorvane {

// The menu bar of a form: each of its menu controls as a menu, or as an entry of the menu it lies in. An
// entry with items, which are files, opens a menu of them.
class MenuView : public QMenuBar {
 public:
  // `tips`: what an entry is for, by its name.
  MenuView(const Form& form, Door& door, QWidget* parent, std::map<std::string, std::string> tips = {});

  void Apply();
  // Keys that choose the entry from anywhere in the window. Held down they choose it once.
  void SetShortcut(const Control& control, const QString& keys);
  QAction* Find(const Control* control) const { return entries_.value(control); }

 private:
  void Add(const Control& control);
  void ShowItems(const Control& control, QAction& entry);

  Door& door_;
  const std::map<std::string, std::string> tips_;
  QHash<const Control*, QAction*> entries_;
  std::map<const Control*, std::vector<std::string>> items_;  // as shown, of those that take a choice
};

}  // namespace quorvane
