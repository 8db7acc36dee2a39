#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

TEST(Cuts, AJudgesReportsAreFollowed) {
  LaneRig rig;
  rig.Start();
  rig.LapAt(10000);
  struct {
    std::int32_t time;
    const char* code;
    int source;
    const char* log;
  } const kSteps[] = {{20000, "1o", 0, "L1 C1"},          {20100, "1o", 0, "L1 C1"},
                      {20200, "xx", 0, "L1 -C1"},         {21199, "o1", 0, "L1 C1"},
                      {22000, "oo", 0, "L1 -C1"},         {23000, "1o", 0, "L1 -C1 C1"},
                      {24000, "11", 1, "L1 -C1 C1 C1 C1"}};
  for (const auto& step : kSteps) {
    rig.CutAt(step.time, step.code, step.source);
    EXPECT_EQ(rig.Kinds(), step.log) << step.time;
  }
  EXPECT_EQ(rig.owner.raceEvents, 7);
}

TEST(Cuts, ACutAtAFarPylonSoonAfterALapBelongsToTheLapBefore) {
  struct {
    int source;
    std::int32_t after;
    const char* log;
  } const kCases[] = {{2, 3999, "L1 C1 L2"},
                      {2, 4000, "L1 L2 C2"},
                      {1, 0, "L1 C1 L2"},
                      {0, 10, "L1 L2 C2"},
                      {3, 10, "L1 L2 C2"}};
  for (const auto& c : kCases) {
    LaneRig rig;
    rig.Start();
    const std::int32_t lap = rig.Fly(2, 10000);
    rig.CutAt(lap + c.after, "1o", c.source);
    EXPECT_EQ(rig.Kinds(), c.log) << c.source << " " << c.after;
  }
}

TEST(Cuts, TheCaptionsShowTheCutsBeforeTheFinish) {
  LaneRig rig;
  rig.Start();
  rig.CutAt(6000, "1o", 0);
  EXPECT_EQ(rig.lane.cmdCut.Caption(), "Cuts(1)");
  EXPECT_EQ(rig.lane.lblStatus.ForeColor(), kRed);
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "");
  rig.CutAt(7000, "11", 1);
  EXPECT_EQ(rig.lane.cmdCut.Caption(), "Cuts(3)");
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "DBL CUT");
  rig.CutAt(8000, "oo", 1);
  rig.CutAt(8000, "oo", 0);
  EXPECT_EQ(rig.lane.cmdCut.Caption(), "Cut");
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "");
  EXPECT_EQ(rig.lane.lblStatus.ForeColor(), kWindowText);
  for (Control* mark : rig.lane.lblCut) EXPECT_FALSE(mark->Visible());
}

TEST(Cuts, ALanePastItsLastCellTakesNoReport) {
  LaneRig rig;
  rig.Start();
  const std::int32_t last = rig.Fly(11, 10000);
  rig.CutAt(last + 100, "11", 0);
  EXPECT_EQ(rig.lane.EventCount(), 11);
  EXPECT_EQ(rig.owner.raceEvents, 0);
}

TEST(Cuts, MissedPylonKeys) {
  LaneRig rig;
  rig.Start();
  rig.At(3000);
  rig.lane.cntrCutP1(0);
  EXPECT_EQ(rig.lane.EventCount(), 0) << "within three seconds of the clock's zero";
  rig.At(3001);
  rig.lane.cntrCutP1(0);
  rig.At(6001);
  rig.lane.cntrCutP1(0);
  EXPECT_EQ(rig.Kinds(), "C0");
  rig.lane.cntrCutP3(0);
  rig.At(6002);
  rig.lane.cntrCutP1(0);
  rig.lane.cntrCutP2(0);
  ASSERT_EQ(rig.Kinds(), "C0 C0 C0 C0");
  EXPECT_EQ(rig.lane.Events()[0].SourceName, "MP1");
  EXPECT_EQ(rig.lane.Events()[1].SourceName, "MP3");
  EXPECT_EQ(rig.lane.Events()[3].SourceName, "MP2");
  rig.At(20000);
  rig.lane.cntrCutP2(0);
  EXPECT_EQ(rig.lane.EventCount(), 4) << "four cuts are enough";
  rig.lane.cmdCut_Click();
  EXPECT_EQ(rig.lane.Events()[4].SourceName, "ME");
  rig.race.RaceActive = false;
  rig.At(30000);
  rig.lane.cmdCut_Click();
  rig.lane.cntrCutP3(0);
  EXPECT_EQ(rig.lane.EventCount(), 5);
  EXPECT_EQ(rig.lane.MissedPylon(), 3);
  EXPECT_EQ(rig.lane.MissedPylonTimes()[2], 30000);
}

