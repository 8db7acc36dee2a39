// The operator's keys and clicks, as the desktop hands them to the windows.

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolTip>
#include <QWindow>
#include <tuple>

#include "tests/support/test_data.h"
#include "tests/ui/fixture.h"
#include "ui/first_start.h"
#include "ui/manual.h"

namespace quorvane {
namespace {

// The console's keys and the activations that were entered.
class InputLog : public Journal {
 public:
  void Entered(std::int64_t, const Event& event) override {
    if (event.kind == EventKind::Key) keys += event.text + " ";
    if (event.kind == EventKind::Activate) activated += event.target + " ";
  }
  std::string keys;
  std::string activated;
};

class InputTest : public OperatorTest {
 protected:
  void SetUp() override {
    OperatorTest::SetUp();
    program.door().SetJournal(&log);
  }

  // A key held down: for every repeat the display server sends a release and a press at the same time.
  void Hold(int key, bool marked) {
    for (quint64 ms = 1000; ms < 1100; ms += 30) {
      for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        const bool repeat = marked && (type == QEvent::KeyPress ? ms > 1000 : ms < 1090);
        QKeyEvent event(type, key, {}, 99, 0, 0, {}, repeat);
        event.setTimestamp(type == QEvent::KeyPress ? ms : ms + 30);
        QCoreApplication::sendEvent(windows.Console().windowHandle(), &event);
      }
    }
  }
  bool AtHome() { return Shown(judge().lblStatus)->hasFocus(); }  // where a key does no harm
  // The desktop moves the focus to that window; gives the activations.
  std::string FocusOn(FormWindow& window) {
    log.activated.clear();
    windows.All().FocusMoved(window.windowHandle());
    return log.activated;
  }

  InputLog log;
};

TEST_F(InputTest, ChangesShowTogetherWhenTheEventHasEndedOrThePaintingIsAskedFor) {
  Control& label = judge().lblNotice;
  auto* shown_as = Shown<CaptionLabel>(label);
  QString seen;
  judge().cmdPrint.onClick = [&] {
    label.SetCaption("First");
    seen = shown_as->Text();
    platform.RepaintWindows();
    seen += "," + shown_as->Text();
    label.SetCaption("Second\r2\r\n");
    judge().cmdPrint.SetCaption("A & P");
    label.SetVisible(false);
    judge().cmdPrint.SetEnabled(false);
  };
  Shown(judge().cmdPrint)->setFocus();
  Key(Qt::Key_Enter);
  EXPECT_EQ(seen, ",First");
  EXPECT_EQ(shown_as->Text(), "Second\n2\n");
  EXPECT_EQ(shown_as->accessibleName(), "Notice: Second\n2\n");
  EXPECT_EQ(Shown<QAbstractButton>(judge().cmdPrint)->text(), "A && &P");
  EXPECT_TRUE(shown_as->isHidden());
  EXPECT_FALSE(Shown(judge().cmdPrint)->isEnabled());
  EXPECT_TRUE(AtHome());
}

TEST_F(InputTest, ControlsShowWhatTheProgramMakesOfAClickAndLabelsTakeKeysToo) {
  Control& box = program.lane(0).chkNovice;
  box.onClick = [&] { box.SetValue(0); };
  Click(box);
  EXPECT_FALSE(Shown<QCheckBox>(box)->isChecked());
  box.onClick = {};
  Click(box);
  EXPECT_TRUE(Shown<QCheckBox>(box)->isChecked());
  Control& list = judge().cboRaceMode;
  list.onChange = [&] { list.SetListIndex(0); };
  auto* combo = Shown<QComboBox>(list);
  combo->setCurrentIndex(2);
  emit combo->activated(2);
  EXPECT_EQ(combo->currentIndex(), 0);
  Control& label = program.lane(0).lblStatus;
  int clicks = 0;
  label.onClick = [&] { ++clicks; };
  Click(label);
  Shown(label)->setFocus();
  Key(Qt::Key_Space);
  EXPECT_EQ(clicks, 2);
}

TEST_F(InputTest, NumberCountsWhenItIsFinished) {
  Control& number = judge().txtHeat;
  std::string counted;
  number.onChange = [&] { counted += number.Text() + ","; };
  auto* edit = Shown<QLineEdit>(number);
  const std::tuple<const char*, Qt::Key, const char*, const char*> cases[] = {
      {"1a+2", Qt::Key_Return, "12", "12,"},
      {"9", Qt::Key_Escape, "12", "12,"},
      {" ", Qt::Key_Return, "12", "12,"},
      {"7", Qt::Key_Tab, "7", "12,7,"}};
  for (const auto& [typed, end, shown_as, counted_as] : cases) {
    edit->setFocus(Qt::TabFocusReason);
    edit->selectAll();
    Keys(typed);
    Key(end);
    EXPECT_EQ(edit->text(), shown_as) << typed;
    EXPECT_EQ(counted, counted_as) << typed;
    EXPECT_EQ(AtHome(), end != Qt::Key_Tab) << typed;
  }
  Click(number);
  Keys("5");
  number.SetEnabled(false);
  windows.All().Apply();
  EXPECT_EQ(edit->text() + "," + counted.c_str(), "7,12,7,") << "locked while it was typed";
}

TEST_F(InputTest, TextsAreTypedWholePastingNothingChangesNothingAndLockedOnesAreRead) {
  for (Control* box : {&judge().txtComments, &program.lane(0).txtLapTen}) {
    box->SetText("No comments");
    box->SetEnabled(false);
    windows.All().Apply();
    EXPECT_TRUE(Shown(*box)->isEnabled()) << "read in its colours, and scrolled";
    EXPECT_TRUE(Shown(*box)->property("readOnly").toBool());
    EXPECT_EQ(Shown(*box)->focusPolicy(), Qt::NoFocus);
    box->SetEnabled(true);
    windows.All().Apply();
    Click(*box);
    Keys("gusty 5");  // its first letter replaces the old text
    QGuiApplication::clipboard()->setMimeData(new QMimeData);
    Key(Qt::Key_V, Qt::ControlModifier);
    Key(Qt::Key_Insert, Qt::ShiftModifier);
    QGuiApplication::clipboard()->setText("y");
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box->Text(), "gusty 5y") << box->FullName();
  }
}

