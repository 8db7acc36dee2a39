// Whatever is entered in whatever order: what a lane shows is what a plain reading of its log gives, and it
// comes back from the project file as it was.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>

#include "common/time_text.h"
#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

// The log read plainly, in its own words.
struct Reading {
  int lastLap = 0;
  int target = 10;
  int cuts = 0;
  int early = 0;
  std::int32_t final = kNoFinalTime;

  Reading(const frmLane& lane, bool fai) {
    for (int i = 0; i < lane.EventCount(); ++i) {
      const LaneEvent& event = lane.Events()[i];
      if (event.Kind == "C") {
        ++cuts;
        if (lastLap < target) {
          ++early;
          target = fai ? 10 : 11;
        }
      } else if (event.Kind == "L") {
        lastLap = event.Count;
        if (lastLap == target) final = fai && early > 1 ? 200000 : event.EventTime;
      }
    }
  }
};

class RandomLane : public testing::Test {
 protected:
  int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  bool OneIn(int n) { return Below(n) == 0; }

  void Wait(int ms) { rig_.At(rig_.owner.raceTime + std::min(ms, INT32_MAX - rig_.owner.raceTime)); }

  void Operate() {
    const std::int32_t now = rig_.owner.raceTime;
    static constexpr std::array kCodes = {"oo", "1o", "o1", "11", "", "11o", "\xff"};
    const std::string code = kCodes[static_cast<std::size_t>(Below(7))];
    frmLane& lane = rig_.lane;
    switch (Below(22)) {
      case 0:
      case 1:
      case 2:
      case 3:
      case 4:
      case 5:
        return Wait(Below(9000));
      case 6:
      case 7:
        return lane.DoLap(now, 8 * (1 + Below(255)));
      case 8:
        return lane.cmdLap_Click();
      case 9:
      case 10:
        return lane.DoCut(code, Below(5), now - Below(3000));
      case 11:
        return lane.DoCut(code, Below(2) == 0 ? 254 : Below(300) - 20, now);
      case 12:
        return lane.cmdCut_Click();
      case 13:
        return lane.cntrCutP1(Below(3));
      case 14:
        return lane.cntrCutP2(0);
      case 15:
        return lane.cntrCutP3(0);
      case 16:
        if (lane.CanDoTurn() || OneIn(9)) lane.DoTurn(4, now, 8 * (1 + Below(255)));
        return;
      case 17:
        return lane.cmdTurn_Click();
      case 18:
        return lane.lblCut_MouseMove(Below(41));
      case 19:
        if (lane.IsFinished() || OneIn(50)) lane.FinalizeRace();
        return;
      default:
        return Rare();
    }
  }

  void Rare() {
    frmLane& lane = rig_.lane;
    switch (Below(40)) {
      case 0:
      case 1:
        return StartRace();
      case 2:
        return rig_.At(Below(60000));  // the starter sets the clock
      case 3:
        rig_.race.RaceDone = !rig_.race.RaceDone;
        return;
      case 4:
        return lane.LaneOrder(Below(7));
      case 5:
        lane.LaneOrder(1);
        if (lane.cmdOrder.Visible()) lane.cmdOrder_Click();
        return;
      case 6:
        return lane.chkNovice.SetValue(Below(2));
      case 7:
        rig_.owner.failing = OneIn(3);
        return;
      case 8:
        rig_.race.ManualStart = !rig_.race.ManualStart;
        return;
      case 9:
        return OneIn(5) ? rig_.At(INT32_MAX - Below(70000)) : Wait(20000);
      default:
        if (!lane.IsFinished()) lane.UpdateLapTime(rig_.owner.raceTime);
        return;
    }
  }

  void StartRace() {
    rig_.race.RaceActive = false;
    rig_.lane.chkNovice.SetValue(OneIn(4) ? 1 : 0);
    rig_.race.IsFaiMode = OneIn(3);
    rig_.race.RaceDone = false;
    rig_.owner.failing = false;
    rig_.At(Below(3000));
    rig_.lane.InitializeRace(OneIn(10) ? Below(130000) - 65000 : 60000);
    rig_.race.RaceActive = !OneIn(10);
  }

  // True when the operation was refused.
  bool OperateContained() {
    const int before = rig_.lane.EventCount();
    try {
      Operate();
      return false;
    } catch (const RunTimeError&) {
      EXPECT_TRUE(rig_.lane.EventCount() == before || rig_.owner.failing);
      return true;
    }
  }

