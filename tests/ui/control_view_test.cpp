#include "ui/widgets/control_view.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "tests/ui/ui_fixture.h"

namespace quorvane {
namespace {

// One control of each kind in a window.
class ControlViewTest : public UiTest {
 protected:
  ControlViewTest() {
    list.SetItems({"RaceHorse", "AMA 1324", "AMA 2413"});
    list.SetListIndex(1);
    number.SetText("3");
    form.SetVisible(true);
  }

  void Open() {
    FormDesign design;
    design.width = 400;
    design.height = 300;
    design.home = "lblHome";
    design.places = {{"lblHome", {0, 0, 80, 30}, 12, Look::Focusable},
                     {"cmd", {0, 40, 80, 30}},
                     {"lbl", {0, 80, 80, 30}, 12, Look::Plain, "Status"},
                     {"chk", {0, 120, 80, 30}},
                     {"txt", {0, 160, 80, 30}, 12, Look::Late | Look::Numeric},
                     {"memo", {100, 0, 200, 100}, 12, Look::Lines},
                     {"cbo", {0, 200, 80, 30}}};
    windows = std::make_unique<Windows>(door);
    window = &windows->AddWindow(form, design, QSize(100, 100));
    platform.SetWindows(windows.get());
    door.SetAfterEvent([this] { windows->Apply(); });
    windows->Apply();
    window->activateWindow();
    Settle();
  }
  void TearDown() override {
    door.SetAfterEvent({});
    platform.SetWindows(nullptr);
  }

  template <typename T>
  T* Shown(const char* name) {
    return dynamic_cast<T*>(window->View().FindWidget(name));
  }