TEST_F(InputTest, EscapeAndAClickOnAnEmptyPlaceLeaveATextBox) {
  Click(judge().txtComments);
  Click(judge().txtComments, Qt::MiddleButton);
  Click(judge().txtComments, Qt::RightButton);
  if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
  Keys("7");
  Key(Qt::Key_Escape);
  Keys("8");
  Click(program.lane(0).txtLapTen);
  Key(Qt::Key_Escape);
  Keys("9");
  Click(judge().txtComments);
  Click(program.lane(2).lblHdr[5]);
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
  ResultsWindow results(program, windows);
  Scoreboard scoreboard(program, windows);
  QtHeatPrinter printer(program, &windows.Console());
  std::string expected;
  for (const char* menu : {"mnuKeyboard", "mnuResults", "mnuScoreboard", "mnuPrintPreview", "lblComm"}) {
    Enter(EventKind::Click, std::string("frmJudge.") + menu);
    QTest::qWait(2);  // the same key within a millisecond would be a repeat
    QWidget* front = QApplication::activeWindow();
    ASSERT_NE(front, nullptr);
    EXPECT_NE(front, &windows.Console()) << menu;
    QTest::keyClick(front->windowHandle(), Qt::Key_F10);
    Keys(*front, "0");
    expected += "F10 0 ";
    EXPECT_EQ(log.keys, expected) << menu;
  }
  platform.SetAnswerer({});
  Enter(EventKind::Click, "frmJudge.cmdStart");
  QTimer::singleShot(50, [] {
    auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    QTest::keyClick(box->windowHandle(), Qt::Key_F1);
    EXPECT_EQ(QToolTip::text(), "Not entered: answer this box first");
    box->reject();
  });
  Enter(EventKind::Click, "frmJudge.cmdReset");
  EXPECT_EQ(log.keys, expected);
}

