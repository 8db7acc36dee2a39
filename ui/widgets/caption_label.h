#pragma once

#include <QLabel>
#include <functional>

#include "ui/widgets/form_design.h"

namespace quorvane {

// A label that paints its caption in its own two colours, as large as designed or as much smaller as it takes
// to fit. One that can be clicked can also be reached with Tab and clicked with the space bar.
class CaptionLabel : public QLabel {
 public:
  CaptionLabel(QWidget* parent, Look look);

  void SetColors(const QColor& back, const QColor& fore, bool painted);
  void SetMinimumPixels(int pixels);  // below which the caption is cut rather than made smaller
  void SetOnClick(std::function<void()> onClick);
  // The letters are as large as this text allows in that width: that of the widest label in a row.
  void SetRow(const QString& widest, int width);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int LineWidth() const;
  bool IsFilled() const;
  void PaintText(QPainter& painter, const QRect& room);
  void PaintLines(QPainter& painter, const QRect& room);
  void PaintMark(QPainter& painter, const QRect& room);

  const Look look_;
  QColor back_;
  QColor fore_;
  bool painted_ = false;
  bool pressed_ = false;
  int minimumPixels_ = 1;
  QString rowText_;
  int rowWidth_ = 0;
  std::function<void()> onClick_;
};

}  // namespace quorvane
