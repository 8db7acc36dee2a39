#include "ui/widgets/caption_button.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "ui/widgets/look.h"

namespace quorvane {

QString WithMnemonic(QString caption, char mnemonic) {
  caption.replace(QLatin1Char('&'), QLatin1String("&&"));
  const qsizetype at = mnemonic == 0 ? -1 : caption.indexOf(QLatin1Char(mnemonic), 0, Qt::CaseInsensitive);
  if (at >= 0) caption.insert(at, QLatin1Char('&'));
  return caption;
}

void CaptionButton::SetCaption(const QString& caption, char mnemonic) {
  setText(WithMnemonic(caption, mnemonic));
}

void CaptionButton::SetKey(const QString& key) {
  key_ = key;
  update();
}

void CaptionButton::SetMinimumPixels(int pixels) {
  minimumPixels_ = pixels;
  update();
}

void CaptionButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  DrawEdges(painter, rect(), 1, isEnabled() ? QColor(0x30, 0x30, 0x30) : QColor(0xB0, 0xB0, 0xB0));

  const QColor face = palette().color(QPalette::Button);
  painter.setPen(isEnabled() ? ReadableOn(face, palette().color(QPalette::ButtonText))
                             : palette().color(QPalette::ButtonText));
  QFont small = font();
  small.setBold(false);
  small.setPixelSize(std::max(minimumPixels_, font().pixelSize() * 2 / 3));
  const int keyWidth = key_.isEmpty() ? 0 : QFontMetrics(small).horizontalAdvance(QLatin1Char(' ') + key_);
  const int room = width() - 10 - keyWidth;
  QString bare = text();
  bare.remove(QLatin1Char('&'));
  const QFont fitted = FitFont(font(), bare, room, minimumPixels_);
  const int captionWidth = std::min(room, QFontMetrics(fitted).horizontalAdvance(bare));
  const int left = (width() - captionWidth - keyWidth) / 2;
  const int sink = isDown() ? 1 : 0;

  painter.setFont(fitted);
  const QRect captionRoom(left, sink, captionWidth + 2, height());
  painter.drawText(captionRoom, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextDontClip,
                   text());
  if (keyWidth == 0) return;
  painter.setFont(small);
  const QRect keyRoom(left + captionWidth, sink, keyWidth, height());
  painter.drawText(keyRoom, Qt::AlignRight | Qt::AlignVCenter, key_);
}

// Enter presses the button that has the focus, as the space bar does.
void CaptionButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
  QPushButton::keyPressEvent(event);
}

}  // namespace quorvane
