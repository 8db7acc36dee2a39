// Whole heats flown by the simulated field, judged by the console from the bytes on the air, on a virtual
// clock; and what the records say of them.

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "field/plan.h"
#include "results/results_formats.h"
#include "tests/support/field_link.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

// What the program has on the heap.
std::size_t LiveBytes() {
  const bool sanitized = __sanitizer_get_current_allocated_bytes != nullptr;
  return sanitized ? __sanitizer_get_current_allocated_bytes() : mallinfo2().uordblks;
}

// Lets the field and the console run against each other until the field is done; returns what was flown.
std::vector<field::HeatResult> FlyContest(ConsoleRig& rig, const field::FieldOptions& options) {
  FieldLink link(rig, options);
  link.field.AdvanceTo(rig.platform.ClockMs());  // what was on the air before does not count
  link.field.BeginHeats(rig.platform.ClockMs());
  std::vector<field::HeatResult> flown;
  while (!link.field.Done()) {
    link.RunUntil(std::max(link.field.NextDue(), rig.platform.ClockMs() + 1));
    for (auto& heat : link.field.TakeResults()) flown.push_back(std::move(heat));
  }
  return flown;
}

// What the project says of these heats and the field does not, or the other way round.
std::vector<std::string> Differences(ConsoleRig& rig, const std::vector<field::HeatResult>& flown,
                                     const field::CompareOptions& options) {
  std::vector<field::ToldHeat> seen, kept;
  for (const field::HeatResult& heat : flown) {
    seen.push_back(ToldByField(heat));
    kept.push_back(ToldByProject(rig, heat.heat));
  }
  return field::CompareHeats(seen, kept, options);
}

// All that a record says, as a text to compare.
std::string Told(const RaceRecord& race) {
  return ResultsJson({race.eventName, race.projectFile, {race}});
}
RaceRecord OnConsole(ConsoleRig& rig) {
  return rig.judge().RecordAt(rig.platform.LocalNow());
}
RaceRecord InProject(ConsoleRig& rig, int race) {
  return ReadRace(OpenProject(rig.program.project(), rig.race()), race);
}

TEST(Contest, EveryRaceIsKeptAsItWasFlown) {
  for (int mode = 1; mode <= 6; ++mode) {
    for (const bool noisy : {false, true}) {
      SCOPED_TRACE("mode " + std::to_string(mode) + (noisy ? " noisy" : ""));
      ConsoleRig rig(true);
      rig.Load();
      const int heats = noisy && std::getenv("QUORVANE_LONG") != nullptr ? 34 : 2;
      field::FieldOptions options{
          .heats = heats, .mode = mode, .seed = static_cast<std::uint32_t>(40 + mode)};
      options.quick = !noisy;
      options.count = mode % 2 == 0;
      options.hold = mode == 4;
      if (noisy) options.line = {.noise = 0.05, .loss = 0.05, .damage = 0.05, .split = true};
      const auto flown = FlyContest(rig, options);
      ASSERT_EQ(flown.size(), static_cast<std::size_t>(heats));
      EXPECT_EQ(rig.race().RaceNumber, heats + 1);
      EXPECT_EQ(Differences(rig, flown, {.tolerance = 3, .lossy = noisy}), std::vector<std::string>());
      EXPECT_EQ(InProject(rig, 1).radio.has_value(), noisy);
    }
  }
}

// Stations that are polled between two races cost no memory, however long.
TEST(Contest, IdlesForHoursWithoutGrowing) {
  const int times = std::getenv("QUORVANE_LONG") != nullptr ? 30 : 2;
  ConsoleRig rig(true);
  rig.Load();
  FieldLink link(rig, {});
  const auto bytesAfter = [&](int n) {  // 20 minutes each
    link.RunUntil(std::int64_t{n} * 1200000);
    return LiveBytes();
  };
  const std::size_t first = bytesAfter(1), last = bytesAfter(times);
  std::printf("%zu bytes in use after 20 minutes, %zu after %d times as long\n", first, last, times);
  EXPECT_LT(last, first + 4096);
  EXPECT_GT(rig.program.link().Counters().good, times * 2300);
}

