// Whatever is entered in whatever order: what a lane shows is what its log gives, and it comes back from the
// project file as it was.

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "base/text.h"
#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

class RandomLane : public testing::Test {
 protected:
  RandomLane() {
    rig_.Start();
    rig_.Play("set:Race1/RaceMode=1");
  }

  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

  // Some of the time nothing happens for a while; the starter may set the clock back.
  void Act() {
    static const std::vector<std::pair<const char*, int>> kActs = {
        {"L", 2000},   {"L", 2000},  {"C", 9},      {"D", 9},       {"W", 9},      {"code", 300},
        {"lap", 1},    {"cut", 1},   {"key", 3},    {"T", 2000},    {"turn", 1},   {"tick", 1},
        {"hover", 40}, {"final", 1}, {"novice", 2}, {"done", 2},    {"manual", 2}, {"failing", 3},
        {"order", 7},  {"place", 1}, {"giveup", 1}, {"adjust", 99}, {"join", 1}};
    static constexpr std::array kCodes = {"oo", "1o", "o1", "11", "", "11o", "7", "\xff"};
    if (const int step = Below(9000); Below(3) == 0) {
      const std::int32_t now = rig_.owner.raceTime;
      return rig_.At(now > INT32_MAX - step ? now : now + step);
    }
    if (Below(300) == 0) return StartRace();
    const auto& [step, most] = kActs[static_cast<std::size_t>(Below(static_cast<int>(kActs.size())))];
    if (std::string_view("done order failing manual").find(step) != std::string_view::npos && Below(20) != 0)
      return;
    if (step == std::string_view("tick") && rig_.lane.IsFinished()) return;
    rig_.Do(step, step == std::string_view("key") ? 1 + Below(3) : Below(most),
            kCodes[static_cast<std::size_t>(Below(8))]);
  }

  void StartRace() {
    rig_.owner.failing = false;
    rig_.race.IsFaiMode = Below(3) == 0;
    rig_.Start();
    if (Below(10) == 0) rig_.At(INT32_MAX - Below(70000));
    if (Below(10) == 0) rig_.lane.InitializeRace(Below(130000) - 65000);
  }

  void ExpectShownAsLogged() {
    const frmLane& lane = rig_.lane;
    const LapRecount log = RecountLaps(lane.Events(), rig_.race.IsFaiMode);
    ASSERT_EQ(lane.Counts().lapTarget, log.lapTarget);
    ASSERT_EQ(lane.Counts().cutsBeforeFinish, log.cutsBeforeFinish);
    ASSERT_EQ(lane.Counts().finalTime, log.finalTime);
    ASSERT_EQ(std::min<int>(lane.Counts().laps, 11), std::min<int>(log.laps, 11));
    ASSERT_TRUE(lane.Counts().cutCount == log.cutCount || log.cutCount > 28);
    ASSERT_EQ(lane.lblLap[10].Visible(), log.lapTarget == 11 && log.laps >= 10);
    for (const LaneEvent& event : lane.Events().Entries()) {
      if (event.Kind != "L" || event.Count > 10) continue;
      ASSERT_EQ(lane.lblLap[event.Count - 1].Caption(), FormatSeconds(event.EventTime));
    }
  }

  void ExpectSameAfterLoading() {
    rig_.Do("final");
    rig_.owner.values[{"Race1", "RaceMode"}] = rig_.race.IsFaiMode ? "5, FAI 231" : "1, RaceHorse";
    rig_.Do("save", 1);
    other_.owner.values = rig_.owner.values;
    other_.Do("load", 1);
    ASSERT_EQ(other_.Look(true), rig_.Look(true));
  }

  std::mt19937 random_{20261121};
  LaneRig rig_;
  LaneRig other_;
};

TEST_F(RandomLane, AnySequenceIsShownAsLoggedAndComesBackFromTheFile) {
  const int operations = std::getenv("QUORVANE_LONG") != nullptr ? 1000000 : 50000;
  int refused = 0;
  for (int i = 0; i < operations && !HasFailure(); ++i) {
    try {
      Act();
    } catch (const RunTimeError&) {
      ++refused;
    }
    ExpectShownAsLogged();
    if (i % 200 == 0) ExpectSameAfterLoading();
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace quorvane