TEST(Cuts, ARefusedCutLeavesTheLaneAsItWas) {
  LaneRig rig;
  rig.Start();
  rig.CutAt(4000, "1o", 0);
  for (int i = 0; i < 50; ++i) {
    rig.lane.DoTurn(4, 5000, 80);
    rig.CutAt(5000 + 2000 * i, i % 2 == 0 ? "1o" : "oo", 1);
  }
  while (rig.lane.EventCount() < 101) rig.lane.DoTurn(4, 200000, 80);
  rig.lane.FinalizeRace();
  const std::string log = rig.Kinds();
  const std::int32_t turnEnd = rig.lane.TurnTimerEnd();
  rig.At(300000);
  EXPECT_THROW(rig.lane.cntrCutP2(0), SubscriptError);
  EXPECT_THROW(rig.lane.cmdCut_Click(), SubscriptError);
  EXPECT_THROW(rig.lane.DoCut("11", 2, 300000), SubscriptError);
  EXPECT_THROW(rig.lane.DoTurn(4, 300000, 80), SubscriptError);
  EXPECT_EQ(rig.Kinds(), log);
  EXPECT_EQ(rig.lane.MissedPylon(), 0);
  EXPECT_EQ(rig.lane.MissedPylonTimes()[1], 0);
  EXPECT_FALSE(rig.lane.NeedsCutDisplay());
  EXPECT_FALSE(rig.lane.tmrTurns.Enabled());
  EXPECT_LE(rig.lane.TurnTimerEnd(), turnEnd);
  rig.CutAt(300000, "oo", 0);
  EXPECT_EQ(rig.lane.Events()[0].Kind, "-C") << "a withdrawal needs no slot";
}

TEST(Turns, ShowTheLightAndTheSpeed) {
  LaneRig rig;
  rig.Start();
  rig.LapAt(10000);
  rig.lane.DoTurn(4, 11000, 160);
  EXPECT_FALSE(rig.lane.tmrLaps.Enabled());
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), kGreen);
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "");
  EXPECT_FALSE(rig.lane.CanDoTurn());
  rig.At(10160);
  EXPECT_TRUE(rig.lane.CanDoTurn());
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), kWindow);
  EXPECT_EQ(rig.lane.TurnTimerEnd(), 0);
  rig.LapAt(17000);
  rig.lane.DoTurn(4, 17000, 160);  // in the very millisecond of the lap
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "0 MPH");
  rig.At(20000);
  rig.lane.cmdTurn_Click();
  EXPECT_EQ(rig.lane.tmrTurns.Interval(), 2000);
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "0 MPH");
  EXPECT_EQ(rig.Kinds(), "L1 T1 L2 T2 T2");
  EXPECT_EQ(rig.lane.Turns(), 2);
  EXPECT_TRUE(rig.lane.lblCut[1].Visible());
  EXPECT_FALSE(rig.lane.lblCut[2].Visible());
  EXPECT_EQ(rig.lane.lblCut[1].Anchor(), &rig.lane.lblLap[2]);
}

TEST(Turns, ThePopUpFollowsThePointer) {
  LaneRig rig;
  rig.Start();
  rig.CutAt(6000, "1o", 0);
  rig.lane.lblCut[0].onHover();
  EXPECT_TRUE(rig.lane.cmdShow.Visible());
  EXPECT_EQ(rig.lane.cmdShow.Caption(), "C P1 6.00");
  EXPECT_EQ(rig.lane.cmdShow.Anchor(), &rig.lane.lblCut[0]);
  rig.lane.fraLane.onHover();
  EXPECT_FALSE(rig.lane.cmdShow.Visible());
  rig.lane.lblCut[0].onHover();
  EXPECT_TRUE(rig.lane.cmdShow.Visible());
  rig.CutAt(7000, "oo", 0);
  EXPECT_FALSE(rig.lane.cmdShow.Visible()) << "its mark is gone";
  EXPECT_THROW(rig.lane.lblCut_MouseMove(40), SubscriptError);
}

}  // namespace
}  // namespace quorvane
