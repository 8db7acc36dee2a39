#include "ui/key_router.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <tuple>

namespace quorvane {
namespace {

TEST(ConsoleKeyTest, OnlyPlainFunctionKeysAndFourDigitsAreConsoleKeys) {
  constexpr quint32 kSevensPlace = 16;
  const std::vector<std::tuple<int, Qt::KeyboardModifiers, quint32, bool, std::string>> cases = {
      {Qt::Key_F1, Qt::NoModifier, 67, false, "F1"},
      {Qt::Key_F12, Qt::NoModifier, 96, true, "F12"},
      {Qt::Key_F13, Qt::NoModifier, 0, false, ""},
      {Qt::Key_F4, Qt::AltModifier, 70, false, ""},
      {Qt::Key_F5, Qt::ControlModifier, 71, false, ""},
      {Qt::Key_F5, Qt::ShiftModifier, 71, false, "F5"},
      {Qt::Key_7, Qt::NoModifier, 0, false, "7"},
      {Qt::Key_0, Qt::NoModifier, 19, false, "0"},
      {Qt::Key_0, Qt::NoModifier, 19, true, ""},
      {Qt::Key_9, Qt::KeypadModifier, 81, false, ""},
      {Qt::Key_6, Qt::NoModifier, 15, false, ""},
      // French keys for e grave, underscore, c cedilla and a grave, the digits of which need Shift.
      {Qt::Key_Egrave, Qt::NoModifier, kSevensPlace, false, "7"},
      {Qt::Key_Underscore, Qt::NoModifier, 17, false, "8"},
      {Qt::Key_Ccedilla, Qt::NoModifier, 18, false, "9"},
      {Qt::Key_Agrave, Qt::NoModifier, 19, false, "0"},
      {Qt::Key_Agrave, Qt::NoModifier, 19, true, ""},
      {Qt::Key_Egrave, Qt::NoModifier, 40, false, ""},
      {Qt::Key_Egrave, Qt::AltModifier, kSevensPlace, false, ""},
      {Qt::Key_V, Qt::NoModifier, 17, false, ""},  // a server that numbers the places in its own way
      {Qt::Key_Tab, Qt::NoModifier, 17, false, ""},
  };
  for (const auto& [key, modifiers, place, typing, expected] : cases) {
    const QKeyEvent press(QEvent::KeyPress, key, modifiers, place, 0, 0);
    EXPECT_EQ(KeyRouter::ConsoleKey(press, typing), expected) << key << " at " << place;
  }
}

}  // namespace
}  // namespace quorvane