  void ExpectShownAsLogged() {
    const frmLane& lane = rig_.lane;
    const Reading log(lane, rig_.race.IsFaiMode);
    ASSERT_LE(lane.EventCount(), 101);
    ASSERT_EQ(lane.LapTarget(), log.target);
    ASSERT_EQ(lane.CutsBeforeFinish(), log.early);
    ASSERT_EQ(lane.FinalTime(), log.final);
    ASSERT_TRUE(lane.Laps() == log.lastLap || (lane.Laps() >= 11 && log.lastLap >= 11));
    ASSERT_TRUE(lane.CutCount() == log.cuts || log.cuts > 28);
    ASSERT_FALSE(lane.InNoviceClick());
    if (lane.EventCount() > 0 && lane.lblStatus.Tag() != "Locked") {
      ASSERT_EQ(lane.cmdCut.Caption(), log.early == 0 ? "Cut" : "Cuts(" + std::to_string(log.early) + ")");
    }
    ASSERT_EQ(lane.lblLap[10].Visible(), log.target == 11 && log.lastLap >= 10);
    if (!OneIn(4)) return;
    for (int i = 0; i < lane.EventCount(); ++i) {
      const LaneEvent& event = lane.Events()[i];
      if (event.Kind != "L" || event.Count > 10) continue;
      ASSERT_EQ(lane.lblLap[event.Count - 1].Caption(), FormatSeconds(event.EventTime));
    }
  }

  void ExpectSameAfterLoading() {
    frmLane& lane = rig_.lane;
    lane.FinalizeRace();
    ExpectShownAsLogged();
    std::int32_t final = 0;
    lane.GetFinal(final);
    rig_.owner.values[{"Race1", "RaceMode"}] = rig_.race.IsFaiMode ? "5, FAI 231" : "1, RaceHorse";
    rig_.owner.values[{"Race1_Lane1", "Laps"}].clear();
    lane.SaveLane("Race1");
    other_.owner.values = rig_.owner.values;
    other_.lane.LoadLane("Race1");
    ExpectEqualTo(other_.lane);
  }

  void ExpectEqualTo(const frmLane& loaded) const {
    const frmLane& lane = rig_.lane;
    ASSERT_EQ(loaded.EventCount(), lane.EventCount());
    for (int i = 0; i < lane.EventCount(); ++i) ASSERT_EQ(loaded.Events()[i], lane.Events()[i]);
    ASSERT_EQ(loaded.Laps(), lane.Laps());
    ASSERT_EQ(loaded.LapTarget(), lane.LapTarget());
    ASSERT_EQ(loaded.CutCount(), lane.CutCount());
    ASSERT_EQ(loaded.CutsBeforeFinish(), lane.CutsBeforeFinish());
    ASSERT_EQ(loaded.PylonCuts(), lane.PylonCuts());
    ASSERT_EQ(loaded.FinalTime(), lane.FinalTime());
    ASSERT_EQ(loaded.lblStatus.Caption(), lane.lblStatus.Caption());
    ASSERT_EQ(loaded.lblStatus.Tag(), lane.lblStatus.Tag());
    for (int i = 0; i <= 10; ++i) ASSERT_EQ(loaded.lblLap[i].Caption(), lane.lblLap[i].Caption()) << i;
    for (int i = 0; i <= kLastCutMark; ++i) {
      const Control& a = loaded.lblCut[i];
      const Control& b = lane.lblCut[i];
      ASSERT_EQ(a.Visible(), b.Visible()) << i;
      if (!b.Visible()) continue;
      ASSERT_EQ(a.Caption(), b.Caption());
      ASSERT_EQ(a.Tag(), b.Tag());
      ASSERT_EQ(a.BackColor(), b.BackColor());
      ASSERT_EQ(a.Anchor()->Name(), b.Anchor()->Name());
    }
  }

  std::mt19937 random_{20261121};
  LaneRig rig_;
  LaneRig other_;
};

TEST_F(RandomLane, AnySequenceIsShownAsLoggedAndComesBackFromTheFile) {
  const int operations = std::getenv("QUORVANE_LONG") != nullptr ? 3000000 : 100000;
  StartRace();
  int refused = 0;
  for (int i = 0; i < operations; ++i) {
    refused += OperateContained() ? 1 : 0;
    ExpectShownAsLogged();
    if (OneIn(200)) ExpectSameAfterLoading();
    if (HasFatalFailure() || HasFailure()) {
      FAIL() << "after operation " << i << ": " << rig_.Kinds();
    }
  }
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace quorvane
