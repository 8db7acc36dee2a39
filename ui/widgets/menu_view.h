#pragma once

#include <QMenuBar>
#include <unordered_map>

#include "forms/door.h"

namespace quorvane {

// The menu bar of a form: each of its menu controls as a menu, or as an entry of the menu it lies in.
class MenuView : public QMenuBar {
 public:
  MenuView(Form& form, Door& door, QWidget* parent);

  bool IsEmpty() const { return entries_.empty(); }
  void Apply();
  QAction* Find(const Control& control) const;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Add(Control& control);
  void Click(const Control& control);

  Form& form_;
  Door& door_;
  std::unordered_map<const Control*, QAction*> entries_;
};

}  // namespace quorvane