TEST_F(InputTest, CtrlF1OpensTheManualsPageOfTheWindowInFrontAndStartsNothing) {
  const ResultsWindow results(program, windows);
  const Scoreboard scoreboard(program, windows);
  QtHeatPrinter printer(program, &windows.Console());
  std::string opened;
  bool shows = true;
  Manual manual(program, folder.path(), [&](const QString& file) {
    opened += QFileInfo(file).baseName().toStdString() + " ";
    return shows;
  });
  const auto press = [](QWidget* window) {
    Settle();
    QTest::keyClick(window->windowHandle(), Qt::Key_F1, Qt::ControlModifier);
  };
  press(&windows.Console());
  const std::string missing = "The manual is not installed: " + folder.path().toStdString();
  EXPECT_EQ(judge().lblNotice.Caption(), missing);
  for (const char* page : {"console", "first-contest", "index", "keys", "laps-and-cuts", "link", "practice",
                           "printing", "protests", "results", "scoreboard"}) {
    const std::ofstream file(InFolder(std::string(page) + ".html"));
  }
  for (const char* menu : {"lblStatus", "mnuManual", "mnuKeyboard", "mnuLog", "mnuResults", "mnuScoreboard",
                           "mnuPrintPreview", "mnuProtestSheet", "lblComm"}) {
    Enter(EventKind::Click, std::string("frmJudge.") + menu);
    Settle();
    if (menu == std::string("mnuManual")) continue;
    press(QApplication::activeWindow());
  }
  EXPECT_EQ(opened, "console index keys laps-and-cuts results scoreboard printing protests link ");
  opened.clear();
  FirstStartForm first(settings, {}, InFolder(""), MomentOf(2026, 11, 21));
  first.onManual = [&] { manual.OpenFor(&first); };
  first.show();
  press(&first);
  ClickOn(first.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Help));
  first.hide();
  QDialog* setup = OpenPrinterSetup({}, {}, settings, &windows.Console());
  press(setup);
  setup->reject();
  platform.SetAnswerer({});
  Enter(EventKind::Click, "frmSerialPort.cmdPractice");
  for (const char* asks : {"frmPractice.cmdBegin", "frmJudge.mnuSetEventName"}) {
    QTimer::singleShot(50, [&] {
      auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      press(box);
      box->reject();
    });
    if (asks[3] == 'J') Enter(EventKind::Activate, "frmJudge");
    Enter(EventKind::Click, asks);
  }
  EXPECT_EQ(opened, "first-contest first-contest printing practice console ");
  EXPECT_EQ(log.keys, "");
  shows = false;
  Enter(EventKind::Click, "frmJudge.mnuManual");
  EXPECT_EQ(judge().lblNotice.Caption(),
            "No program shows web pages. The manual is " + InFolder("index.html"));
}

