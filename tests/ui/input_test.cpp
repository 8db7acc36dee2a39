// The operator's keys and clicks, as the desktop hands them to the windows.

#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>

#include "tests/ui/program_fixture.h"
#include "ui/printing/qt_printer.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"
#include "ui/small_windows.h"

namespace quorvane {
namespace {

// The console's keys that were entered.
class KeyLog : public Journal {
 public:
  void Entered(std::int64_t, const Event& event) override {
    if (event.kind == EventKind::Key) keys += event.text + " ";
  }
  void Answered(std::int64_t, const DialogBox&, const DialogAnswer&) override {}
  void Sent(std::int64_t, const std::vector<std::uint8_t>&) override {}
  std::string keys;
};

class InputTest : public ProgramTest {
 protected:
  void SetUp() override {
    Load();
    program.door().SetJournal(&log);
    windows.Console().activateWindow();
    Settle();
  }

  void Click(Control& control) { ClickAt(*Shown(control)); }
  static void ClickAt(QWidget& widget, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(widget.window()->windowHandle(), button, {},
                      widget.mapTo(widget.window(), widget.rect().center()));
    Settle();
  }
  static void Keys(QWidget& window, const char* text) {
    for (; *text != 0; ++text) QTest::keyClick(window.windowHandle(), *text);
  }
  void Keys(const char* text) { Keys(windows.Console(), text); }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(windows.Console().windowHandle(), key, modifiers);
  }
  // A key held down: the display server sends a release and a press at the same time for every repeat.
  void Hold(int key, bool marked) {
    quint64 ms = 1000;
    const auto send = [&](QEvent::Type type, bool repeat) {
      QKeyEvent event(type, key, {}, 99, 0, 0, {}, repeat);
      event.setTimestamp(ms);
      QCoreApplication::sendEvent(windows.Console().windowHandle(), &event);
    };
    send(QEvent::KeyPress, false);
    for (int i = 0; i < 3; ++i) {
      ms += 30;
      send(QEvent::KeyRelease, marked);
      send(QEvent::KeyPress, marked);
    }
    ms += 30;
    send(QEvent::KeyRelease, false);
  }
  frmJudge& judge() { return program.judge(); }

  KeyLog log;
};

TEST_F(InputTest, CommentsAndLapBoxesAreTypedWholeAfterTheFirstLetterReplacedTheOldText) {
  for (Control* box : {&judge().txtComments, &program.lane(0).txtLapTen}) {
    box->SetText("No comments");
    windows.All().Apply();
    Click(*box);
    Keys("gusty 5");
    EXPECT_EQ(box->Text(), "gusty 5") << box->FullName();
  }
}

TEST_F(InputTest, ASavedRaceThatIsShownIsReadAndNotWritten) {
  for (const auto& [section, key, text] :
       {std::tuple("Race1", "Timestamp", "1"), std::tuple("Race1", "Comments", "gusty"),
        std::tuple("Race1_Lane1", "Placing", "First")}) {
    program.project().SetProjectValue(section, key, text);
  }
  Click(judge().cmdIncHeat);
  Click(judge().cmdDecHeat);
  const std::size_t boxes = shown.size();
  frmLane& lane = program.lane(0);
  for (Control* control : {&judge().txtComments, &lane.txtLapTen, &lane.lblStatus}) {
    Click(*control);
    Keys("calm");
  }
  EXPECT_EQ(shown.size(), boxes);
  EXPECT_EQ(judge().txtComments.Text() + lane.txtLapTen.Text() + lane.lblStatus.Caption(), "gustyFirst");
  EXPECT_TRUE(Shown(judge().txtComments)->isEnabled()) << "long comments are scrolled";
  Click(judge().cmdIncHeat);
  Click(judge().txtComments);
  Keys("calm");
  EXPECT_EQ(judge().txtComments.Text(), "calm");
}

TEST_F(InputTest, PastingNothingChangesNothing) {
  QGuiApplication::clipboard()->setMimeData(new QMimeData);
  Click(judge().txtComments);
  Keys("wind");
  Key(Qt::Key_V, Qt::ControlModifier);
  Key(Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(judge().txtComments.Text(), "wind");
  QGuiApplication::clipboard()->setText("y");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(judge().txtComments.Text(), "windy");
}

TEST_F(InputTest, EscapeAndAClickOnAnEmptyPlaceLeaveATextBox) {
  Click(judge().txtComments);
  ClickAt(*Shown(judge().txtComments), Qt::MiddleButton);
  ClickAt(*Shown(judge().txtComments), Qt::RightButton);
  if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
  Keys("7");
  Key(Qt::Key_Escape);
  Keys("8");
  Click(program.lane(0).txtLapTen);
  Key(Qt::Key_Escape);
  Keys("9");
  Click(judge().txtComments);
  ClickAt(*Shown(program.lane(2).lblHdr[5]));
  Keys("0");
  EXPECT_EQ(judge().txtComments.Text(), "7");
  EXPECT_EQ(log.keys, "8 9 0 ");
}

TEST_F(InputTest, HeldKeyCountsOnce) {
  for (const bool marked : {true, false}) {
    log.keys.clear();
    Hold(Qt::Key_F2, marked);
    Hold(Qt::Key_8, marked);
    EXPECT_EQ(log.keys, "F2 8 ");
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
      const std::int16_t race = program.race().RaceNumber;
      Shown(judge().cmdIncHeat)->setFocus();
      Hold(key, marked);
      EXPECT_EQ(program.race().RaceNumber, race + 1) << key;
    }
  }
}

TEST_F(InputTest, KeysJudgeFromWhateverWindowIsInFront) {
  AddSmallWindows(program, windows.All(), windows.Console());
  ResultsWindow results(program, windows);
  Scoreboard scoreboard(program, windows, settings);
  QtHeatPrinter printer(program, platform, &windows.Console());
  std::string expected;
  for (const char* menu : {"mnuTimerSettings", "mnuKeyboard", "mnuAbout", "mnuResults", "mnuScoreboard",
                           "mnuPrintPreview", "lblComm"}) {
    Enter(EventKind::Click, std::string("frmJudge.") + menu);
    QTest::qWait(2);  // the same key within a millisecond would be a repeat
    QWidget* front = QApplication::activeWindow();
    ASSERT_NE(front, nullptr);
    EXPECT_NE(front, &windows.Console()) << menu;
    QTest::keyClick(front->windowHandle(), Qt::Key_F6);
    QTest::keyClick(front->windowHandle(), Qt::Key_F10);
    Keys(*front, "0");
    expected += "F6 F10 0 ";
    EXPECT_EQ(log.keys, expected) << menu;
  }
}

TEST_F(InputTest, HeatBeingTypedIsTheOneThatIsStarted) {
  const std::vector<std::function<void()>> starts = {[this] { Key(Qt::Key_F1); },
                                                     [this] { Key(Qt::Key_T, Qt::AltModifier); },
                                                     [this] { Click(judge().cmdStart); }};
  for (std::size_t i = 0; i < starts.size(); ++i) {
    Click(i == 1 ? judge().txtRound : judge().txtHeat);
    Keys("3");
    starts[i]();
    WaitFor([&] { return judge().RaceBeingFlown(); }, 300);
    EXPECT_TRUE(judge().RaceBeingFlown()) << i;
    EXPECT_EQ(program.race().RaceNumber, i == 1 ? 9 : 3) << i;
    program.race().RaceActive = false;
    judge().cmdReset_Click();
    program.race().RaceNumber = 1;
    judge().ShowCurrentRace();
    Enter(EventKind::Timer, "");
  }
}

}  // namespace
}  // namespace quorvane
