#include "ui/key_router.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QToolTip>
#include <string_view>
#include <utility>

#include "ui/widgets/control_view.h"
#include "ui/words.h"

namespace quorvane {
namespace {

// Whether the key may be a digit by its place. Never a digit or a letter from A to Z, a blank or a key that
// types nothing: some display servers number the places in a way of their own.
bool TypesSign(int key) {
  const bool digitOrLetter = (key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z);
  return key > Qt::Key_Space && key < Qt::Key_Escape && !digitOrLetter;
}

std::string DigitOf(const QKeyEvent& press) {
  constexpr std::string_view kDigits = "7890";
  constexpr quint32 kFirstPlace = 16;  // of the 7, in the numbers of X11 and Wayland
  const quint32 place = press.nativeScanCode() - kFirstPlace;
  const bool placed = place < kDigits.size() && TypesSign(press.key()) &&
                      !press.modifiers().testFlag(Qt::GroupSwitchModifier);
  if (placed) return std::string(1, kDigits[place]);
  for (const char digit : kDigits) {
    if (press.key() == digit) return std::string(1, digit);
  }
  return {};
}

quint32 IdentityOf(const QKeyEvent& event) {
  return event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<quint32>(event.key());
}

// Whether that key, held down, would press the focused button, or a box's default one, again and again.
bool PressesButton(int key) {
  const QWidget* focus = QApplication::focusWidget();
  if (key == Qt::Key_Space) return !IsTextField(focus);
  return (key == Qt::Key_Return || key == Qt::Key_Enter) &&
         qobject_cast<const QPlainTextEdit*>(focus) == nullptr;
}

// A lap that is lost without a word is not missed before the finish.
void TellNotEntered() {
  constexpr int kToldMs = 8000;
  QWidget* box = QApplication::activeModalWidget();
  if (box == nullptr) return;
  QApplication::beep();
  QToolTip::showText(box->mapToGlobal(QPoint(0, box->height())),
                     Words::Of("Not entered: answer this box first"), box, {}, kToldMs);
}

}  // namespace

KeyRouter::KeyRouter(Door& door, std::function<bool()> judges) : door_(door), judges_(std::move(judges)) {
  qApp->installEventFilter(this);
}

std::string KeyRouter::ConsoleKey(const QKeyEvent& press, bool typing) {
  if ((press.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) != 0) return {};
  const int key = press.key();
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return "F" + std::to_string(key - Qt::Key_F1 + 1);
  if (typing || press.modifiers().testFlag(Qt::KeypadModifier)) return {};
  return DigitOf(press);
}

// Not every display server marks the repeats of a held key, but each repeat carries the time stamp of the
// release that the server makes up before it.
bool KeyRouter::IsRepeat(const QKeyEvent& press) const {
  if (press.isAutoRepeat()) return true;
  const auto released = released_.find(IdentityOf(press));
  return press.timestamp() != 0 && released != released_.end() && released->second == press.timestamp();
}

bool KeyRouter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyRelease) {
    const auto& release = *static_cast<QKeyEvent*>(event);
    released_[IdentityOf(release)] = release.timestamp();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto& press = *static_cast<QKeyEvent*>(event);
  const bool repeat = IsRepeat(press);
  if (repeat && PressesButton(press.key())) return true;
  const bool typing = IsTextField(QApplication::focusWidget());
  if (door_.DialogOpen() || QApplication::activeModalWidget() != nullptr) {
    const bool judging = watched->isWindowType() && !repeat && !ConsoleKey(press, typing).empty();
    if (judging && judges_()) TellNotEntered();
    return false;
  }
  const bool files = qobject_cast<QDialog*>(QApplication::activeWindow()) != nullptr;  // a list of them
  const std::string key = ConsoleKey(press, typing || files);
  if (key.empty()) return false;
  if (!repeat) {
    FinishTyping();
    door_.Enter({.kind = EventKind::Key, .text = key});
  }
  return true;
}

}  // namespace quorvane
