#include "ui/widgets/caption_label.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "ui/widgets/look.h"

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

void CaptionLabel::SetRow(const QString& widest, int width) {
  if (widest == rowText_ && width == rowWidth_) return;
  rowText_ = widest;
  rowWidth_ = width;
  update();
}

int CaptionLabel::LineWidth() const {
  if (Has(look_, Look::Heavy) || (Has(look_, Look::Lamp) && painted_)) return 3;
  return Has(look_, Look::Border) ? 1 : 0;
}

bool CaptionLabel::IsFilled() const {
  return painted_ || Has(look_, Look::Border) || Has(look_, Look::Heavy);
}

void CaptionLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (IsFilled()) painter.fillRect(rect(), back_);
  const int line = LineWidth();
  DrawEdges(painter, rect(), line, QColor(0x30, 0x30, 0x30));
  const int gap = line + (Has(look_, Look::Left) ? 2 : 1);
  if (text().isEmpty()) return;
  painter.setPen(fore_);
  const QRect room = rect().adjusted(gap, line, -gap, -line);
  if (Has(look_, Look::Top)) return PaintLines(painter, room);
  if (Has(look_, Look::Words)) return PaintMark(painter, room);
  PaintText(painter, room);
}

void CaptionLabel::PaintText(QPainter& painter, const QRect& room) {
  QFont fitted = font();
  if (Has(look_, Look::Lamp)) fitted.setBold(painted_);
  if (Has(look_, Look::Fixed)) {
    fitted = FitColumns(fitted, room.height());
  } else if (rowText_.isEmpty()) {
    fitted = FitFont(fitted, text(), room.width(), minimumPixels_);
  } else {
    fitted = FitFont(fitted, rowText_, rowWidth_ - width() + room.width(), minimumPixels_);
  }
  painter.setFont(fitted);
  const int across = Has(look_, Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter;
  painter.drawText(room, across | Qt::AlignVCenter, ElideAtWord(text(), fitted, room.width()));
}

void CaptionLabel::PaintLines(QPainter& painter, const QRect& room) {
  const int across = Has(look_, Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter;
  if (!Has(look_, Look::Fixed)) {
    painter.setFont(FitParagraph(font(), text(), room.size(), minimumPixels_));
    painter.drawText(room, across | Qt::AlignTop | Qt::TextWordWrap, text());
    return;
  }
  const LineFit fit = FitLines(font(), text(), room.size(), minimumPixels_);
  painter.setFont(fit.font);
  double top = room.top();
  for (const QString& line : text().split(QLatin1Char('\n'))) {
    painter.drawText(QRectF(room.left(), top, room.width(), fit.pitch),
                     across | Qt::AlignVCenter | Qt::TextDontClip, line);
    top += fit.pitch;
  }
}

// What does not fit one line goes under it where there is room for two.
void CaptionLabel::PaintMark(QPainter& painter, const QRect& room) {
  const QFontMetrics metrics(font());
  const QString first = ElideAtWord(text(), font(), room.width());
  painter.setFont(font());
  if (first == text() || room.height() < 2 * metrics.ascent()) {
    painter.drawText(room, Qt::AlignCenter, first);
    return;
  }
  const QString second = ElideAtWord(text().mid(first.size()).trimmed(), font(), room.width());
  const QRect upper(room.left(), room.top(), room.width(), room.height() / 2);
  painter.drawText(upper, Qt::AlignCenter | Qt::TextDontClip, first);
  painter.drawText(upper.translated(0, upper.height()), Qt::AlignCenter | Qt::TextDontClip, second);
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
