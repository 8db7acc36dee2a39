// Whole heats flown by the simulated field, judged by the console from the bytes on the air, on a virtual
// clock.

#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "field/field.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

struct Shown {
  std::vector<int> laps;
  std::string placing;
  std::string position;
};

Shown SavedLane(ConsoleRig& rig, int race, int lane) {
  const std::string section = "Race" + std::to_string(race) + "_Lane" + std::to_string(lane);
  Shown shown{{}, rig.Value(section, "Placing"), rig.Value(section, "Position")};
  const int events = LeadingInteger(rig.Value(section, "NumEvents"));
  for (int i = 0; i < events; ++i) {
    const auto fields = Split(rig.Value(section, "Event" + std::to_string(i)), ',');
    if (fields.size() == 6 && fields[2] == "L") shown.laps.push_back(LeadingLong(fields[4]));
  }
  return shown;
}

// Lets the field and the console run against each other until the field is done; returns what was flown.
std::vector<field::HeatResult> FlyContest(ConsoleRig& rig, const field::FieldOptions& options) {
  field::Field field(options);
  rig.serial.onSent = [&](const std::vector<std::uint8_t>& bytes) {
    field.Receive(bytes, rig.platform.ClockMs());
  };
  field.AdvanceTo(rig.platform.ClockMs());  // what was on the air before does not count
  field.BeginHeats(rig.platform.ClockMs());
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

class Contest : public testing::TestWithParam<int> {};

TEST_P(Contest, EveryRaceShowsWhatWasFlown) {
  const int mode = GetParam();
  ConsoleRig rig(true);
  rig.Load();
  field::FieldOptions options;
  options.mode = mode;
  options.heats = 3;
  options.seed = static_cast<std::uint32_t>(40 + mode);
  options.count = mode % 2 == 0;
  options.hold = mode == 4;
  const auto flown = FlyContest(rig, options);
  ASSERT_EQ(flown.size(), 3U);
  for (const auto& heat : flown) {
    for (const auto& lane : heat.lanes) {
      SCOPED_TRACE("heat " + std::to_string(heat.heat) + " lane " + std::to_string(lane.lane));
      const Shown shown = SavedLane(rig, heat.heat, lane.lane);
      ASSERT_EQ(shown.laps.size(), lane.expected.size());
      for (std::size_t i = 0; i < shown.laps.size(); ++i) EXPECT_NEAR(shown.laps[i], lane.expected[i], 3);
      if (lane.place.empty()) {
        EXPECT_EQ(shown.position, "100");
      } else {
        EXPECT_EQ(shown.placing, lane.place);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Modes, Contest, testing::Range(1, 7));

void ExpectShown(const frmLane& panel, const field::LaneResult& flown) {
  std::vector<int> laps;
  std::vector<std::string> cuts;
  for (int i = 0; i < panel.EventCount(); ++i) {
    const LaneEvent& event = panel.Events()[i];
    if (event.Kind == "L") laps.push_back(event.EventTime);
    if (event.Kind == "C") cuts.push_back(event.SourceName);
  }
  ASSERT_EQ(laps.size(), flown.expected.size());
  for (std::size_t i = 0; i < laps.size(); ++i) EXPECT_NEAR(laps[i], flown.expected[i], 3);
  ASSERT_EQ(cuts.size(), flown.cuts.size());
  for (std::size_t i = 0; i < cuts.size(); ++i) EXPECT_EQ(cuts[i], "P" + std::to_string(flown.cuts[i].pylon));
  EXPECT_EQ(panel.LapTarget(), flown.target);
  if (flown.place.empty()) {
    EXPECT_EQ(panel.lblStatus.Tag(), "100");
  } else {
    EXPECT_EQ(panel.lblStatus.Caption(), flown.place);
    EXPECT_NEAR(panel.FinalTime(), flown.final_time, 3);
  }
}

// Two rounds of four heats in all race modes and a refly: closed, opened again, and shown in another mode.
TEST(WholeContest, IsThereAgainOnTheNextDay) {
  const TempFolder folder;
  std::vector<field::HeatResult> flown;
  {
    ConsoleRig rig(true);
    rig.platform.settings.SaveSetting("DiskFile", "FileName", folder / "contest.ini");
    rig.Load();
    field::FieldOptions options;
    options.mode = 0;
    options.heats = 8;
    options.quick = true;
    flown = FlyContest(rig, options);
    ASSERT_EQ(flown.size(), 8U);
    rig.Type("frmJudge.txtRound", "1");
    rig.Type("frmJudge.txtHeat", "3");
    rig.Click("frmJudge.cmdRefly");
    options.mode = 3;
    options.heats = 1;
    options.seed = 77;
    const auto refly = FlyContest(rig, options);
    ASSERT_EQ(refly.size(), 1U);
    flown[2] = refly[0];
    rig.Answer(DialogAnswer::Word::Yes);
    rig.Click("frmJudge.mnuExit");
    ASSERT_TRUE(rig.platform.ended);
  }
  ConsoleRig rig;
  rig.platform.settings.SaveSetting("DiskFile", "FileName", folder / "contest.ini");
  rig.Answer(DialogAnswer::Word::Yes);
  rig.program.door().Enter({EventKind::Load});
  EXPECT_EQ(rig.race().RaceNumber, 9);
  for (int race = 8; race >= 1; --race) {
    rig.Click("frmJudge.cmdDecHeat");
    EXPECT_EQ(rig.judge().fraHeatControl.Caption(),
              "Race " + std::to_string(race) + (race == 3 ? " REFLY" : ""));
    for (const auto& lane : flown[static_cast<std::size_t>(race - 1)].lanes) {
      SCOPED_TRACE("race " + std::to_string(race) + " lane " + std::to_string(lane.lane));
      ExpectShown(rig.lane(lane.lane - 1), lane);
    }
  }
  EXPECT_EQ(rig.race().RaceMode, 2);
}

TEST(NoisyContest, NoLapIsInventedAndNoneThatWasReportedAgainIsLost) {
  for (int mode = 1; mode <= 6; ++mode) {
    ConsoleRig rig(true);
    rig.Load();
    field::FieldOptions options;
    options.mode = mode;
    options.heats = 2;
    options.seed = static_cast<std::uint32_t>(90 + mode);
    options.line.noise = 0.05;
    options.line.loss = 0.05;
    options.line.damage = 0.05;
    options.line.split = true;
    const auto flown = FlyContest(rig, options);
    for (const auto& heat : flown) {
      for (const auto& lane : heat.lanes) {
        SCOPED_TRACE("mode " + std::to_string(mode) + " heat " + std::to_string(heat.heat) + " lane " +
                     std::to_string(lane.lane));
        const Shown shown = SavedLane(rig, heat.heat, lane.lane);
        ASSERT_LE(shown.laps.size(), lane.flown.size());
        if (!lane.place.empty()) {
          EXPECT_EQ(shown.laps.size(), lane.flown.size());
        }
        for (std::size_t i = 0; i < shown.laps.size(); ++i) EXPECT_GE(shown.laps[i], lane.flown[i] - 3);
      }
    }
  }
}

}  // namespace
}  // namespace quorvane
