#include "ui/widgets/focus_ring.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace quorvane {
namespace {
constexpr int kRingWidth = 3;
}

FocusRing::FocusRing(QWidget* window) : QWidget(window) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
  QObject::connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { Follow(now); });
}

void FocusRing::Follow(QWidget* widget) {
  if (around_ == widget) return;
  if (around_ != nullptr) around_->removeEventFilter(this);
  const bool ours = widget != nullptr && widget != parentWidget() && widget->window() == parentWidget() &&
                    (widget->focusPolicy() & Qt::TabFocus) != 0;
  around_ = ours ? widget : nullptr;
  if (around_ != nullptr) around_->installEventFilter(this);
  Surround();
}

void FocusRing::Surround() {
  if (around_ == nullptr || !around_->isVisible()) return hide();
  const QRect inner(around_->mapTo(parentWidget(), QPoint(0, 0)), around_->size());
  const QRect outer = inner.adjusted(-kRingWidth, -kRingWidth, kRingWidth, kRingWidth);
  setGeometry(outer);
  setMask(QRegion(rect()) - QRegion(rect().adjusted(kRingWidth, kRingWidth, -kRingWidth, -kRingWidth)));
  raise();
  show();
}

bool FocusRing::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
      Surround();
      break;
    default:
      break;
  }
  return false;
}

void FocusRing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(0x10, 0x4E, 0xB4));
}

}  // namespace quorvane
