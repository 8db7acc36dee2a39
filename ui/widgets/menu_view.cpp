#include "ui/widgets/menu_view.h"

#include <QAction>
#include <QMenu>

#include "ui/widgets/control_view.h"
#include "ui/words.h"

namespace quorvane {

MenuView::MenuView(const Form& form, Door& door, QWidget* parent) : QMenuBar(parent), door_(door) {
  setNativeMenuBar(false);
  for (const Control& control : form.Controls()) {
    if (control.Kind() == ControlKind::Menu) Add(control);
  }
  Apply();
}

void MenuView::Add(const Control& control) {
  QAction* parent = control.Parent() == nullptr ? nullptr : Find(*control.Parent());
  if (parent != nullptr && parent->menu() == nullptr) {
    parent->setMenu(new QMenu(this));
    parent->menu()->setToolTipsVisible(true);
    parent->menu()->setAttribute(Qt::WA_WindowPropagation);  // the letters are as large as the bar's
  }
  auto* entry = new QAction(this);
  entry->setObjectName(QString::fromStdString(control.FullName()));
  entry->setMenuRole(QAction::NoRole);
  QObject::connect(entry, &QAction::triggered, this, [this, &control] {
    FinishTyping();
    door_.Enter({.kind = EventKind::Click, .target = control.FullName()});
    Apply();
  });
  (parent == nullptr ? static_cast<QWidget*>(this) : parent->menu())->addAction(entry);
  entries_.insert(&control, entry);
}

void MenuView::SetShortcut(const Control& control, const QString& keys) {
  QAction* entry = Find(control);
  entry->setShortcut(QKeySequence(keys));
  entry->setAutoRepeat(false);
}

void MenuView::Apply() {
  for (const auto [control, entry] : entries_.asKeyValueRange()) {
    const bool line = control->Caption() == "-";
    entry->setText(line ? QString() : Words::Of(control->Caption()));
    entry->setToolTip(Words::Of(control->ToolTip()));
    entry->setEnabled(control->Enabled());
    entry->setVisible(control->Visible());
    entry->setSeparator(line);
    entry->setCheckable(control->Checked());
    entry->setChecked(control->Checked());
  }
}

}  // namespace quorvane
