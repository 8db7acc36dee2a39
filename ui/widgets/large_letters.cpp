#include "ui/widgets/large_letters.h"

#include <QFontMetricsF>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int kLargestKeptByQt = 64;  // pixels
constexpr int kEdge = 4;              // what a letter may paint beside its own width

bool IsFigure(QChar c) {
  return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.') || c == QLatin1Char(':');
}

}  // namespace

bool LargeLetters::Paint(QPainter& painter, const QRect& room, const QString& text) {
  const double scale = painter.device()->devicePixelRatioF();
  const QFont& font = painter.font();
  if (font.pixelSize() * scale < kLargestKeptByQt || font.underline() || text.isEmpty()) return false;
  if (!std::all_of(text.begin(), text.end(), IsFigure)) return false;
  if (font != font_ || painter.pen().color() != color_ || scale != scale_) {
    kept_.clear();
    font_ = font;
    color_ = painter.pen().color();
    scale_ = scale;
  }
  const QFontMetricsF metrics(font_);
  double left = room.left() + (room.width() - metrics.horizontalAdvance(text)) / 2;
  const double top = room.top() + (room.height() - metrics.height()) / 2;
  for (const QChar letter : text) {
    painter.drawPixmap(QPoint(qRound(left) - kEdge, qRound(top)), Letter(letter, scale));
    left += metrics.horizontalAdvance(letter);
  }
  return true;
}

const QPixmap& LargeLetters::Letter(QChar letter, double scale) {
  QPixmap& picture = kept_[letter];
  if (!picture.isNull()) return picture;
  const QFontMetricsF metrics(font_);
  const QSizeF size(metrics.horizontalAdvance(letter) + 2 * kEdge, metrics.height());
  picture = QPixmap((size * scale).toSize() + QSize(1, 1));
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setFont(font_);
  painter.setPen(color_);
  painter.drawText(QPointF(kEdge, metrics.ascent()), QString(letter));
  return picture;
}

}  // namespace quorvane
