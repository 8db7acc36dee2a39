#pragma once

#include <QObject>
#include <string>

#include "common/door.h"

class QKeyEvent;

namespace quorvane {

// Takes the console's keys out of whatever window of the program they are pressed in: F1..F12 always, the
// digits 7, 8, 9 and 0 unless the operator is typing in a text field. While a dialog box is open every key is
// the box's.
class KeyRouter : public QObject {
 public:
  explicit KeyRouter(Door& door);

  // "F5" or "7" when that key press is a console key, else empty.
  static std::string ConsoleKey(const QKeyEvent& press, bool typing);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Door& door_;
};

}  // namespace quorvane
