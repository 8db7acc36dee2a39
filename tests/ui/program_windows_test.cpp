#include <QAction>
#include <QCloseEvent>
#include <QEnterEvent>
#include <QLabel>

#include <csignal>

#include "tests/ui/program_fixture.h"
#include "ui/end_requests.h"

namespace quorvane {
namespace {

class ProgramWindowsTest : public ProgramTest {};

TEST_F(ProgramWindowsTest, StartsWithTheConsoleAndTheLinkShown) {
  serial.ports = {{2, true}, {5, true}};
  settings.SaveSetting("frmSerialPort", "CommPort", "5");
  Load();
  EXPECT_TRUE(windows.Console().isVisible());
  EXPECT_TRUE(windows.Link().isVisible());
  EXPECT_EQ(windows.Console().windowTitle(), QStringLiteral("Quorvane - Demonstration (test.ini) - "));
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(windows.Lane(i).isVisible());
  EXPECT_EQ(dynamic_cast<QLabel*>(Shown(program.judge().lblComm))->text(), QStringLiteral("COM5"));
  // A space pressed at once must not cut the link.
  EXPECT_EQ(windows.Link().focusWidget(), Shown(program.link().optPort[2]));
  EXPECT_EQ(windows.All().DialogParent(), &windows.Link());
  windows.Link().showMinimized();
  EXPECT_EQ(windows.All().DialogParent(), &windows.Console())
      << "a box over a minimised window is out of sight";
  // The hands' buttons are gone while the stations report.
  EXPECT_TRUE(Shown(program.lane(0).cmdLap)->isHidden());
}

TEST_F(ProgramWindowsTest, HandsGetTheirButtonsBackWhileTheLinkIsDown) {
  serial.ports = {{5, true}};
  settings.SaveSetting("frmSerialPort", "CommPort", "5");
  Load();
  ClickOn(Shown(program.judge().cmdStart));
  for (const bool there : {true, false, true}) {
    serial.ports.clear();
    if (there) serial.ports = {{5, true}};
    Event plugged;
    plugged.kind = EventKind::Ports;
    if (there) plugged.numbers = {5};
    program.door().Enter(plugged);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(Shown(program.lane(i).cmdCut)->isVisible(), !there);
      EXPECT_TRUE(there || Shown(program.lane(i).cmdCut)->isEnabled());
    }
  }
  EXPECT_FALSE(Shown(program.judge().lblController)->isVisible());
  program.link().chkSystemController.SetValue(1);
  Enter(EventKind::Click, "frmJudge.lblReadComm");
  EXPECT_TRUE(Shown(program.judge().lblController)->isVisible());
}

TEST_F(ProgramWindowsTest, HandStartedRaceRunsOnTheProgramsOwnTimers) {
  Load();
  const auto clock = [&] { return dynamic_cast<QLabel*>(Shown(program.judge().lblStatus))->text(); };
  EXPECT_EQ(clock(), QStringLiteral("Waiting"));
  ClickOn(Shown(program.judge().cmdStart));
  EXPECT_TRUE(program.race().RaceActive);
  EXPECT_FALSE(Shown(program.judge().cmdStart)->isEnabled());
  EXPECT_TRUE(WaitFor([&] { return clock() == QStringLiteral("0.3"); })) << clock().toStdString();
}

TEST_F(ProgramWindowsTest, WhileARaceIsFlownNothingOpensABoxThatWouldSwallowAHandsKey) {
  Load();
  frmJudge& judge = program.judge();
  ClickOn(Shown(judge.cmdStart));
  const std::size_t before = shown.size();
  ClickOn(Shown(judge.chkSixtySecondCount));
  ClickOn(Shown(program.lane(1).lblStatus));
  EXPECT_EQ(judge.chkSixtySecondCount.Value(), 0);
  for (Control* menu : {&judge.mnuSetEventName, &judge.mnuLaneColors, &judge.mnuHeatsPerRound}) {
    QAction* entry = windows.Console().Menu()->Find(*menu);
    entry->trigger();
    EXPECT_EQ(entry->toolTip(), QStringLiteral("Locked while a race is flown"));
  }
  EXPECT_EQ(Shown(judge.chkSixtySecondCount)->toolTip(), QStringLiteral("Locked while a race is flown"));
  EXPECT_EQ(shown.size(), before);
  ClickOn(Shown(judge.cmdReset));  // answered as in the demonstration: the race is over
  EXPECT_TRUE(Shown(program.lane(1).lblStatus)->isEnabled());
  EXPECT_EQ(Shown(program.lane(1).lblStatus)->toolTip(), QString());
}

TEST_F(ProgramWindowsTest, LinkWidensForTheMessageDetail) {
  Load();
  const int narrow = windows.Link().width();
  ClickOn(Shown(program.link().cmdMore));
  const int wide = windows.Link().width();
  ClickOn(Shown(program.link().cmdMore));
  EXPECT_EQ(windows.Link().width(), narrow);
  EXPECT_GT(std::abs(wide - narrow), 200);
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
  serial.ports = {{5, true}};
  settings.SaveSetting("frmSerialPort", "CommPort", "5");
  settings.SaveSetting("frmSerialPort", "More", ">");
  Load();
  PaintCounter counter;
  Shown(program.link().lblMsg)->installEventFilter(&counter);
  Event bytes;
  bytes.kind = EventKind::Bytes;
  for (std::uint8_t i = 0; i < 200; ++i) {
    StationMessage message;
    message.Wig1 = kWig1;
    message.Wig2 = kWig2;
    message.From = i % 3;
    message.To = kConsole;
    message.Temp = i;
    message.Ecc = ComputeEcc(EncodeFrame(message));
    const FrameBytes frame = EncodeFrame(message);
    bytes.bytes.insert(bytes.bytes.end(), frame.begin(), frame.end());
  }
  program.door().Enter(bytes);
  Settle();
  EXPECT_EQ(program.link().Counters().GoodFrames(), 200);
  EXPECT_GT(counter.painted, 0);
  EXPECT_LT(counter.painted, 40);
}

TEST_F(ProgramWindowsTest, ClosingAWindowIsForTheProgramToDecide) {
  Load();
  QCloseEvent closeLink;
  QCoreApplication::sendEvent(&windows.Link(), &closeLink);
  EXPECT_FALSE(windows.Link().isVisible());

  answer = [](const DialogBox&) { return DialogAnswer{DialogAnswer::Word::No}; };
  QCloseEvent closeConsole;
  QCoreApplication::sendEvent(&windows.Console(), &closeConsole);
  EXPECT_FALSE(closeConsole.isAccepted());
  EXPECT_TRUE(windows.Console().isVisible());
  EXPECT_EQ(shown.back(), "Close Quorvane");
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
  QTimer::singleShot(50, [this] { Enter(EventKind::Click, "frmLane1.lblStatus"); });
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
  for (int i = 0; i < 3; ++i) {
    lane.lblCut[i].SetCaption("C P" + std::to_string(i));
    lane.lblCut[i].SetAnchor(&lane.lblLap[4]);
    lane.lblCut[i].SetVisible(true);
  }
  windows.All().Apply();
  const QRect cell = Shown(lane.lblLap[4])->geometry();
  QRect above;
  for (int i = 0; i < 3; ++i) {
    const QRect mark = Shown(lane.lblCut[i])->geometry();
    EXPECT_GE(mark.top(), cell.bottom());
    EXPECT_LE(std::abs(mark.left() - cell.left()), 1);
    EXPECT_FALSE(mark.intersects(above));
    above = mark;
  }
  for (int i = 0; i < 3; ++i) lane.lblCut[i].SetAnchor(&lane.lblLap[9]);
  windows.All().Apply();
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

TEST_F(ProgramWindowsTest, PanelsStandInTheirFramesAtEverySize) {
  Load();
  for (const QSize size : {QSize(1024, 700), QSize(1280, 800), QSize(2560, 1440)}) {
    windows.Console().resize(size);
    Settle();
    for (int i = 0; i < 4; ++i) {
      const QRect panel = windows.Lane(i).geometry();
      EXPECT_TRUE(windows.Console().View().rect().contains(panel));
      const int above = i == 0 ? -1 : windows.Lane(i - 1).geometry().bottom();
      EXPECT_GT(panel.top(), above);
    }
  }
}

// The operator's way round: nothing that he does in any order may bring the program down.
TEST_F(ProgramWindowsTest, BearsAnyOrderOfClicksAndKeys) {
  serial.ports = {{1, true}, {3, false}};
  Load();
  unsigned random = 12345;
  const auto next = [&](std::size_t most) {
    random = random * 1664525U + 1013904223U;
    return static_cast<std::size_t>(random >> 8) % most;
  };
  std::vector<Control*> controls;
  for (Form* form : program.door().AllForms().All()) {
    for (const Control& control : form->Controls()) {
      if (control.Name() != "mnuExit") controls.push_back(form->Find(control.Name()));
    }
  }
  for (int i = 0; i < 3000; ++i) {
    Control& control = *controls[next(controls.size())];
    const FormView* view = windows.All().FindView(control.Owner());
    const ControlView* shown_as = view == nullptr ? nullptr : view->Find(control);
    if (shown_as != nullptr && shown_as->Widget()->isVisible() && i % 2 == 0) {
      ClickOn(shown_as->Widget());
    } else if (i % 3 == 0) {
      Press(&windows.Console(), Qt::Key_F1 + static_cast<int>(next(12)));
    } else {
      Enter(EventKind::Hover, control.FullName());
      Enter(EventKind::Type, control.FullName(), std::to_string(next(20)));
    }
    if (i % 100 == 0) Settle();
  }
  EXPECT_TRUE(windows.Console().isVisible());
  EXPECT_EQ(program.door().ErrorsContained(), 0) << program.door().LastError();
}

}  // namespace
}  // namespace quorvane
