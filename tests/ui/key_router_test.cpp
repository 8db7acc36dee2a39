#include "ui/key_router.h"

#include <QLineEdit>
#include <QTimer>
#include <tuple>

#include "tests/ui/ui_fixture.h"

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
      {Qt::Key_7, Qt::NoModifier, kSevensPlace, false, "7"},
      {Qt::Key_7, Qt::NoModifier, 0, false, "7"},
      {Qt::Key_0, Qt::NoModifier, 19, false, "0"},
      {Qt::Key_0, Qt::NoModifier, 19, true, ""},
      {Qt::Key_9, Qt::KeypadModifier, 81, false, ""},
      {Qt::Key_6, Qt::NoModifier, 15, false, ""},
      {Qt::Key_A, Qt::NoModifier, 38, false, ""},
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

class KeyRouterTest : public UiTest {};

TEST_F(KeyRouterTest, KeysReachTheMainFormFromAnyWindowUnlessABoxIsOpen) {
  form.SetVisible(true);
  door.AllForms().SetMain(form);
  const KeyRouter router(door);
  QWidget other;
  QLineEdit edit(&other);
  other.show();
  other.activateWindow();
  edit.setFocus();
  Settle();
  Press(&edit, Qt::Key_F2);
  Press(&edit, Qt::Key_8, QStringLiteral("8"));
  EXPECT_EQ(form.keys, "F2 ");
  EXPECT_EQ(edit.text(), QStringLiteral("8"));

  QTimer::singleShot(20, [] {
    QWidget* box = QApplication::activeModalWidget();
    ASSERT_NE(box, nullptr);
    Press(box, Qt::Key_F4);
    Press(box, Qt::Key_Escape);
  });
  door.Ask({DialogKind::YesNoCancel, "Title", "Text"});
  EXPECT_EQ(form.keys, "F2 ");
}

}  // namespace
}  // namespace quorvane
