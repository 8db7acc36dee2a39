#include "ui/caption_label.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "ui/look.h"

namespace quorvane {

CaptionLabel::CaptionLabel(QWidget* parent, Look look)
    : QLabel(parent), look_(look), back_(ToQColor(kButtonFace)), fore_(Qt::black) {
  setTextFormat(Qt::PlainText);
  if (Has(look_, Look::Focusable)) setFocusPolicy(Qt::TabFocus);
}

void CaptionLabel::SetColors(const QColor& back, const QColor& fore, bool painted) {
  back_ = back;
  fore_ = ReadableOn(back, fore);
  painted_ = painted;
  setAttribute(Qt::WA_OpaquePaintEvent, painted || Has(look_, Look::Border) || Has(look_, Look::Heavy));
  update();
}

void CaptionLabel::SetMinimumPixels(int pixels) {
  minimumPixels_ = pixels;
  update();
}

void CaptionLabel::SetOnClick(std::function<void()> onClick) {
  onClick_ = std::move(onClick);
  if (!onClick_) return;
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::PointingHandCursor);
}

int CaptionLabel::LineWidth() const {
  if (Has(look_, Look::Heavy) || (Has(look_, Look::Lamp) && painted_)) return 3;
  return Has(look_, Look::Border) ? 1 : 0;
}

void CaptionLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (testAttribute(Qt::WA_OpaquePaintEvent)) painter.fillRect(rect(), back_);
  const int line = LineWidth();
  DrawEdges(painter, rect(), line, isEnabled() ? QColor(0x30, 0x30, 0x30) : QColor(0x90, 0x90, 0x90));
  const int gap = line + (Has(look_, Look::Left) ? 2 : 1);
  PaintText(painter, rect().adjusted(gap, line, -gap, -line));
}

void CaptionLabel::PaintText(QPainter& painter, const QRect& room) {
  const QString caption = text();
  if (caption.isEmpty()) return;
  painter.setPen(fore_);
  QFont base = font();
  if (Has(look_, Look::Lamp)) base.setBold(painted_);
  const int across = Has(look_, Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter;
  if (Has(look_, Look::Top)) {
    painter.setFont(base);
    painter.drawText(room, across | Qt::AlignTop | Qt::TextWordWrap, caption);
    return;
  }
  const bool words = Has(look_, Look::Words);
  const QFont fitted = words ? base : FitFont(base, caption, room.width(), minimumPixels_);
  painter.setFont(fitted);
  painter.drawText(room, across | Qt::AlignVCenter, ElideAtWord(caption, fitted, room.width()));
}

void CaptionLabel::mousePressEvent(QMouseEvent* event) {
  pressed_ = onClick_ != nullptr && event->button() == Qt::LeftButton;
  event->setAccepted(pressed_);
}

void CaptionLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (!pressed_ || event->button() != Qt::LeftButton) return event->ignore();
  pressed_ = false;
  if (rect().contains(event->position().toPoint())) onClick_();
}

void CaptionLabel::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool click = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!onClick_ || !click) return event->ignore();
  onClick_();
}

}  // namespace quorvane
