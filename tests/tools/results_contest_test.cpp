// Contests flown on the console by the simulated field: what the records say of them.

#include <gtest/gtest.h>

#include <algorithm>

#include "console/race_records.h"
#include "console/results_formats.h"
#include "tests/support/console_rig.h"
#include "tools/field/field.h"
#include "tools/results/results.h"

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

class FlownContest : public testing::TestWithParam<int> {};

TEST_P(FlownContest, IsToldAsItWasFlown) {
  ConsoleRig rig(true);
  rig.Load();
  field::FieldOptions options;
  options.mode = GetParam();
  options.heats = 4;
  options.seed = static_cast<std::uint32_t>(70 + GetParam());
  field::Field field(options);
  rig.serial.onSent = [&](const auto& bytes) { field.Receive(bytes, rig.platform.ClockMs()); };
  field.BeginHeats(0);
  std::vector<field::HeatResult> flown;
  while (!field.Done()) {
    rig.At(std::max(field.NextDue(), rig.platform.ClockMs() + 1));
    for (const auto& chunk : field.AdvanceTo(rig.platform.ClockMs())) {
      rig.program.door().Enter({.kind = EventKind::Bytes, .bytes = chunk.bytes});
    }
    for (auto& heat : field.TakeResults()) flown.push_back(std::move(heat));
  }
  ContestRecord contest;
  ASSERT_FALSE(ReadProject(SystemFiles(), rig.file, contest));
  ASSERT_EQ(contest.races.size(), flown.size());
  for (std::size_t i = 0; i < flown.size(); ++i) {
    EXPECT_EQ(contest.races[i].mode, GetParam());
    EXPECT_EQ(contest.races[i].heat, static_cast<int>(i) + 1);
    for (const auto& expected : flown[i].lanes) {
      SCOPED_TRACE("heat " + std::to_string(i + 1) + " lane " + std::to_string(expected.lane));
      const LaneRecord& lane = contest.races[i].lanes[static_cast<std::size_t>(expected.lane - 1)];
      EXPECT_EQ(lane.lapTarget, expected.target);
      EXPECT_EQ(lane.laps.size(), expected.expected.size());
      EXPECT_EQ(lane.cuts.size(), expected.cuts.size());
      ASSERT_EQ(HasResult(lane), expected.final_time < field::kNoResult);
      if (!HasResult(lane)) continue;
      EXPECT_NEAR(lane.final, expected.final_time, 3);
      EXPECT_EQ(lane.placing, expected.place);
      EXPECT_TRUE(FlownLaps(lane).back().finishing);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Modes, FlownContest, testing::Values(2, 5));

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
