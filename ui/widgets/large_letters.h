#pragma once

#include <QColor>
#include <QFont>
#include <QHash>
#include <QPainter>
#include <QPixmap>
#include <QString>

namespace quorvane {

// Paints the figures of a large clock. Qt keeps pictures of letters up to 64 pixels only; filling the
// outlines of larger ones anew is most of what a clock that runs would cost. These are kept too.
class LargeLetters {
 public:
  // In the middle of the room. False: not painted, as it has other letters or Qt keeps them itself.
  bool Paint(QPainter& painter, const QRect& room, const QString& text);

 private:
  const QPixmap& Letter(QChar letter, double scale);

  QFont font_;
  QColor color_;
  double scale_ = 1;
  QHash<QChar, QPixmap> kept_;
};

}  // namespace quorvane
