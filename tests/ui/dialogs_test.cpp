#include <QAbstractButton>
#include <QLineEdit>
#include <QMessageBox>
#include <tuple>

#include "tests/ui/fixture.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

class DialogsTest : public DoorTest {
 protected:
  // Runs while the box is open, then presses the key in it.
  DialogAnswer Answer(const DialogBox& box, int key, const std::function<void(QWidget*)>& meanwhile = {}) {
    QTimer::singleShot(10, [=] {
      QWidget* open = QApplication::activeModalWidget();
      ASSERT_NE(open, nullptr);
      if (meanwhile) meanwhile(open);
      Press(open, key);
    });
    return door.Ask(box);
  }
};

TEST_F(DialogsTest, KeysAnswerAsTheOperatorWould) {
  for (const auto& [kind, key, expected] : {std::tuple(DialogKind::Ok, Qt::Key_Escape, Word::Ok),
                                            {DialogKind::OkCancel, Qt::Key_Escape, Word::Cancel},
                                            {DialogKind::YesNoCancel, Qt::Key_Escape, Word::Cancel},
                                            {DialogKind::Input, Qt::Key_Escape, Word::Cancel},
                                            {DialogKind::OpenFile, Qt::Key_Escape, Word::Cancel},
                                            {DialogKind::YesNoCancel, Qt::Key_Return, Word::Yes},
                                            {DialogKind::YesNo, Qt::Key_Return, Word::Yes}}) {
    EXPECT_EQ(Answer({kind, "T", ""}, key).word, expected) << static_cast<int>(kind);
  }
  const DialogBox input{.kind = DialogKind::Input, .title = "T", .text = "x", .preset = "4"};
  EXPECT_EQ(Answer(input, Qt::Key_Return).text, "4");
  const auto type = [](QWidget* open) { QTest::keyClicks(open->findChild<QLineEdit*>(), "6"); };
  EXPECT_EQ(Answer(input, Qt::Key_Return, type).text, "6");
}

TEST_F(DialogsTest, YesNoBoxIsLeftByItsButtonsOnlyAndEnterPressesTheSafeOne) {
  const auto resist = [](QWidget* open) {
    Press(open, Qt::Key_Escape);
    open->close();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(open->focusWidget(), &held);
    EXPECT_TRUE(open->isVisible());
  };
  const DialogBox box{.kind = DialogKind::YesNo, .title = "T", .text = "x", .usual = Word::No};
  EXPECT_EQ(Answer(box, Qt::Key_Return, resist).word, Word::No);
}

TEST_F(DialogsTest, BoxOfTheRadioTakesNeitherKeyNorClickInItsFirstSecond) {
  const auto early = [](QWidget* open) {
    for (const int key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) Press(open, key);
    QAbstractButton* yes = dynamic_cast<QMessageBox*>(open)->button(QMessageBox::Yes);
    ClickOn(yes);
    open->close();
    EXPECT_TRUE(WaitFor([&] { return yes->isEnabled(); }));
    EXPECT_TRUE(open->isVisible());
  };
  const DialogBox box{
      .kind = DialogKind::YesNoCancel, .title = "T", .text = "x", .usual = Word::Cancel, .byRadio = true};
  EXPECT_EQ(Answer(box, Qt::Key_Return, early).word, Word::Cancel);
}

TEST_F(DialogsTest, TextIsLiteralAndBytesGoThroughAnOpenBoxWhileClicksDoNot) {
  int clicks = 0;
  form.Add(ControlKind::Button, "cmd").onClick = [&] { ++clicks; };
  form.SetVisible(true);
  Answer({DialogKind::OkCancel, "T", "<b>one</b>\rtwo & three"}, Qt::Key_Return, [&](QWidget* open) {
    const auto* message = dynamic_cast<QMessageBox*>(open);
    EXPECT_EQ(message->textFormat(), Qt::PlainText);
    EXPECT_EQ(message->text(), QStringLiteral("<b>one</b>\ntwo & three"));
    door.Enter({.kind = EventKind::Bytes, .bytes = {1, 2, 3}});
    door.Enter({.kind = EventKind::Click, .target = "frmTest.cmd"});
    EXPECT_EQ(arrived.size(), 3U);
  });
  EXPECT_EQ(clicks, 0);
}

}  // namespace
}  // namespace quorvane
