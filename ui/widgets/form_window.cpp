#include "ui/widgets/form_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QStatusTipEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {

FormWindow::FormWindow(Form& form, FormDesign design, Door& door, QSize minimum, QWidget* owner)
    : QWidget(owner, Qt::Window),
      door_(door),
      view_(new FormView(form, std::move(design), door, this)),
      menu_(new MenuView(form, door, this, view_->Design().tips)),
      statusTip_(new QLabel(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
  layout->setMenuBar(menu_);
  for (const auto& [entry, keys] : view_->Design().shortcuts) {
    menu_->SetShortcut(*form.Find(entry), QString::fromStdString(keys));
  }
  menu_->setHidden(menu_->actions().isEmpty());
  statusTip_->setAutoFillBackground(true);
  statusTip_->setFrameStyle(QFrame::Box | QFrame::Plain);
  statusTip_->setTextFormat(Qt::PlainText);
  statusTip_->setContentsMargins(8, 2, 8, 2);
  statusTip_->hide();
  place_ = new WindowPlace(*this, door.System().Settings(), form.Name(), minimum);
  RingFocus(*this);
}

void FormWindow::Follow() {
  setWindowTitle(Words::Of(Of().Caption()));
  if (std::exchange(menuChanged_, false)) menu_->Apply();
  if (Of().Visible() == isVisible()) return;
  if (!Of().Visible()) return hide();
  if (!remembered_) {  // in its designed size where the screen allows it
    const int menuHeight = menu_->isHidden() ? 0 : menu_->sizeHint().height();
    remembered_ = place_->Restore({view_->DesignWidth(), view_->Design().height + menuHeight});
  }
  view_->FocusFirst();
  show();
  Activate();
}

void FormWindow::SetDesignWidth(int width) {
  const double scale = static_cast<double>(view_->height()) / std::max(1, view_->Design().height);
  view_->SetDesignWidth(width);
  if (!remembered_) return;
  resize(static_cast<int>(width * scale), height());
  place_->KeepOnScreen();
}

// The menu bar grows with the window, but stays legible in a small one.
void FormWindow::resizeEvent(QResizeEvent*) {
  const FormDesign& design = view_->Design();
  const int pixels =
      std::clamp(16 * std::min(width() * 100 / design.width, height() * 100 / design.height) / 100, 15, 28);
  menu_->setFont(FontOfPixels(pixels, false));
}

bool FormWindow::event(QEvent* event) {
  if (event->type() != QEvent::StatusTip) return QWidget::event(event);
  const QString tip = static_cast<QStatusTipEvent*>(event)->tip();
  statusTip_->setFont(menu_->font());
  statusTip_->setText(tip);
  const int high = statusTip_->sizeHint().height();
  statusTip_->setGeometry(0, height() - high, width(), high);
  statusTip_->raise();
  statusTip_->setVisible(!tip.isEmpty());
  return true;
}

// A click on an empty place ends the typing: digits judge again. A field passes its other presses on.
void FormWindow::mousePressEvent(QMouseEvent* event) {
  QWidget* field = QApplication::focusWidget();
  if (!IsTextField(field)) return;
  const QPoint at = field->mapFromGlobal(event->globalPosition().toPoint());
  if (!field->rect().contains(at)) view_->FocusHome();
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  door_.Enter({.kind = EventKind::Close, .target = Of().Name()});
}

}  // namespace quorvane
