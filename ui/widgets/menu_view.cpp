#include "ui/widgets/menu_view.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <utility>

#include "ui/widgets/control_view.h"
#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {

MenuView::MenuView(const Form& form, Door& door, QWidget* parent, std::map<std::string, std::string> tips)
    : QMenuBar(parent), door_(door), tips_(std::move(tips)) {
  setNativeMenuBar(false);
  for (const Control& control : form.Controls()) {
    if (control.Kind() == ControlKind::Menu) Add(control);
  }
  Apply();
}

void MenuView::Add(const Control& control) {
  QAction* parent = Find(control.Parent());
  if (parent != nullptr && parent->menu() == nullptr) {
    parent->setMenu(new QMenu(this));
    parent->menu()->setToolTipsVisible(true);
    QObject::connect(parent->menu(), &QMenu::aboutToShow, this, [this, shown = control.Parent()] {
      if (!shown->onClick) return;
      door_.Enter({.kind = EventKind::Click, .target = shown->FullName()});
      Apply();
    });
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
  if (!control.onChange) return;
  entry->setMenu(new QMenu(this));
  entry->menu()->setToolTipsVisible(true);
  entry->menu()->setAttribute(Qt::WA_WindowPropagation);
  items_[&control] = {};
}

// The name is what differs; the folder is told where the pointer rests.
void MenuView::ShowItems(const Control& control, QAction& entry) {
  std::vector<std::string>& shown = items_[&control];
  if (shown == control.Items()) return;
  shown = control.Items();
  for (QAction* old : entry.menu()->actions()) {
    entry.menu()->removeAction(old);
    old->deleteLater();  // it may be the one that was chosen just now
  }
  for (const std::string& item : shown) {
    const QFileInfo file(ToQString(item));
    QString name = file.fileName() + QStringLiteral("   ") + file.path();
    auto* action = entry.menu()->addAction(name.replace(QLatin1Char('&'), QLatin1String("&&")));
    action->setToolTip(file.filePath());
    action->setStatusTip(file.filePath());
    QObject::connect(action, &QAction::triggered, this, [this, &control, item] {
      FinishTyping();
      door_.Enter({.kind = EventKind::Type, .target = control.FullName(), .text = item});
      Apply();
    });
  }
}

void MenuView::SetShortcut(const Control& control, const QString& keys) {
  QAction* entry = Find(&control);
  entry->setShortcut(QKeySequence(keys));
  entry->setAutoRepeat(false);
}

void MenuView::Apply() {
  for (const auto [control, entry] : entries_.asKeyValueRange()) {
    const bool line = control->Caption() == "-";
    entry->setText(line ? QString() : Words::Of(control->Caption()));
    const auto tip = tips_.find(control->Name());
    const bool plain = control->ToolTip().empty() && tip != tips_.end();
    const bool none = control->onChange && control->Items().empty();
    QString told = Words::Of(plain ? tip->second : control->ToolTip());
    if (none && control->Enabled()) told = Words::Of("No other project was opened before");
    entry->setToolTip(told);
    entry->setStatusTip(told);
    if (control->onChange) ShowItems(*control, *entry);
    entry->setEnabled(control->Enabled() && !none);
    entry->setVisible(control->Visible());
    entry->setSeparator(line);
    entry->setCheckable(control->Checked());
    entry->setChecked(control->Checked());
  }
}

}  // namespace quorvane
