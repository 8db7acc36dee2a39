#pragma once

#include <QColor>
#include <QFrame>
#include <functional>

#include "ui/widgets/form_design.h"
#include "ui/widgets/large_letters.h"

namespace quorvane {

// The size of ten points as designed, below which a caption is cut rather than made smaller.
int LeastPixels(const QFont& font, const Place& place);

// A label or a frame. It paints its caption as large as designed, or as much smaller as it takes to fit. One
// that can be clicked can also be reached with Tab and clicked with the space bar. No QLabel, which works out
// a size for every text, and keeps a whole document for one that can have the focus.
class CaptionLabel : public QFrame {
 public:
  CaptionLabel(const Place& place, bool isFrame, QWidget* parent);

  const QString& Text() const { return text_; }
  void SetText(const QString& text);
  // Painted: the background is not the plain one.
  void SetColors(const QColor& back, const QColor& fore, bool painted, bool underlined);

  bool IsFrame() const { return isFrame_; }
  bool IsClickable() const { return onClick_ != nullptr; }
  void Click() const { onClick_(); }
  void SetOnClick(std::function<void()> onClick);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool Looks(LookFlags look) const { return place_.look.testAnyFlags(look); }
  void PaintColumns(QPainter& painter, const QRect& room) const;
  QString MarkLines(int width, int height) const;
  int WidthIn(const QFont& font);

  const Place& place_;
  const bool isFrame_;
  QString text_;
  // Not a palette, which goes to all that lies in a frame as well.
  QColor back_;
  QColor fore_;
  bool painted_ = false;
  bool filled_ = false;
  bool underlined_ = false;
  bool pressed_ = false;
  std::function<void()> onClick_;
  LargeLetters large_;
  struct Measured {
    QString text = {};
    QFont font = {};
    int width = 0;
  };
  Measured measured_;
};

}  // namespace quorvane
