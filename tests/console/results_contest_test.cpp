// What the records say of the race on the console.

#include <gtest/gtest.h>

#include "console/race_on_console.h"
#include "results/results_formats.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

RaceRecord OnConsole(ConsoleRig& rig) {
  return RecordOnConsole(rig.judge(), rig.race(), OpenProject(rig.program.project(), rig.race()),
                         rig.platform.LocalNow());
}

// All that a record says, as a text to compare.
std::string Told(const RaceRecord& race) {
  return ResultsJson({race.eventName, race.projectFile, {race}});
}

// A heat flown by hand: lane 2 a novice, lane 1 with a cut, the others on the ground.
void FlyByHand(ConsoleRig& rig) {
  rig.Click("frmLane2.chkNovice");
  rig.Click("frmJudge.cmdStart");
  const std::int64_t start = rig.platform.ClockMs();
  for (int lap = 1; lap <= 11; ++lap) {
    rig.At(start + lap * 7000);
    rig.Click("frmLane1.cmdLap");
    if (lap == 3) rig.Click("frmLane1.cmdCut");
    rig.At(start + lap * 7000 + 500);
    if (lap <= 9) rig.Click("frmLane2.cmdLap");
  }
}

TEST(OnConsole, ARaceAndItsReflysAreToldAlikeBeforeAndAfterTheyAreSaved) {
  ConsoleRig rig;
  rig.Load();
  EXPECT_FALSE(OnConsole(rig).hasRun);
  EXPECT_EQ(OnConsole(rig).eventName, "Cup");
  for (int refly = 0; refly <= 2; ++refly) {
    if (refly > 0) {
      rig.Click("frmJudge.cmdDecHeat");
      rig.Click("frmJudge.cmdRefly");
    }
    FlyByHand(rig);
    EXPECT_TRUE(OnConsole(rig).hasRun);
    EXPECT_EQ(OnConsole(rig).lanes[0].placing, "");
    rig.At(rig.platform.ClockMs() + 40000);
    rig.Type("frmJudge.txtComments", "Smoke at pylon 2");
    const RaceRecord flown = OnConsole(rig);
    EXPECT_EQ(flown.refly, refly);
    EXPECT_TRUE(flown.lanes[1].novice);
    EXPECT_EQ(FlownLaps(flown.lanes[1]).size(), 9U);
    EXPECT_EQ(flown.lanes[1].placing, "First");
    EXPECT_EQ(flown.lanes[0].final, 77000);
    EXPECT_EQ(flown.comments, "Smoke at pylon 2");
    rig.Click("frmJudge.cmdSave");
    EXPECT_FALSE(OnConsole(rig).hasRun);
    const std::string told = Told(ReadRace(OpenProject(rig.program.project(), rig.race()), 1));
    EXPECT_EQ(told, Told(flown));
    rig.Click("frmJudge.cmdDecHeat");
    EXPECT_EQ(told, Told(OnConsole(rig)));
    rig.Click("frmJudge.cmdIncHeat");
  }
}

}  // namespace
}  // namespace quorvane
