#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <unordered_map>

#include "forms/door.h"

class QKeyEvent;

namespace quorvane {

// Takes the console's keys out of whatever window of the program they are pressed in: F1..F12 always, the
// digits 7, 8, 9 and 0 unless a text is being typed. While a dialog box is open every key is the box's; one
// that would have judged a race is told beside it. A held key counts once, here and on buttons.
class KeyRouter : public QObject {
 public:
  KeyRouter(Door& door, std::function<bool()> judges);  // whether keys judge a race now

  // "F5" or "7" when that key press is a console key, else empty. A digit key is known by its place too: on
  // many keyboards digits need Shift, and the bare keys give other characters.
  static std::string ConsoleKey(const QKeyEvent& press, bool typing);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsRepeat(const QKeyEvent& press) const;

  Door& door_;
  const std::function<bool()> judges_;
  std::unordered_map<quint32, quint64> released_;  // key -> time stamp of its last release
};

}  // namespace quorvane
