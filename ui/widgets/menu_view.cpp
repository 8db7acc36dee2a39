#include "ui/widgets/menu_view.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <algorithm>

#include "ui/widgets/control_view.h"
#include "ui/widgets/look.h"

namespace quorvane {

MenuView::MenuView(Form& form, Door& door, QWidget* parent) : QMenuBar(parent), form_(form), door_(door) {
  setNativeMenuBar(false);
  for (const Control& control : form_.Controls()) {
    if (control.Kind() == ControlKind::Menu) Add(*form_.Find(control.Name()));
  }
  Apply();
}

QAction* MenuView::Find(const Control& control) const {
  const auto found = entries_.find(&control);
  return found == entries_.end() ? nullptr : found->second;
}

void MenuView::Add(Control& control) {
  QAction* parent = control.Parent() == nullptr ? nullptr : Find(*control.Parent());
  if (parent != nullptr && parent->menu() == nullptr) {
    parent->setMenu(new QMenu(this));
    parent->menu()->setToolTipsVisible(true);
  }
  auto* entry = new QAction(this);
  entry->setObjectName(QString::fromStdString(control.FullName()));
  entry->setMenuRole(QAction::NoRole);
  QObject::connect(entry, &QAction::triggered, this, [this, &control] { Click(control); });
  if (parent != nullptr) {
    parent->menu()->addAction(entry);
  } else {
    addAction(entry);
  }
  entries_.emplace(&control, entry);
}

void MenuView::changeEvent(QEvent* event) {
  QMenuBar::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  for (const auto& [control, entry] : entries_) {
    if (entry->menu() != nullptr) entry->menu()->setFont(font());
  }
}

void MenuView::Click(const Control& control) {
  FinishTyping();
  door_.Enter({.kind = EventKind::Click, .target = control.FullName()});
  Apply();
}

void MenuView::Apply() {
  for (const auto& [control, entry] : entries_) {
    entry->setText(ToQString(control->Caption()));
    entry->setToolTip(ToQString(control->ToolTip()));
    entry->setEnabled(control->Enabled());
    entry->setVisible(control->Visible());
    entry->setSeparator(control->Caption() == "-");
    entry->setCheckable(control->Checked());
    entry->setChecked(control->Checked());
  }
}

}  // namespace quorvane
