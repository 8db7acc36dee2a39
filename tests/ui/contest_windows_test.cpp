#include <QClipboard>
#include <QTableView>

#include "tests/ui/program_fixture.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"

namespace quorvane {
namespace {

class ContestWindowsTest : public ProgramTest {
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

TEST_F(ContestWindowsTest, ResultsFollowEachSaveAndGoOutAsTheyAreShown) {
  ResultsWindow results(program, windows);
  Load();
  Click("frmJudge.mnuResults");
  EXPECT_TRUE(results.isVisible());
  EXPECT_EQ(results.Model().rowCount(), 0);
  FlyRace();
  Click("frmJudge.cmdSave");
  ASSERT_TRUE(WaitFor([&] { return results.Model().rowCount() == 4; }));
  results.View().sortByColumn(5, Qt::DescendingOrder);  // by lane
  EXPECT_EQ(results.Model().index(0, 5).data().toString(), "4");
  results.View().selectRow(3);
  results.Copy();
  const QString copied = QGuiApplication::clipboard()->text();
  EXPECT_EQ(copied.count('\n'), 2) << copied.toStdString();
  EXPECT_NE(copied.indexOf("First"), -1);

  const std::string project = program.race().ProjectFile;
  const std::string before = BytesOf(project);
  for (const auto& [ending, begin] : std::map<std::string, std::string>{
           {"csv", "\xEF\xBB\xBF"}, {"json", "{"}, {"HTML", "<!DOCTYPE html>"}, {"txt", ""}}) {
    const std::string path = folder.filePath("out.").toStdString() + ending;
    EXPECT_EQ(results.Save(path), std::nullopt) << ending;
    EXPECT_EQ(BytesOf(path).rfind(begin, 0), 0U) << ending;
    EXPECT_NE(BytesOf(path).find("First"), std::string::npos) << ending;
  }
  EXPECT_NE(results.Save(project), std::nullopt);
  EXPECT_NE(results.Save(folder.filePath("none/out.csv").toStdString()), std::nullopt);
  EXPECT_EQ(BytesOf(project), before);
}

TEST_F(ContestWindowsTest, ScoreboardFollowsTheRaceInItsWindow) {
  Scoreboard board(program, windows, settings);
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
  for (const QSize size : {QSize(480, 300), QSize(1920, 1080), QSize(700, 1200)}) {
    board.resize(size);
    EXPECT_FALSE(board.grab().isNull());
  }
  board.SetFullScreen(true);
  Press(&board, Qt::Key_Escape);
  EXPECT_TRUE(board.isVisible() && !board.isFullScreen());
  Press(&board, Qt::Key_Escape);
  EXPECT_FALSE(board.isVisible());
}

}  // namespace
}  // namespace quorvane
