#include "ui/widgets/caption_label.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/widgets/look.h"

namespace quorvane {

int LeastPixels(const QFont& font, const Place& place) {
  return static_cast<int>(font.pixelSize() * std::min(1.0, 10 / place.points));
}

CaptionLabel::CaptionLabel(const Place& place, bool isFrame, QWidget* parent)
    : QFrame(parent), place_(place), isFrame_(isFrame) {
  if (Looks(Look::Focusable)) setFocusPolicy(Qt::TabFocus);
}

void CaptionLabel::SetText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  update();
}

void CaptionLabel::SetColors(const QColor& back, const QColor& fore, bool painted, bool underlined) {
  back_ = back;
  fore_ = fore;
  painted_ = painted;
  underlined_ = underlined;
  update();
  const bool edged = Looks(Look::Border | Look::Heavy);
  filled_ = painted || edged;
  // What lies under it need not be painted. Not what moves, or has others moving in it: see paintEvent.
  const bool stays = !isFrame_ && place_.anchoring == Anchoring::None;
  setAttribute(Qt::WA_OpaquePaintEvent, filled_ && stays);
  setFrameStyle(edged ? QFrame::Box | QFrame::Plain : QFrame::NoFrame);
  const int line = Looks(Look::Words) ? 1 : Colors().line;  // in a mark every pixel is its letters'
  setLineWidth(Looks(Look::Heavy) || (Looks(Look::Lamp) && painted) ? 3 : line);
}

void CaptionLabel::SetOnClick(std::function<void()> onClick) {
  onClick_ = std::move(onClick);
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::PointingHandCursor);
}

void CaptionLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // Qt would fill a frame, when a mark has moved in it, over the words that lie on it.
  if (filled_) painter.fillRect(rect(), back_);
  drawFrame(&painter);
  const bool left = Looks(Look::Left);
  const int margin = isFrame_ ? 4 : 0;
  const int gap = margin + (left ? 2 : 1);
  const QRect room = contentsRect().adjusted(gap, margin / 2, -gap, 0);
  const int least = LeastPixels(font(), place_);
  int flags = left ? Qt::AlignLeft : Qt::AlignHCenter;
  QFont fitted = font();
  QString shown = text_;
  if (Looks(Look::Top)) {
    const bool columns = Looks(Look::Fixed);
    // Under a frame's title lie its controls.
    flags |= Qt::AlignTop | (columns || isFrame_ ? 0 : Qt::TextWordWrap);
    fitted = FitParagraph(fitted, shown, room.size(), flags, columns ? 1 : least);
  } else if (Looks(Look::Words)) {
    flags |= Qt::AlignVCenter | Qt::TextDontClip;
    shown = MarkLines(room.width(), room.height());
  } else {
    flags |= Qt::AlignVCenter;
    if (Looks(Look::Lamp)) fitted.setBold(painted_);
    if (Looks(Look::Fixed)) return PaintColumns(painter, room);
    if (WidthIn(fitted) > room.width()) {
      fitted = FitFont(fitted, shown, room.width(), least);
      shown = ElideAtWord(shown, fitted, room.width());
    }
  }
  fitted.setUnderline(underlined_);
  painter.setFont(fitted);
  painter.setPen(fore_);
  const qsizetype second = Looks(Look::Words) ? shown.indexOf(QLatin1Char('\n')) : -1;
  if (second < 0) {
    const bool centred = flags == int{Qt::AlignCenter};
    if (!centred || !large_.Paint(painter, room, shown)) painter.drawText(room, flags, shown);
    return;
  }
  // Closer together than lines of a text: nothing in a mark goes below its line.
  const int half = room.height() / 2;
  painter.drawText(room.adjusted(0, 0, 0, half - room.height()), flags, shown.left(second));
  painter.drawText(room.adjusted(0, half, 0, 0), flags, shown.mid(second + 1));
}

// Each letter in a place of its own, as wide as the label's share of its design: a form may grow in width and
// height by different factors, and a font's own advances are rounded to the dots of the screen.
void CaptionLabel::PaintColumns(QPainter& painter, const QRect& room) const {
  constexpr double kPitch = 0.615 * 96 / 72;  // of the designed points
  const double pitch = kPitch * place_.points * width() / place_.rect.width();
  painter.setFont(FitColumns(font(), room.height(), pitch));
  painter.setPen(fore_);
  QRectF cell(room.left(), room.top(), pitch, room.height());
  for (const QChar letter : text_) {
    painter.drawText(cell, Qt::AlignCenter | Qt::TextDontClip, letter);
    cell.translate(pitch, 0);
  }
}

int CaptionLabel::WidthIn(const QFont& font) {
  const QString zeros = WithZeros(text_);
  if (measured_.text != zeros || measured_.font != font) {
    measured_ = {zeros, font, QFontMetrics(font).horizontalAdvance(zeros)};
  }
  return measured_.width;
}

void CaptionLabel::mousePressEvent(QMouseEvent* event) {
  pressed_ = onClick_ != nullptr && event->button() == Qt::LeftButton;
  event->setAccepted(pressed_);
}

void CaptionLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return event->ignore();
  if (rect().contains(event->position().toPoint())) onClick_();
}

void CaptionLabel::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool click = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!onClick_ || !click) return event->ignore();
  onClick_();
}

// What does not fit one line goes under it where there is room for two.
QString CaptionLabel::MarkLines(int width, int height) const {
  QString first = ElideAtWord(text_, font(), width);
  if (first == text_ || height < 2 * QFontMetrics(font()).capHeight() + 1) return first;
  return first + QLatin1Char('\n') + ElideAtWord(text_.mid(first.size()).trimmed(), font(), width);
}

}  // namespace quorvane
