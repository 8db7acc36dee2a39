// Whole heats flown by the simulated field, judged by the console from the bytes on the air, on a virtual
// clock.

#include <gtest/gtest.h>

#include <algorithm>

#include "common/text.h"
#include "tests/support/console_rig.h"
#include "tools/field/field.h"

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