// The second judge's box was off from the count into the race, and the program died after that.
TEST(Contest, ARadioThatFailedInARaceIsSavedWithIt) {
  ConsoleRig rig(true, SystemFiles(), ConsoleRig::Way::AtOnce);
  rig.Load();
  FieldLink link(rig, {.heats = 1, .line = {.damage = 0.01}, .silent = {{1, 50000, 80000}}});
  link.field.BeginHeats(0);
  link.RunUntil(90000);
  const std::optional<RadioRecord> before = rig.judge().RadioInRace();
  rig.Crash(500);
  rig.LoadAgain();
  link.field.AdvanceTo(rig.platform.ClockMs());
  while (!link.field.Done()) link.Step(rig.platform.ClockMs() + 1000);
  const std::optional<RadioRecord> saved = InProject(rig, 1).radio;
  ASSERT_TRUE(before && saved);
  EXPECT_GT(before->damaged, 5);
  EXPECT_GT(saved->damaged, before->damaged - 2);
  const auto judge = std::ranges::find(saved->stations, "Judges 2", &RadioRecord::Station::name);
  ASSERT_NE(judge, saved->stations.end());
  EXPECT_NEAR(static_cast<double>(judge->longestSilence), 31500, 1600);
  EXPECT_GT(judge->frames, 20);
}

// Two rounds of four heats in all race modes and a refly: closed, opened again, and shown in another mode.
TEST(Contest, IsThereAgainOnTheNextDay) {
  const ScratchFolder folder;
  std::vector<field::HeatResult> flown;
  {
    ConsoleRig rig(true);
    rig.platform.settings.SaveSetting("DiskFile", "FileName", folder / "contest.ini");
    rig.Load();
    flown = FlyContest(rig, {.heats = 8, .mode = 0, .quick = true});
    ASSERT_EQ(flown.size(), 8U);
    rig.Type("frmJudge.txtRound", "1");
    rig.Type("frmJudge.txtHeat", "3");
    rig.Click("frmJudge.cmdRefly");
    flown[2] = FlyContest(rig, {.heats = 1, .mode = 3, .seed = 77, .quick = true}).at(0);
    flown[2].heat = 3;
    rig.Answer(DialogAnswer::Word::Yes);
    rig.Click("frmJudge.mnuExit");
    ASSERT_TRUE(rig.platform.ended);
  }
  ConsoleRig rig;
  rig.platform.settings.SaveSetting("DiskFile", "FileName", folder / "contest.ini");
  rig.LoadAgain();
  EXPECT_EQ(rig.race().RaceNumber, 9);
  EXPECT_EQ(Differences(rig, flown, {.tolerance = 3}), std::vector<std::string>());
  for (int race = 8; race >= 1; --race) {
    rig.Click("frmJudge.cmdDecHeat");
    EXPECT_EQ(rig.judge().fraHeatControl.Caption(),
              "Race " + std::to_string(race) + (race == 3 ? " REFLY" : ""));
    EXPECT_EQ(Told(OnConsole(rig)), Told(InProject(rig, race)));
  }
  EXPECT_EQ(rig.race().RaceMode, 2);
}

// A heat flown by hand: lane 2 a novice, lane 1 with a cut, the others on the ground.
void FlyByHand(ConsoleRig& rig) {
  rig.Click("frmLane2.chkNovice");
  rig.Click("frmJudge.cmdStart");
  const std::int64_t start = rig.platform.ClockMs();
  for (int lap = 1; lap <= 11; ++lap) {
    rig.At(start + lap * 7000);
    rig.Key("F1");
    if (lap == 3) rig.Click("frmLane1.cmdCut");
    rig.At(start + lap * 7000 + 500);
    if (lap <= 9) rig.Key("F2");
  }
}

TEST(Records, ARaceAndItsReflysAreToldAlikeBeforeAndAfterTheyAreSaved) {
  ConsoleRig rig;
  rig.Load();
  for (int refly = 0; refly <= 2; ++refly) {
    if (refly > 0) {
      rig.Click("frmJudge.cmdDecHeat");
      rig.Click("frmJudge.cmdRefly");
    }
    FlyByHand(rig);
    EXPECT_EQ(OnConsole(rig).lanes[0].placing, "");
    rig.At(rig.platform.ClockMs() + 40000);
    rig.Type("frmJudge.txtComments", "Smoke at pylon 2");
    const RaceRecord flown = OnConsole(rig);
    EXPECT_EQ(flown.refly, refly);
    EXPECT_EQ(FlownLaps(flown.lanes[1]).size(), 9U);  // a novice
    EXPECT_EQ(flown.lanes[0].final, 77000);
    rig.Click("frmJudge.cmdSave");
    EXPECT_FALSE(OnConsole(rig).hasRun);
    EXPECT_EQ(Told(InProject(rig, 1)), Told(flown));
  }
}

}  // namespace
}  // namespace quorvane