TEST_F(InputTest, CtrlSSavesCtrlPPrintsAndTheFileMenuOpensWhatWasOpenBefore) {
  struct Printer : HeatPrinter {
    void PrintHeat(const RaceRecord&) override { ++printed; }
    int printed = 0;
  } printer;
  Scoreboard scoreboard(program, windows);
  judge().SetPrinter(&printer);
  Click(judge().cmdStart);
  Key(Qt::Key_S, Qt::ControlModifier);
  judge().FinalizeRace();
  Enter(EventKind::Hover, "frmJudge.lblStatus");
  EXPECT_TRUE(Shown(judge().lblUnsaved)->isVisible());
  Click(judge().txtComments);
  Keys("gusty");
  int prints = 0;
  for (const char* menu : {"lblStatus", "mnuLink", "mnuLog", "mnuScoreboard"}) {
    Enter(EventKind::Click, std::string("frmJudge.") + menu);
    Settle();
    QTest::keyClick(QApplication::activeWindow()->windowHandle(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(printer.printed, ++prints) << menu;
  }
  QTest::keyClick(windows.Link().windowHandle(), Qt::Key_S, Qt::ControlModifier);
  windows.Console().activateWindow();
  Settle();
  EXPECT_EQ(program.project().GetProjectValue("Race1", "Comments", ""), "gusty");
  EXPECT_FALSE(Shown(judge().lblUnsaved)->isVisible());
  EXPECT_EQ(Shown(judge().cmdSave)->toolTip(), "No race waits to be saved");

  judge().SetPrinter(nullptr);
  answer = [this](const DialogBox& box) {
    return box.title == "New Quorvane Project" ? DialogAnswer{DialogAnswer::Word::File, InFolder("b & c.ini")}
                                               : Demo::Answer(box);
  };
  MenuView& menus = *windows.Console().Menu();
  EXPECT_EQ(menus.Find(&judge().mnuOpenRecent)->toolTip(), "No other project was opened before");
  menus.Find(&judge().mnuNewProject)->trigger();
  EXPECT_EQ(program.race().ProjectFile, InFolder("b & c.ini"));
  QMenu& recent = *menus.Find(&judge().mnuOpenRecent)->menu();
  for (const char* file : {"test.ini", "b & c.ini"}) {
    Key(Qt::Key_F, Qt::AltModifier);
    ASSERT_EQ(recent.actions().size(), 1) << file;
    const QString named = recent.actions()[0]->text();
    EXPECT_TRUE(named.startsWith(QString(file).replace("&", "&&"))) << named.toStdString();
    menus.Find(&judge().mnuFile)->menu()->hide();
    recent.actions()[0]->trigger();
    EXPECT_EQ(program.race().ProjectFile, InFolder(file));
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

TEST_F(InputTest, KeysAreABoxsOwnWhileItIsOpen) {
  platform.SetAnswerer({});
  QTimer::singleShot(50, [] {
    QWidget* box = QApplication::activeModalWidget();
    QTest::keyClick(box, Qt::Key_F2);
    QTest::keyClicks(box->focusWidget(), "7");
    QTest::keyClick(box, Qt::Key_Return);
  });
  Enter(EventKind::Click, "frmJudge.mnuSetEventName");
  EXPECT_EQ(judge().EventName(), "7");
  EXPECT_EQ(log.keys, "");
}

TEST_F(InputTest, OnlyComingFromAnotherWindowOfTheProgramActivates) {
  const auto operatorActs = [this] {
    Settle();  // what the platform itself tells of the focus
    Key(Qt::Key_Shift);
  };
  FormWindow& console = windows.Console();
  FormWindow& link = windows.Link();
  operatorActs();
  FocusOn(console);
  EXPECT_EQ(FocusOn(link), "frmSerialPort ");
  EXPECT_EQ(FocusOn(link), "");
  QWindow dialog;
  for (FormWindow* next : {&link, &console}) {
    windows.All().FocusMoved(&dialog);
    EXPECT_EQ(FocusOn(*next), "");
  }
  windows.All().FocusMoved(nullptr);  // another program's window
  QTest::qWait(200);
  EXPECT_EQ(FocusOn(link), "");
  windows.All().FocusMoved(nullptr);  // merely on the way
  EXPECT_EQ(FocusOn(console), "frmJudge ");

  // However often the desktop moves the focus between windows that the program shows.
  Enter(EventKind::Click, "frmJudge.lblComm");
  for (FormWindow* at : {&link, &console, &link}) EXPECT_EQ(FocusOn(*at), at == &console ? "frmJudge " : "");
  operatorActs();
  FocusOn(console);
  EXPECT_EQ(FocusOn(link), "frmSerialPort ");
}

// Key, its place on the keyboard, whether something is being typed, and the console's key. The French keys
// for e grave and a grave stand where 7 and 0 are; a server may also number the places in its own way.
TEST(ConsoleKeyTest, OnlyPlainFunctionKeysAndFourDigitsAreConsoleKeys) {
  for (const auto& row : Rows("ui/keys.json")) {
    const QKeyCombination keys = QKeySequence::fromString(QString::fromStdString(row[0]))[0];
    const auto place = static_cast<quint32>(std::stoi(row[1]));
    const QKeyEvent press(QEvent::KeyPress, keys.key(), keys.keyboardModifiers(), place, 0, 0);
    EXPECT_EQ(KeyRouter::ConsoleKey(press, row[2] == "typing"), row[3]) << row[0] << " at " << place;
  }
}

}  // namespace
}  // namespace quorvane
