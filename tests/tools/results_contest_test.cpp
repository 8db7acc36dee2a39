// Contests flown on the console by the simulated field: what the records say of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/console_rig.h"
#include "tests/tools/results_book.h"
#include "tools/field/field.h"
#include "tools/results/results.h"

namespace quorvane {
namespace {

// Lets the field and the console run against each other until the field is done; returns what was flown.
std::vector<field::HeatResult> Fly(ConsoleRig& rig, const field::FieldOptions& options) {
  field::Field field(options);
  rig.serial.onSent = [&](const std::vector<std::uint8_t>& bytes) {
    field.Receive(bytes, rig.platform.ClockMs());
  };
  field.BeginHeats(0);
  std::vector<field::HeatResult> flown;
  while (!field.Done()) {
    rig.At(std::max(field.NextDue(), rig.platform.ClockMs() + 1));
    for (const auto& chunk : field.AdvanceTo(rig.platform.ClockMs())) {
      rig.program.door().Enter({.kind = EventKind::Bytes, .bytes = chunk.bytes});
    }
    for (auto& heat : field.TakeResults()) flown.push_back(std::move(heat));
  }
  rig.serial.onSent = {};
  return flown;
}

RaceRecord OnConsole(ConsoleRig& rig) {
  return RecordOnConsole(rig.judge(), rig.race(), OpenProject(rig.program.project(), rig.race()),
                         rig.platform.LocalNow());
}

void ExpectSame(const LaneRecord& lane, const field::LaneResult& flown) {
  EXPECT_EQ(lane.lapTarget, flown.target);
  std::vector<int> laps;
  for (const LapRecord& lap : lane.laps) laps.push_back(lap.time);
  ASSERT_EQ(laps.size(), flown.expected.size());
  for (std::size_t i = 0; i < laps.size(); ++i) EXPECT_NEAR(laps[i], flown.expected[i], 3);
  ASSERT_EQ(lane.cuts.size(), flown.cuts.size());
  for (std::size_t i = 0; i < lane.cuts.size(); ++i) {
    EXPECT_EQ(lane.cuts[i].pylon, "P" + std::to_string(flown.cuts[i].pylon));
    EXPECT_NEAR(lane.cuts[i].time, flown.cuts[i].expected, 3);
  }
  EXPECT_EQ(HasResult(lane), flown.final_time < field::kNoResult);
  if (HasResult(lane)) {
    EXPECT_NEAR(lane.final, flown.final_time, 3);
    EXPECT_EQ(lane.placing, flown.place);
    EXPECT_TRUE(FlownLaps(lane).back().finishing);
  }
}

class FlownContest : public testing::TestWithParam<int> {};

TEST_P(FlownContest, IsToldAsItWasFlown) {
  ConsoleRig rig(true);
  rig.Load();
  field::FieldOptions options;
  options.mode = GetParam();
  options.heats = 4;
  options.seed = static_cast<std::uint32_t>(70 + GetParam());
  const auto flown = Fly(rig, options);
  ContestRecord contest;
  ASSERT_FALSE(ReadProject(SystemFiles(), rig.file, contest));
  ASSERT_EQ(contest.races.size(), flown.size());
  EXPECT_EQ(contest.eventName, "Cup");
  for (std::size_t i = 0; i < flown.size(); ++i) {
    const RaceRecord& race = contest.races[i];
    EXPECT_EQ(race.mode, GetParam());
    EXPECT_EQ(race.heat, static_cast<int>(i) + 1);
    for (const auto& lane : flown[i].lanes) {
      SCOPED_TRACE("race " + std::to_string(race.number) + " lane " + std::to_string(lane.lane));
      ExpectSame(race.lanes[static_cast<std::size_t>(lane.lane - 1)], lane);
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

TEST(OnConsole, ARaceIsToldAlikeBeforeAndAfterItIsSaved) {
  ConsoleRig rig;
  rig.Load();
  const RaceRecord blank = OnConsole(rig);
  EXPECT_FALSE(blank.hasRun);
  EXPECT_EQ(blank.number, 1);
  EXPECT_EQ(blank.eventName, "Cup");

  FlyByHand(rig);
  const RaceRecord running = OnConsole(rig);
  EXPECT_TRUE(running.hasRun);
  EXPECT_EQ(running.lanes[0].laps.size(), 11U);
  EXPECT_EQ(running.lanes[0].placing, "");
  rig.At(rig.platform.ClockMs() + 40000);
  rig.Type("frmJudge.txtComments", "Smoke at pylon 2");
  const RaceRecord flown = OnConsole(rig);
  EXPECT_TRUE(flown.lanes[1].novice);
  EXPECT_EQ(FlownLaps(flown.lanes[1]).size(), 9U);
  EXPECT_EQ(flown.lanes[1].placing, "First");
  EXPECT_EQ(flown.lanes[0].final, 77000);
  EXPECT_EQ(flown.comments, "Smoke at pylon 2");

  rig.Click("frmJudge.cmdSave");
  EXPECT_FALSE(OnConsole(rig).hasRun);
  const ProjectSource project = OpenProject(rig.program.project(), rig.race());
  EXPECT_EQ(Told(ReadRace(project, 1)), Told(flown));
  rig.Click("frmJudge.cmdDecHeat");
  EXPECT_EQ(Told(OnConsole(rig)), Told(flown));
}

TEST(OnConsole, AReflyIsTheReflyThatItBecomes) {
  ConsoleRig rig;
  rig.Load();
  for (int refly = 0; refly <= 2; ++refly) {
    if (refly > 0) {
      rig.Click("frmJudge.cmdDecHeat");
      rig.Click("frmJudge.cmdRefly");
    }
    FlyByHand(rig);
    rig.At(rig.platform.ClockMs() + 40000);
    const RaceRecord flown = OnConsole(rig);
    EXPECT_EQ(flown.refly, refly);
    rig.Click("frmJudge.cmdSave");
    EXPECT_EQ(Told(ReadRace(OpenProject(rig.program.project(), rig.race()), 1)), Told(flown));
  }
  ContestRecord contest;
  ASSERT_FALSE(ReadProject(SystemFiles(), rig.file, contest));
  ASSERT_EQ(contest.races.size(), 3U);
  EXPECT_TRUE(contest.races[0].stands);
  EXPECT_EQ(contest.races[0].refly, 2);
  EXPECT_EQ(contest.races[1].reflownBy, 2);
  EXPECT_EQ(contest.races[2].refly, 1);
  EXPECT_FALSE(contest.races[2].stands);
}

}  // namespace
}  // namespace quorvane
