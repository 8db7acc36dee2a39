// Whatever is entered in whatever order: what a lane shows is what its log gives, and it comes back from the
// project file as it was.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "base/time_text.h"
#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

class RandomLane : public testing::Test {
 protected:
  RandomLane() {
    for (const auto& [often, act] : acts_) dice_.insert(dice_.end(), static_cast<std::size_t>(often), &act);
    StartRace();
  }

  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  bool OneIn(int n) { return Below(n) == 0; }
  std::int32_t Now() const { return rig_.owner.raceTime; }
  void Wait(int ms) { rig_.At(Now() + std::min(ms, INT32_MAX - Now())); }
  const char* Code() {
    static constexpr std::array kCodes = {"oo", "1o", "o1", "11", "", "11o", "\xff"};
    return kCodes[static_cast<std::size_t>(Below(7))];
  }

  void StartRace() {
    rig_.race.RaceActive = false;
    lane_.chkNovice.SetValue(OneIn(4) ? 1 : 0);
    rig_.race.IsFaiMode = OneIn(3);
    rig_.race.RaceDone = false;
    rig_.owner.failing = false;
    rig_.At(Below(3000));
    lane_.InitializeRace(OneIn(10) ? Below(130000) - 65000 : 60000);
    rig_.race.RaceActive = !OneIn(10);
  }

  void Place() {
    lane_.LaneOrder(1);
    if (lane_.cmdOrder.Visible()) lane_.cmdOrder_Click();
  }

  // True when the operation was refused.
  bool Act() {
    const int before = lane_.EventCount();
    try {
      (*dice_[static_cast<std::size_t>(Below(static_cast<int>(dice_.size())))])();
      return false;
    } catch (const RunTimeError&) {
      EXPECT_TRUE(lane_.EventCount() == before || rig_.owner.failing);
      return true;
    }
  }

  void ExpectShownAsLogged() {
    const LapRecount log = RecountLaps(lane_.Events(), rig_.race.IsFaiMode);
    ASSERT_LE(lane_.EventCount(), 101);
    ASSERT_EQ(lane_.LapTarget(), log.lapTarget);
    ASSERT_EQ(lane_.CutsBeforeFinish(), log.cutsBeforeFinish);
    ASSERT_EQ(lane_.FinalTime(), log.finalTime);
    ASSERT_EQ(std::min<int>(lane_.Laps(), 11), std::min<int>(log.laps, 11));
    ASSERT_TRUE(lane_.CutCount() == log.cutCount || log.cutCount > 28);
    if (lane_.EventCount() > 0 && lane_.lblStatus.Tag() != "Locked") {
      const std::string n = std::to_string(log.cutsBeforeFinish);
      ASSERT_EQ(lane_.cmdCut.Caption(), log.cutsBeforeFinish == 0 ? "Cut" : "Cuts(" + n + ")");
    }
    ASSERT_EQ(lane_.lblLap[10].Visible(), log.lapTarget == 11 && log.laps >= 10);
    for (int i = 0; i < lane_.EventCount(); ++i) {
      const LaneEvent& event = lane_.Events()[i];
      if (event.Kind != "L" || event.Count > 10) continue;
      ASSERT_EQ(lane_.lblLap[event.Count - 1].Caption(), FormatSeconds(event.EventTime));
    }
  }

  void ExpectSameAfterLoading() {
    rig_.Final();
    ExpectShownAsLogged();
    rig_.owner.values[{"Race1", "RaceMode"}] = rig_.race.IsFaiMode ? "5, FAI 231" : "1, RaceHorse";
    lane_.SaveLane("Race1");
    other_.owner.values = rig_.owner.values;
    other_.lane.LoadLane("Race1");
    ASSERT_EQ(Shown(other_.lane, true), Shown(lane_, true));
  }

  std::mt19937 random_{20261121};
  LaneRig rig_;
  LaneRig other_;
  frmLane& lane_ = rig_.lane;
  // What may happen, and how often.
  const std::vector<std::pair<int, std::function<void()>>> acts_ = {
      {120, [this] { Wait(Below(9000)); }},
      {40, [this] { lane_.DoLap(Now(), 8 * (1 + Below(255))); }},
      {20, [this] { lane_.cmdLap_Click(); }},
      {40, [this] { lane_.DoCut(Code(), Below(5), Now() - Below(3000)); }},
      {20, [this] { lane_.DoCut(Code(), OneIn(2) ? 254 : Below(300) - 20, Now()); }},
      {20, [this] { lane_.cmdCut_Click(); }},
      {20, [this] { lane_.cntrCut(1); }},
      {20, [this] { lane_.cntrCut(3); }},
      {10, [this] { lane_.DoTurn(4, Now(), 8 * (1 + Below(255))); }},
      {20, [this] { lane_.cmdTurn_Click(); }},
      {20, [this] { lane_.lblCut_MouseMove(Below(41)); }},
      {20, [this] { lane_.FinalizeRace(); }},
      {30, [this] { lane_.IsFinished() ? Wait(1) : lane_.UpdateLapTime(Now()); }},
      {2, [this] { StartRace(); }},
      {1, [this] { rig_.At(Below(60000)); }},  // the starter sets the clock
      {1, [this] { rig_.race.RaceDone = !rig_.race.RaceDone; }},
      {1, [this] { lane_.LaneOrder(Below(7)); }},
      {1, [this] { Place(); }},
      {1, [this] { rig_.owner.failing = OneIn(3); }},
      {1, [this] { rig_.race.ManualStart = !rig_.race.ManualStart; }},
      {1, [this] { OneIn(5) ? rig_.At(INT32_MAX - Below(70000)) : Wait(20000); }},
  };
  std::vector<const std::function<void()>*> dice_;
};

TEST_F(RandomLane, AnySequenceIsShownAsLoggedAndComesBackFromTheFile) {
  const int operations = std::getenv("QUORVANE_LONG") != nullptr ? 3000000 : 100000;
  int refused = 0;
  for (int i = 0; i < operations; ++i) {
    refused += Act() ? 1 : 0;
    ExpectShownAsLogged();
    if (OneIn(200)) ExpectSameAfterLoading();
    if (HasFailure()) FAIL() << "after operation " << i << ": " << rig_.Kinds();
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace quorvane
