#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include "tests/ui/ui_fixture.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

class DialogsTest : public UiTest, public DeviceEvents {
 protected:
  DialogsTest() { door.SetDevices(this); }
  void Load() override {}
  void BytesArrived(const std::vector<std::uint8_t>& bytes) override { arrived += bytes.size(); }
  void LineError(int) override {}
  void PortsChanged(const std::vector<int>&) override {}
  void EventEnded() override {}

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

  std::size_t arrived = 0;
};

TEST_F(DialogsTest, BoxThatIsClosedOtherwiseAnswersAsTheOperatorWould) {
  EXPECT_EQ(Answer({DialogKind::Ok, "T", "x"}, Qt::Key_Escape).word, Word::Ok);
  EXPECT_EQ(Answer({DialogKind::OkCancel, "T", "x"}, Qt::Key_Escape).word, Word::Cancel);
  EXPECT_EQ(Answer({DialogKind::YesNoCancel, "T", "x"}, Qt::Key_Escape).word, Word::Cancel);
  EXPECT_EQ(Answer({DialogKind::Input, "T", "x"}, Qt::Key_Escape).word, Word::Cancel);
  EXPECT_EQ(Answer({DialogKind::OpenFile, "T", ""}, Qt::Key_Escape).word, Word::Cancel);
  EXPECT_EQ(Answer({DialogKind::YesNoCancel, "T", "x"}, Qt::Key_Return).word, Word::Yes);
}

TEST_F(DialogsTest, YesNoBoxIsLeftByItsButtonsOnlyAndEnterPressesTheSafeOne) {
  DialogBox box{DialogKind::YesNo, "T", "x"};
  box.usual = Word::No;
  const auto resist = [](QWidget* open) {
    Press(open, Qt::Key_Escape);
    open->close();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(open->focusWidget(), &held);
    EXPECT_TRUE(open->isVisible());
  };
  EXPECT_EQ(Answer(box, Qt::Key_Return, resist).word, Word::No);
  EXPECT_EQ(Answer({DialogKind::YesNo, "T", "x"}, Qt::Key_Return).word, Word::Yes);
}

TEST_F(DialogsTest, BoxOfTheRadioTakesNeitherKeyNorClickInItsFirstSecond) {
  DialogBox box{DialogKind::YesNoCancel, "T", "x"};
  box.usual = Word::Cancel;
  box.byRadio = true;
  const auto early = [](QWidget* open) {
    for (const int key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) Press(open, key);
    QAbstractButton* yes = dynamic_cast<QMessageBox*>(open)->button(QMessageBox::Yes);
    ClickOn(yes);
    open->close();
    EXPECT_TRUE(WaitFor([&] { return yes->isEnabled(); }));
    EXPECT_TRUE(open->isVisible());
  };
  EXPECT_EQ(Answer(box, Qt::Key_Return, early).word, Word::Cancel);
}

TEST_F(DialogsTest, TextIsShownLiterallyLineByLine) {
  QString shown;
  Answer({DialogKind::Ok, "T", "<b>one</b>\rtwo & three"}, Qt::Key_Return, [&](QWidget* box) {
    const auto* message = dynamic_cast<QMessageBox*>(box);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->textFormat(), Qt::PlainText);
    shown = message->text();
  });
  EXPECT_EQ(shown, QStringLiteral("<b>one</b>\ntwo & three"));
}

TEST_F(DialogsTest, InputBoxOffersItsPresetAndGivesBackWhatIsTyped) {
  DialogBox box{DialogKind::Input, "Heats per Round", "Enter the number:"};
  box.preset = "4";
  EXPECT_EQ(Answer(box, Qt::Key_Return).text, "4");
  const DialogAnswer answer = Answer(box, Qt::Key_Return, [](QWidget* open) {
    open->findChild<QLineEdit*>()->setText(QStringLiteral("6"));
  });
  EXPECT_EQ(answer.word, Word::Text);
  EXPECT_EQ(answer.text, "6");
}

TEST_F(DialogsTest, BytesGoThroughAnOpenBoxAndClicksDoNot) {
  int clicks = 0;
  Control& button = form.Make(ControlKind::Button, "cmd");
  form.SetVisible(true);
  button.onClick = [&] { ++clicks; };
  std::size_t inside = 0;
  Answer({DialogKind::OkCancel, "T", "x"}, Qt::Key_Return, [&](QWidget*) {
    Event bytes;
    bytes.kind = EventKind::Bytes;
    bytes.bytes = {1, 2, 3};
    door.Enter(bytes);
    Event click;
    click.kind = EventKind::Click;
    click.target = "frmTest.cmd";
    door.Enter(click);
    inside = arrived;
  });
  EXPECT_EQ(inside, 3U);
  EXPECT_EQ(clicks, 0);
}

}  // namespace
}  // namespace quorvane
