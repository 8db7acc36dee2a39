#pragma once

#include <QObject>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <string>

#include "forms/platform.h"

class QWidget;

namespace quorvane {

// Keeps a window on its screen with its whole frame, and remembers in the settings store where the operator
// has left it, for each set of screens. Belongs to the window.
class WindowPlace : public QObject {
 public:
  // The window is never made smaller than `least`, but where the screen is. `name` is its key in the store.
  WindowPlace(QWidget& window, SettingsStore& settings, std::string name, QSize least);

  // Puts a window that has not been shown yet where it was left. False: it was never shown before; it then
  // has the wanted size, or as much of it as the screen has room for.
  bool Restore(QSize wanted);
  // Beside or under the clock of the console, which the operator wants to go on seeing.
  void PutClearOf(const QRect& clock, QSize wanted);
  // After the program has moved the window or changed its size: as soon as its frame is known.
  void KeepOnScreen();
  // Above the others and with the keyboard.
  void BringForward();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Keep();
  void Save();

  QWidget& window_;
  SettingsStore& settings_;
  const std::string name_;
  const QSize least_;
  QTimer soon_;
  int looks_ = 0;
  QRect seen_;  // with its frame, at the last look
};

// Such as a window with its frame, moved and made smaller only as far as it takes to lie on the screen.
QRect MovedInto(const QRect& screen, const QRect& framed);

// Where a window of that size stands without hiding the clock: beside it, else under it.
QRect ClearOf(const QRect& clock, const QSize& wanted, const QRect& screen);

}  // namespace quorvane
