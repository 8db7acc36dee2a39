#include "ui/key_router.h"

#include <QApplication>
#include <QKeyEvent>

#include "ui/control_view.h"

namespace quorvane {

KeyRouter::KeyRouter(Door& door) : door_(door) {
  qApp->installEventFilter(this);
}

std::string KeyRouter::ConsoleKey(const QKeyEvent& press, bool typing) {
  if ((press.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) != 0) return {};
  const int key = press.key();
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return "F" + std::to_string(key - Qt::Key_F1 + 1);
  const bool digit = key == Qt::Key_7 || key == Qt::Key_8 || key == Qt::Key_9 || key == Qt::Key_0;
  const bool keypad = (press.modifiers() & Qt::KeypadModifier) != 0;
  if (!digit || keypad || typing) return {};
  return std::string(1, static_cast<char>('0' + (key - Qt::Key_0)));
}

bool KeyRouter::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  if (door_.DialogOpen() || QApplication::activeModalWidget() != nullptr) return false;
  const auto& press = *static_cast<QKeyEvent*>(event);
  const std::string key = ConsoleKey(press, IsTextField(QApplication::focusWidget()));
  if (key.empty()) return false;
  if (!press.isAutoRepeat()) {
    Event pressed;
    pressed.kind = EventKind::Key;
    pressed.text = key;
    door_.Enter(pressed);
  }
  return true;
}

}  // namespace quorvane
