#include "console/score.h"

#include <gtest/gtest.h>

#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

// "laps cuts time place" of each lane, "!" behind a place that is none.
std::vector<std::string> Rows(const Score& score) {
  std::vector<std::string> rows;
  for (const Score::Lane& lane : score.lanes) {
    if (!lane.flies) continue;
    rows.push_back(lane.laps + "|" + lane.cuts + "|" + lane.time + "|" + lane.place + (lane.bad ? "!" : ""));
  }
  return rows;
}

using Lines = std::vector<std::string>;

TEST(ScoreKeeper, ShowsTheRaceThenItsResultAndNothingOfARaceThatIsReflown) {
  ConsoleRig rig;
  rig.Load();
  ScoreKeeper keeper(rig.program);
  EXPECT_EQ(Rows(keeper.Now()), Lines(4, "|||"));
  EXPECT_EQ(keeper.Now().clock, "Waiting");

  rig.Click("frmJudge.cmdStart");
  const std::int64_t start = rig.platform.ClockMs();
  for (int lap = 1; lap <= 11; ++lap) {
    rig.At(start + lap * 7000);
    rig.Click("frmLane1.cmdLap");
    if (lap == 3) rig.Click("frmLane1.cmdCut");
    if (lap <= 3) rig.Click("frmLane2.cmdLap");
    if (lap == 2 || lap == 4) rig.Click("frmLane2.cmdCut");
    rig.At(start + lap * 7000 + 3000);
    if (lap == 2) rig.Click("frmLane2.cmdCut");
    if (lap == 1) rig.Click("frmLane3.cmdLap");
    if (lap == 3) {
      EXPECT_EQ(Rows(keeper.Now()), (Lines{"3|1|21.00|", "3|2|21.00|DBL CUT!", "1||10.00|", "|||"}));
    }
  }
  EXPECT_EQ(Rows(keeper.Now()), (Lines{"11|1|77.00|", "3|3|21.00|DBL CUT!", "1||10.00|DNF!", "|||"}));
  rig.At(rig.platform.ClockMs() + 40000);
  EXPECT_EQ(Rows(keeper.Now()),
            (Lines{"11|1|1:17.00|1st", "3|3|21.00|Dbl Cut!", "1||10.00|DNF!", "|||DNF!"}));

  rig.Click("frmLane1.cmdLap");  // a lap more than are listed
  EXPECT_EQ(Rows(keeper.Now())[0], "12|1|1:17.00|1st");
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(keeper.Now().heat + ", " + keeper.Now().clock, "Round 1  Heat 1, Result");
  EXPECT_EQ(Rows(keeper.Now()), (Lines{"11|1|1:17.00|1st", "3|3||Dbl Cut!", "1|||DNF!", "|||DNF!"}));

  rig.Click("frmJudge.cmdStart");
  rig.At(rig.platform.ClockMs() + 40000);
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(keeper.Now().heat + ", " + keeper.Now().clock, "Round 1  Heat 2, Result");

  rig.Click("frmJudge.cmdDecHeat");
  rig.Click("frmJudge.mnuAmend");
  rig.Answer(DialogAnswer::Word::Text, "Protest");
  rig.Click("frmLane1.lblStatus");
  rig.Click("frmJudge.cmdSave");
  rig.Click("frmJudge.cmdIncHeat");
  rig.race().LastRaceRun = 2;
  EXPECT_EQ(Rows(keeper.Now())[0], "|||Protest!");

  rig.Answer(DialogAnswer::Word::Yes);
  rig.Click("frmSerialPort.cmdPractice");
  rig.Click("frmPractice.cmdBegin");
  EXPECT_TRUE(keeper.Now().practice && keeper.Now().clock == "Waiting");
  rig.Click("frmJudge.cmdStart");
  rig.At(rig.platform.ClockMs() + 40000);
  rig.Click("frmJudge.cmdSave");
  EXPECT_TRUE(keeper.Now().practice && keeper.Now().clock == "Result");
  rig.Click("frmPractice.cmdEnd");
  EXPECT_FALSE(keeper.Now().practice);
  EXPECT_EQ(Rows(keeper.Now())[0], "|||Protest!");  // not race 1, which practice has flown, too

  for (int race = 3; race > 1; --race) rig.Click("frmJudge.cmdDecHeat");
  EXPECT_EQ(keeper.Now().clock, "Waiting");
  EXPECT_EQ(Rows(keeper.Now())[0], "12|1|1:17.00|1st");
  rig.Click("frmJudge.cmdRefly");
  EXPECT_EQ(keeper.Now().heat, "Round 1  Heat 1  Refly");
  EXPECT_EQ(Rows(keeper.Now()), Lines(4, "|||"));
}

}  // namespace
}  // namespace quorvane
