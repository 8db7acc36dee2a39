#include <QAction>
#include <QClipboard>
#include <QCloseEvent>
#include <QEnterEvent>
#include <QFile>
#include <QImage>
#include <QTableView>
#include <csignal>

#include "programs/commit.h"
#include "tests/ui/fixture.h"
#include "ui/end_requests.h"

namespace quorvane {
namespace {

class ProgramWindowsTest : public ProgramTest {
 protected:
  // Lane 1 gets its laps by hand, lane 2 only one.
  void FlyRace() {
    program.judge().chkSixtySecondCount.SetValue(0);
    Click("frmJudge.cmdStart");
    for (std::int32_t lap = 1; lap <= 10; ++lap) program.lane(0).DoLap(lap * 6000, 0);
    program.lane(1).DoLap(6000, 0);
    program.judge().FinalizeRace();
    program.race().RaceDone = true;
    Click("frmJudge.lblStatus");
  }
};

TEST_F(ProgramWindowsTest, StartWithTheConsoleAndTheLinkAndCloseWhenTheProgramSaysSo) {
  UsePort5();
  serial.ports.insert(2);
  Load();
  EXPECT_EQ(windows.Console().windowTitle(), "Quorvane - Demonstration (test.ini) - ");
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(windows.All().FindView(program.lane(i))->isVisible());
  EXPECT_EQ(Shown<CaptionLabel>(program.judge().lblComm)->Text(), "COM5");
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

TEST_F(ProgramWindowsTest, FindTheirSoundAndTellFromWhatTheyAreBuilt) {
  EXPECT_TRUE(QFile::exists(QString::fromStdString(platform.ProgramFolder() + "WarbirdCountdownStart.wav")));
  const std::string version = program.about().lblVersion.Caption();
  EXPECT_NE(version.find("Version 0.1.0 (" + ProgramCommit() + "), "), std::string::npos) << version;
}

TEST_F(ProgramWindowsTest, HandsGetTheirButtonsBackWhileTheLinkIsDown) {
  UsePort5();
  Load();
  EXPECT_TRUE(Shown(program.lane(0).cmdLap)->isHidden());
  ClickOn(Shown(program.judge().cmdStart));
  for (const std::vector<int>& ports : {std::vector{5}, {}, {5}}) {
    serial.ports = {ports.begin(), ports.end()};
    program.door().Enter({.kind = EventKind::Ports, .numbers = ports});
    for (int i = 0; i < 4; ++i) {
      const QWidget& cut = *Shown(program.lane(i).cmdCut);
      EXPECT_EQ(cut.isVisible() && cut.isEnabled(), ports.empty());
    }
  }
}

TEST_F(ProgramWindowsTest, WhileARaceIsFlownTheClockRunsAndNothingOpensABoxThatWouldSwallowAHandsKey) {
  Load();
  frmJudge& judge = program.judge();
  ClickOn(Shown(judge.cmdStart));
  const auto* clock = Shown<CaptionLabel>(judge.lblStatus);
  EXPECT_TRUE(WaitFor([&] { return clock->Text() == "0.3"; })) << clock->Text().toStdString();
  const std::size_t before = shown.size();
  ClickOn(Shown(judge.chkSixtySecondCount));
  ClickOn(Shown(program.lane(1).lblStatus));
  EXPECT_EQ(judge.chkSixtySecondCount.Value(), 0);
  for (Control* menu : {&judge.mnuSetEventName, &judge.mnuLaneColors, &judge.mnuHeatsPerRound}) {
    QAction* entry = windows.Console().Menu()->Find(menu);
    entry->trigger();
    EXPECT_EQ(entry->toolTip(), "Locked while a race is flown");
  }
  EXPECT_EQ(Shown(judge.chkSixtySecondCount)->toolTip(), "Locked while a race is flown");
  EXPECT_EQ(shown.size(), before);
}

struct PaintCounter : QObject {
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
  Settle();  // what has not come to the screen yet is not painted
  PaintCounter counter;
  Shown(program.link().lblMsg)->installEventFilter(&counter);
  Event flood{.kind = EventKind::Bytes};
  for (int i = 0; i < 200; ++i) {
    const std::vector<std::uint8_t> frame = Frame(i % 3, 6, i).Bytes();
    flood.bytes.insert(flood.bytes.end(), frame.begin(), frame.end());
  }
  program.door().Enter(flood);
  Settle();
  EXPECT_EQ(program.link().Counters().good, 200);
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
  QTimer limit;  // for a signal that is lost
  limit.callOnTimeout([] { QCoreApplication::exit(1); });
  limit.start(10000);
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(program.judge().HasRun(1));
}

TEST_F(ProgramWindowsTest, LapCellsAndTheirMarksCanBeReadAndMarksPopUpOverTheRest) {
  Load();
  frmLane& lane = program.lane(1);
  windows.Console().resize(1280, 800);
  const struct {
    int cell, count;
    const char* caption;
    int columns, lines;  // that each mark takes
  } cases[] = {{4, 1, "P1", 1, 1},
               {4, 1, "C P2 43.95", 1, 2},
               {4, 3, "C P2 43.95", 2, 1},
               {9, 3, "C P2 43.95", 2, 1},
               {8, 3, "C P2 43.95", 1, 1}};  // the result of lap 10 stands beside
  for (const auto& c : cases) {
    for (int i = 0; i < 3; ++i) {
      lane.lblCut[i].SetCaption(c.caption);
      lane.lblCut[i].SetAnchor(&lane.lblLap[c.cell]);
      lane.lblCut[i].SetVisible(i < c.count);
    }
    windows.All().Apply();
    const QRect cell = Shown(lane.lblLap[c.cell])->geometry();
    int above = cell.bottom();
    for (int i = 0; i < c.count; ++i) {
      const QRect mark = Shown(lane.lblCut[i])->geometry();
      EXPECT_GT(mark.top(), above) << c.cell;
      EXPECT_EQ(mark.left(), cell.left()) << c.cell;
      EXPECT_NEAR(mark.width(), c.columns * cell.width(), 2) << c.cell;
      EXPECT_EQ(mark.height() > 28, c.lines == 2) << c.cell << c.caption;
      above = mark.bottom();
    }
    if (c.lines == 1) continue;
    const QImage low = Shown(lane.lblCut[0])->grab({3, 23, cell.width() - 6, 8}).toImage();
    QImage empty(low);
    empty.fill(low.pixel(0, 0));
    EXPECT_NE(low, empty) << "the second line";
  }
  lane.lblLap[0].SetCaption("1234.56");
  windows.All().Apply();
  for (Control* cell : lane.lblLap) EXPECT_EQ(Shown(*cell)->font(), Shown(lane.lblLap[0])->font());
  const QWidget& widest = *Shown(lane.lblLap[0]);
  EXPECT_LE(QFontMetrics(widest.font()).horizontalAdvance("1234.56"), widest.width());
  for (int height = 640; height < 780; height += 3) {
    windows.Console().resize(1280, height);
    Settle();
    EXPECT_EQ(Shown(lane.cmdLap)->font(), Shown(program.lane(0).cmdLap)->font()) << height;
  }
  QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
  QCoreApplication::sendEvent(Shown(lane.lblCut[2]), &enter);
  EXPECT_TRUE(lane.cmdShow.Visible());
  EXPECT_FALSE(Shown(lane.cmdShow)->geometry().intersects(Shown(lane.lblCut[2])->geometry()));
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(Shown(lane.lblCut[2]), &leave);
  EXPECT_FALSE(lane.cmdShow.Visible());
}

TEST_F(ProgramWindowsTest, ResultsFollowEachSaveAndGoOutAsTheyAreShown) {
  ResultsWindow results(program, windows);
  Load();
  Click("frmJudge.mnuResults");
  EXPECT_TRUE(results.isVisible());
  const QAbstractItemModel& rows = *results.View().model();
  EXPECT_EQ(rows.rowCount(), 0);
  FlyRace();
  Click("frmJudge.cmdSave");
  ASSERT_TRUE(WaitFor([&] { return rows.rowCount() == 4; }));
  results.View().sortByColumn(5, Qt::DescendingOrder);  // by lane
  EXPECT_EQ(rows.index(0, 5).data().toString(), "4");
  results.View().selectRow(3);
  results.Copy();
  const QString copied = QGuiApplication::clipboard()->text();
  EXPECT_EQ(copied.count('\n'), 2) << copied.toStdString();
  EXPECT_NE(copied.indexOf("First"), -1);

  const std::string before = FileBytes(project);
  for (const auto& [ending, begin] : std::map<std::string, std::string>{
           {"csv", "\xEF\xBB\xBF"}, {"json", "{"}, {"HTML", "<!DOCTYPE html>"}, {"txt", ""}}) {
    const std::string path = InFolder("out." + ending);
    EXPECT_EQ(results.Save(path), std::nullopt) << ending;
    EXPECT_EQ(FileBytes(path).rfind(begin, 0), 0U) << ending;
    EXPECT_NE(FileBytes(path).find("First"), std::string::npos) << ending;
  }
  EXPECT_NE(results.Save(project), std::nullopt);
  EXPECT_NE(results.Save(InFolder("none/out.csv")), std::nullopt);
  EXPECT_EQ(FileBytes(project), before);
}

TEST_F(ProgramWindowsTest, ScoreboardFollowsTheRaceInItsWindow) {
  Scoreboard board(program, windows);
  Load();
  Click("frmJudge.mnuScoreboard");
  ASSERT_TRUE(board.isVisible());
  const QImage before = board.grab().toImage();
  FlyRace();
  ASSERT_TRUE(WaitFor([&] { return board.Shown().lanes[0].place == "1st"; }));
  Settle();
  EXPECT_NE(board.grab().toImage(), before);
  Click("frmJudge.cmdReset");
  ASSERT_TRUE(WaitFor([&] { return board.Shown().clock == "Result"; }));
  board.SetFullScreen(true);
  Press(&board, Qt::Key_Escape);
  EXPECT_TRUE(board.isVisible() && !board.isFullScreen());
  Press(&board, Qt::Key_Escape);
  EXPECT_FALSE(board.isVisible());
}

}  // namespace
}  // namespace quorvane
