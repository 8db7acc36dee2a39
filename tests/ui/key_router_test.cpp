#include "ui/key_router.h"

#include <QLineEdit>
#include <QTimer>
#include <tuple>

#include "tests/ui/ui_fixture.h"

namespace quorvane {
namespace {

TEST(ConsoleKeyTest, OnlyPlainFunctionKeysAndFourDigitsAreConsoleKeys) {
  const std::vector<std::tuple<int, Qt::KeyboardModifiers, bool, std::string>> cases = {
      {Qt::Key_F1, Qt::NoModifier, false, "F1"},    {Qt::Key_F12, Qt::NoModifier, true, "F12"},
      {Qt::Key_F13, Qt::NoModifier, false, ""},     {Qt::Key_F4, Qt::AltModifier, false, ""},
      {Qt::Key_F5, Qt::ControlModifier, false, ""}, {Qt::Key_F5, Qt::ShiftModifier, false, "F5"},
      {Qt::Key_7, Qt::NoModifier, false, "7"},      {Qt::Key_0, Qt::NoModifier, false, "0"},
      {Qt::Key_0, Qt::NoModifier, true, ""},        {Qt::Key_9, Qt::KeypadModifier, false, ""},
      {Qt::Key_6, Qt::NoModifier, false, ""},       {Qt::Key_A, Qt::NoModifier, false, ""},
  };
  for (const auto& [key, modifiers, typing, expected] : cases) {
    const QKeyEvent press(QEvent::KeyPress, key, modifiers);
    EXPECT_EQ(KeyRouter::ConsoleKey(press, typing), expected) << key;
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

  QKeyEvent held(QEvent::KeyPress, Qt::Key_F3, Qt::NoModifier, {}, true);
  QCoreApplication::sendEvent(&other, &held);
  EXPECT_EQ(form.keys, "F2 ");

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