  Control& home = form.Make(ControlKind::Label, "lblHome");
  Control& button = form.Make(ControlKind::Button, "cmd");
  Control& label = form.Make(ControlKind::Label, "lbl");
  Control& box = form.Make(ControlKind::CheckBox, "chk");
  Control& number = form.Make(ControlKind::TextBox, "txt");
  Control& memo = form.Make(ControlKind::TextBox, "memo");
  Control& list = form.Make(ControlKind::ComboBox, "cbo");
  std::unique_ptr<Windows> windows;
  FormWindow* window = nullptr;
};

TEST_F(ControlViewTest, ChangesShowTogetherWhenTheEventHasEndedOrThePaintingIsAskedFor) {
  std::string during;
  std::string painted;
  button.onClick = [&] {
    label.SetCaption("First");
    during = Shown<QLabel>("lbl")->text().toStdString();
    platform.RepaintWindows();
    painted = Shown<QLabel>("lbl")->text().toStdString();
    label.SetCaption("Second");
    label.SetVisible(false);
    box.SetEnabled(false);
  };
  Open();
  ClickOn(Shown<QPushButton>("cmd"));
  EXPECT_EQ(during, "");
  EXPECT_EQ(painted, "First");
  EXPECT_EQ(Shown<QLabel>("lbl")->text(), QStringLiteral("Second"));
  EXPECT_EQ(Shown<QLabel>("lbl")->accessibleName(), QStringLiteral("Status: Second"));
  EXPECT_TRUE(Shown<QLabel>("lbl")->isHidden());
  EXPECT_FALSE(Shown<QCheckBox>("chk")->isEnabled());
}

TEST_F(ControlViewTest, CheckBoxShowsWhatTheControlSaysAndNotWhatWasClicked) {
  int clicks = 0;
  box.onClick = [&] {
    ++clicks;
    if (clicks == 1) box.SetValue(0);  // takes it back, which is a click of its own
  };
  Open();
  ClickOn(Shown<QCheckBox>("chk"));
  EXPECT_FALSE(Shown<QCheckBox>("chk")->isChecked());
  ClickOn(Shown<QCheckBox>("chk"));
  EXPECT_TRUE(Shown<QCheckBox>("chk")->isChecked());
  EXPECT_EQ(box.Value(), 1);
}

TEST_F(ControlViewTest, NumberCountsWhenItIsFinished) {
  std::string seen;
  number.onChange = [&] { seen += number.Text() + ","; };
  Open();
  auto* edit = Shown<QLineEdit>("txt");
  edit->setFocus();
  edit->selectAll();
  TypeText(edit, QStringLiteral("1a+2"));
  EXPECT_EQ(edit->text(), QStringLiteral("12"));
  EXPECT_EQ(seen, "");
  Press(edit, Qt::Key_Return, QStringLiteral("\r"));
  EXPECT_EQ(seen, "12,");
  EXPECT_TRUE(Shown<QWidget>("lblHome")->hasFocus());  // so that the digit keys judge again

  edit->setFocus();
  TypeText(edit, QStringLiteral("9"));
  Press(edit, Qt::Key_Escape);
  EXPECT_EQ(edit->text(), QStringLiteral("12"));
  EXPECT_EQ(seen, "12,");

  edit->setFocus();
  edit->clear();
  Press(edit, Qt::Key_Return, QStringLiteral("\r"));
  EXPECT_EQ(edit->text(), QStringLiteral("12"));
  EXPECT_EQ(seen, "12,");

  edit->setFocus();
  edit->selectAll();
  TypeText(edit, QStringLiteral("7"));
  Shown<QPushButton>("cmd")->setFocus();
  EXPECT_EQ(seen, "12,7,");
}

TEST_F(ControlViewTest, TypingIsDroppedWhenTheBoxIsLockedMeanwhile) {
  bool changed = false;
  number.onChange = [&] { changed = true; };
  button.onClick = [&] { number.SetEnabled(false); };
  Open();
  auto* edit = Shown<QLineEdit>("txt");
  edit->setFocus();
  TypeText(edit, QStringLiteral("5"));
  Event start;
  start.kind = EventKind::Click;
  start.target = "frmTest.cmd";
  door.Enter(start);
  EXPECT_FALSE(changed);
  EXPECT_EQ(edit->text(), QStringLiteral("3"));
}

TEST_F(ControlViewTest, CommentsCountAtOnceAndKeepTheCursor) {
  std::string seen;
  memo.onChange = [&] { seen = memo.Text(); };
  Open();
  auto* edit = Shown<QPlainTextEdit>("memo");
  edit->setFocus();
  TypeText(edit, QStringLiteral("wind"));
  edit->moveCursor(QTextCursor::Start);
  TypeText(edit, QStringLiteral("No "));
  EXPECT_EQ(seen, "No wind");
  EXPECT_EQ(edit->textCursor().position(), 3);
}

TEST_F(ControlViewTest, ListShowsTheEntryThatTheControlHas) {
  list.onChange = [&] { list.SetListIndex(0); };
  Open();
  auto* combo = Shown<QComboBox>("cbo");
  combo->setCurrentIndex(2);
  emit combo->activated(2);
  EXPECT_EQ(combo->currentIndex(), 0);
  EXPECT_EQ(list.ListIndex(), 0);
}

TEST_F(ControlViewTest, FocusLeavesAButtonThatIsDisabledForAPlaceWhereAKeyDoesNoHarm) {
  button.onClick = [&] { button.SetEnabled(false); };
  Open();
  auto* shown = Shown<QPushButton>("cmd");
  shown->setFocus();
  Press(shown, Qt::Key_Space, QStringLiteral(" "));
  EXPECT_FALSE(shown->isEnabled());
  EXPECT_TRUE(Shown<QWidget>("lblHome")->hasFocus());
}

TEST_F(ControlViewTest, GettingTheFocusSelectsTheText) {
  number.onGotFocus = [&] { number.SetSelection(0, static_cast<int>(number.Text().size())); };
  Open();
  Shown<QLineEdit>("txt")->setFocus(Qt::TabFocusReason);
  Settle();
  EXPECT_EQ(Shown<QLineEdit>("txt")->selectedText(), QStringLiteral("3"));
}

TEST_F(ControlViewTest, LabelThatCanBeClickedAlsoTakesKeys) {
  int clicks = 0;
  label.onClick = [&] { ++clicks; };
  Open();
  auto* shown = Shown<QLabel>("lbl");
  EXPECT_EQ(shown->focusPolicy(), Qt::TabFocus);
  ClickOn(shown);
  Press(shown, Qt::Key_Space, QStringLiteral(" "));
  EXPECT_EQ(clicks, 2);
}

}  // namespace
}  // namespace quorvane
