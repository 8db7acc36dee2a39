#pragma once

#include <QLabel>
#include <QPushButton>
#include <functional>

#include "ui/widgets/form_design.h"

namespace quorvane {

// A label or a frame. It paints its caption as large as designed, or as much smaller as it takes to fit. One
// that can be clicked can also be reached with Tab and clicked with the space bar.
class CaptionLabel : public QLabel {
 public:
  CaptionLabel(const Place& place, QWidget* parent);

  // Painted: the background is not the plain one.
  void SetColors(const QColor& back, const QColor& fore, bool painted);
  void SetOnClick(std::function<void()> onClick);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString MarkLines(int width, int height) const;

  const Look look_;
  const double leastShare_;  // of its font, below which the caption is cut rather than made smaller
  bool painted_ = false;
  bool pressed_ = false;
  std::function<void()> onClick_;
};

// A push button whose caption shrinks to fit, with the console key that does the same beside it in small
// letters.
class CaptionButton : public QPushButton {
 public:
  CaptionButton(const Place& place, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString key_;
  const double leastShare_;
};

// The caption with the ampersand that Qt wants before the mnemonic letter, and ampersands of its own doubled.
QString WithMnemonic(QString caption, char mnemonic);

}  // namespace quorvane
