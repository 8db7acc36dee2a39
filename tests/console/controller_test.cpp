// The console as controller, seen from the stations' side of the radio.

#include <gtest/gtest.h>

#include <utility>

#include "field/plan.h"
#include "tests/support/field_link.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

constexpr int kPylonBox = 6, kDisplay = 7;

struct Controller {
  explicit Controller(field::FieldOptions options) : rig(true), link(rig, Controlled(std::move(options))) {
    rig.Load();
    rig.Click("frmJudge.lblComm");
    rig.Answer(Word::Yes);
    rig.Click("frmSerialPort.chkSystemController");
  }
  static field::FieldOptions Controlled(field::FieldOptions options) {
    options.controlled = true;
    return options;
  }

  // What the hands do in a heat, at its times on the console clock.
  void Fly(const field::HeatPlan& plan, bool count) {
    static const char* const kCutKeys[] = {"F5",  "F6",  "F7", "F8", "F9", "F10",
                                           "F11", "F12", "7",  "8",  "9",  "0"};
    const std::int64_t start = rig.platform.ClockMs() + (count ? 60000 : 0);
    std::multimap<std::int64_t, std::string> keys;
    for (std::size_t i = 0; i < plan.lanes.size(); ++i) {
      const field::LanePlan& lane = plan.lanes[i];
      for (const int lap : lane.laps) keys.emplace(start + lane.stagger + lap, "F" + std::to_string(i + 1));
      int pause = 0;  // a second cut at the same pylon counts only a while after the first
      for (const field::PlannedCut& cut : lane.cuts) {
        keys.emplace(start + lane.stagger + cut.time + pause,
                     kCutKeys[4 * (cut.pylon - 1) + static_cast<int>(i)]);
        pause = 3100;
      }
    }
    rig.Key("F1");
    for (const auto& [ms, key] : keys) {
      link.RunUntil(ms);
      rig.Key(key);
    }
    while (!rig.race().RaceDone) link.RunUntil(rig.platform.ClockMs() + 100);
    rig.Click("frmJudge.cmdSave");
  }

  ConsoleRig rig;
  FieldLink link;
};

TEST(Controller, TheStationsSeeTheRacesThatTheProjectKeeps) {
  for (const auto& [mode, count] : {std::pair{1, true}, {2, false}, {4, false}, {5, true}}) {
    SCOPED_TRACE("mode " + std::to_string(mode));
    Controller c({.heats = 2});
    if (count) c.rig.Click("frmJudge.chkSixtySecondCount");
    c.rig.program.door().Enter(
        {.kind = EventKind::Choose, .target = "frmJudge.cboRaceMode", .number = mode == 1 ? 0 : mode});
    std::vector<field::ToldHeat> seen, kept;
    for (int heat = 1; heat <= 2; ++heat) {
      c.link.RunUntil(c.rig.platform.ClockMs() + 5000);
      const std::int64_t start = c.rig.platform.ClockMs();
      const field::HeatPlan plan = field::PlanHeat(31, heat, mode, false);
      c.Fly(plan, count);
      const auto results = c.link.field.TakeResults();
      ASSERT_EQ(results.size(), 1U);
      const field::HeatResult& race = results[0];
      EXPECT_EQ(race.mode, mode);
      EXPECT_EQ(race.count, count);
      EXPECT_EQ(race.followed->from, start);
      EXPECT_EQ(race.followed->to, c.rig.platform.ClockMs());
      EXPECT_EQ(race.followed->first_clock, count ? 0 : 59999);
      EXPECT_LE(race.followed->drift, count ? 60 : 1);  // the countdown has a head start of 60 ms
      for (const field::LaneResult& lane : race.lanes) {
        EXPECT_EQ(lane.expected.size(), plan.lanes[static_cast<std::size_t>(lane.lane - 1)].laps.size());
        EXPECT_EQ(lane.lights, std::vector<int>(lane.expected.size(), 255));
      }
      seen.push_back(ToldByField(race));
      kept.push_back(ToldByProject(c.rig, heat));
    }
    EXPECT_EQ(field::CompareHeats(seen, kept, {.tolerance = 0}), std::vector<std::string>());
    c.link.RunUntil(c.rig.platform.ClockMs() + 5000);
    EXPECT_TRUE(c.link.field.Done());
    const field::ConsoleHeard heard = c.link.field.Heard();
    EXPECT_EQ(heard.odd, 0);
    EXPECT_EQ(heard.stations[kPylonBox].frames, heard.frames);
    EXPECT_FALSE(heard.stations[kDisplay].race.running);
    EXPECT_EQ(c.rig.program.link().Counters().sent, heard.frames + heard.polls);
    EXPECT_EQ(c.rig.program.link().Counters().good, c.link.field.counters().sent);
    EXPECT_EQ(c.rig.program.door().ErrorsContained(), 0);
  }
}

TEST(Controller, StandsDownWhenAStarterComesOnTheAir) {
  Controller c({.starter_at = 30000});
  c.link.RunUntil(20000);
  c.rig.Key("F1");
  c.link.RunUntil(29900);
  EXPECT_TRUE(c.link.field.Heard().stations[kPylonBox].race.running);
  const std::size_t boxes = c.rig.platform.shown.size();
  c.link.RunUntil(45000);
  ASSERT_EQ(c.rig.platform.shown.size(), boxes + 2);  // and the question of an idle starter, cancelled
  EXPECT_EQ(c.rig.platform.shown[boxes].box.title + ", " + c.rig.platform.shown[boxes + 1].box.title,
            "Cancel CONTROLLER mode, Reset Race");
  EXPECT_EQ(c.rig.program.link().chkSystemController.Value(), 0);
  EXPECT_EQ(c.rig.platform.settings.GetSetting("frmSerialPort", "chkSystemController", ""), "0");
  const field::ConsoleHeard heard = c.link.field.Heard();
  ASSERT_TRUE(heard.starter_ms && heard.last_ms);
  EXPECT_GE(*heard.starter_ms, 30000);
  EXPECT_LE(*heard.last_ms, *heard.starter_ms);
  EXPECT_TRUE(c.rig.judge().RaceBeingFlown());
}

}  // namespace
}  // namespace quorvane
