#include <QAction>
#include <QCloseEvent>
#include <QEnterEvent>
#include <QLabel>
#include <csignal>

#include "tests/support/console_rig.h"
#include "tests/ui/program_fixture.h"
#include "ui/end_requests.h"

namespace quorvane {
namespace {

class ProgramWindowsTest : public ProgramTest {};

TEST_F(ProgramWindowsTest, StartWithTheConsoleAndTheLinkAndCloseWhenTheProgramSaysSo) {
  serial.ports = {{2, true}, {5, true}};
  settings.SaveSetting("frmSerialPort", "CommPort", "5");
  Load();
  EXPECT_EQ(windows.Console().windowTitle(), "Quorvane - Demonstration (test.ini) - ");
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(windows.Lane(i).isVisible());
  EXPECT_EQ(dynamic_cast<QLabel*>(Shown(program.judge().lblComm))->text(), "COM5");
  // A space pressed at once must not cut the link.
  EXPECT_EQ(windows.Link().focusWidget(), Shown(program.link().optPort[2]));
  EXPECT_EQ(windows.All().DialogParent(), &windows.Link());
  windows.Link().showMinimized();
  EXPECT_EQ(windows.All().DialogParent(), &windows.Console()) << "nobody sees a box over a minimised window";

  const int narrow = windows.Link().width();
  ClickOn(Shown(program.link().cmdMore));
  EXPECT_GT(std::abs(windows.Link().width() - narrow), 200);
  ClickOn(Shown(program.link().cmdMore));
  EXPECT_EQ(windows.Link().width(), narrow);
  windows.Link().close();
  EXPECT_FALSE(windows.Link().isVisible());
  answer = [](const DialogBox&) { return DialogAnswer{DialogAnswer::Word::No}; };
  EXPECT_FALSE(windows.Console().close());
  EXPECT_EQ(shown.back(), "Close Quorvane");
}

TEST_F(ProgramWindowsTest, HandsGetTheirButtonsBackWhileTheLinkIsDown) {
  UsePort5();
  Load();
  EXPECT_TRUE(Shown(program.lane(0).cmdLap)->isHidden());
  ClickOn(Shown(program.judge().cmdStart));
  for (const bool there : {true, false, true}) {
    serial.ports.clear();
    if (there) serial.ports = {{5, true}};
    program.door().Enter({.kind = EventKind::Ports, .numbers = std::vector<int>(there ? 1 : 0, 5)});
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(Shown(program.lane(i).cmdCut)->isVisible(), !there);
      EXPECT_TRUE(there || Shown(program.lane(i).cmdCut)->isEnabled());
    }
  }
  EXPECT_FALSE(Shown(program.judge().lblController)->isVisible());
  program.link().chkSystemController.SetValue(1);
  Click("frmJudge.lblReadComm");
  EXPECT_TRUE(Shown(program.judge().lblController)->isVisible());
}

TEST_F(ProgramWindowsTest, WhileARaceIsFlownTheClockRunsAndNothingOpensABoxThatWouldSwallowAHandsKey) {
  Load();
  frmJudge& judge = program.judge();
  ClickOn(Shown(judge.cmdStart));
  EXPECT_FALSE(Shown(judge.cmdStart)->isEnabled());
  const auto* clock = dynamic_cast<QLabel*>(Shown(judge.lblStatus));
  EXPECT_TRUE(WaitFor([&] { return clock->text() == "0.3"; })) << clock->text().toStdString();
  const std::size_t before = shown.size();
  ClickOn(Shown(judge.chkSixtySecondCount));
  ClickOn(Shown(program.lane(1).lblStatus));
  EXPECT_EQ(judge.chkSixtySecondCount.Value(), 0);
  for (Control* menu : {&judge.mnuSetEventName, &judge.mnuLaneColors, &judge.mnuHeatsPerRound}) {
    QAction* entry = windows.Console().Menu()->Find(*menu);
    entry->trigger();
    EXPECT_EQ(entry->toolTip(), "Locked while a race is flown");
  }
  EXPECT_EQ(Shown(judge.chkSixtySecondCount)->toolTip(), "Locked while a race is flown");
  EXPECT_EQ(shown.size(), before);
  ClickOn(Shown(judge.cmdReset));  // answered as in the demonstration: the race is over
  EXPECT_TRUE(Shown(program.lane(1).lblStatus)->isEnabled());
  EXPECT_EQ(Shown(program.lane(1).lblStatus)->toolTip(), QString());
}

class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++painted;
    return false;
  }
  int painted = 0;
};

