#pragma once

#include <QPushButton>

namespace quorvane {

// A push button whose caption shrinks to fit, with the console key that does the same beside it in small
// letters.
class CaptionButton : public QPushButton {
 public:
  explicit CaptionButton(QWidget* parent) : QPushButton(parent) {}

  // The caption as the race logic writes it; an ampersand is shown as it is.
  void SetCaption(const QString& caption, char mnemonic);
  void SetKey(const QString& key);
  void SetMinimumPixels(int pixels);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString key_;
  int minimumPixels_ = 1;
};

// The caption with the ampersand that Qt wants before the mnemonic letter, and ampersands of its own doubled.
QString WithMnemonic(QString caption, char mnemonic);

}  // namespace quorvane
