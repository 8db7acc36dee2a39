#include "ui/widgets/frame_box.h"

#include <QPainter>

#include "ui/widgets/look.h"

namespace quorvane {

FrameBox::FrameBox(QWidget* parent, Look look)
    : QFrame(parent), look_(look), back_(ToQColor(kButtonFace)), fore_(Qt::black) {}

void FrameBox::SetCaption(const QString& caption) {
  caption_ = caption;
  update();
}

void FrameBox::SetColors(const QColor& back, const QColor& fore) {
  back_ = back;
  fore_ = ReadableOn(back, fore);
  update();
}

void FrameBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int line = Has(look_, Look::Heavy) ? 2 : 1;
  painter.fillRect(rect(), QColor(0x50, 0x50, 0x50));
  painter.fillRect(rect().adjusted(line, line, -line, -line), back_);
  if (caption_.isEmpty() || Has(look_, Look::Bare)) return;
  painter.setPen(fore_);
  const QRect room = rect().adjusted(6, line + 2, -6, -line);
  const QFont fitted = FitFont(font(), caption_, room.width(), font().pixelSize() / 2);
  painter.setFont(fitted);
  const int across = Has(look_, Look::Title) ? Qt::AlignHCenter : Qt::AlignLeft;
  painter.drawText(room, across | Qt::AlignTop, caption_);
}

}  // namespace quorvane