TEST_F(ProgramWindowsTest, AFloodOfFramesIsNotPaintedFrameByFrame) {
  UsePort5();
  settings.SaveSetting("frmSerialPort", "More", ">");
  Load();
  PaintCounter counter;
  Shown(program.link().lblMsg)->installEventFilter(&counter);
  Event flood{.kind = EventKind::Bytes};
  for (int i = 0; i < 200; ++i) {
    const std::vector<std::uint8_t> frame = Frame(i % 3, 6, i).Bytes();
    flood.bytes.insert(flood.bytes.end(), frame.begin(), frame.end());
  }
  program.door().Enter(flood);
  Settle();
  EXPECT_EQ(program.link().Counters().GoodFrames(), 200);
  EXPECT_GT(counter.painted, 0);
  EXPECT_LT(counter.painted, 40);
}

// Nobody answers the box of the finish order, which is a real one here.
TEST_F(ProgramWindowsTest, SignalSavesTheFinishedRaceBehindAnOpenBoxAndEndsTheProgram) {
  const EndRequests endRequests(program);
  Load();
  ClickOn(Shown(program.judge().cmdStart));
  program.judge().FinalizeRace();
  program.race().RaceDone = true;
  Settle();
  platform.SetAnswerer({});
  QTimer::singleShot(50, [this] { Click("frmLane1.lblStatus"); });
  QTimer::singleShot(200, [] {
    EXPECT_NE(QApplication::activeModalWidget(), nullptr);
    std::raise(SIGTERM);
  });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(program.judge().HasRun(1));
}

TEST_F(ProgramWindowsTest, MarksStackUnderTheirLapCellAndPopUpOverTheRest) {
  Load();
  frmLane& lane = program.lane(1);
  const auto show = [&](Control& cell) {
    for (int i = 0; i < 3; ++i) {
      lane.lblCut[i].SetCaption("C P" + std::to_string(i));
      lane.lblCut[i].SetAnchor(&cell);
      lane.lblCut[i].SetVisible(true);
    }
    windows.All().Apply();
  };
  show(lane.lblLap[4]);
  int above = Shown(lane.lblLap[4])->geometry().bottom();
  for (int i = 0; i < 3; ++i) {
    const QRect mark = Shown(lane.lblCut[i])->geometry();
    EXPECT_GE(mark.top(), above);
    EXPECT_NEAR(mark.left(), Shown(lane.lblLap[4])->x(), 1);
    above = mark.bottom();
  }
  show(lane.lblLap[9]);
  for (const QLabel* text : windows.Lane(1).findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!text->objectName().isEmpty() || !text->isVisible()) continue;  // the captions of what stands there
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(text->geometry().intersects(Shown(lane.lblCut[i])->geometry()));
  }
  QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
  QCoreApplication::sendEvent(Shown(lane.lblCut[2]), &enter);
  EXPECT_TRUE(lane.cmdShow.Visible());
  EXPECT_FALSE(Shown(lane.cmdShow)->geometry().intersects(Shown(lane.lblCut[2])->geometry()));
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(Shown(lane.lblCut[2]), &leave);
  EXPECT_FALSE(lane.cmdShow.Visible());
}

}  // namespace
}  // namespace quorvane
