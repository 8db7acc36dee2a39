#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

TEST(Laps, EarlyAndQuickLapsAreIgnored) {
  struct {
    const char* what;
    bool manualStart;
    std::vector<std::int32_t> times;
    int laps;
  } const kCases[] = {{"before 5 s", true, {-1, 4999}, 0},
                      {"at 5 s", true, {5000}, 1},
                      {"within 3 s, started by hand", true, {20000, 22999}, 1},
                      {"3 s later", true, {20000, 23000}, 2},
                      {"within 3 s, started by the starter", false, {20000, 20001}, 2}};
  for (const auto& c : kCases) {
    LaneRig rig;
    rig.Start();
    rig.race.ManualStart = c.manualStart;
    for (const std::int32_t t : c.times) rig.LapAt(t);
    EXPECT_EQ(rig.lane.Laps(), c.laps) << c.what;
    EXPECT_EQ(rig.owner.lapEvents, c.laps) << c.what;
  }
}

TEST(Laps, CellsRunAndFreeze) {
  LaneRig rig;
  rig.Start();
  frmLane& lane = rig.lane;
  lane.UpdateLapTime(-1);
  EXPECT_EQ(lane.lblLap[0].Caption(), "");
  lane.UpdateLapTime(1234);
  EXPECT_EQ(lane.lblLap[0].Caption(), "1.2");
  rig.LapAt(10236);
  EXPECT_EQ(lane.lblLap[0].Caption(), "10.24");
  EXPECT_EQ(lane.lblLap[0].BackColor(), kSilver);
  EXPECT_TRUE(lane.lblLap[1].Visible());
  EXPECT_EQ(lane.lblLap[1].Caption(), "10.2");
  EXPECT_EQ(lane.lblStatus.BackColor(), Color::Rgb(0x8080FF));
  EXPECT_EQ(lane.Events()[0], (LaneEvent{1, 4, "L", "TM", 10236, 0}));
}

TEST(Laps, TheEleventhCellBelongsToALaneThatOwesTheLap) {
  LaneRig rig;
  rig.Start();
  frmLane& lane = rig.lane;
  const std::int32_t ten = rig.Fly(10, 10000);
  lane.UpdateLapTime(ten + 5000);
  EXPECT_FALSE(lane.lblLap[10].Visible());
  EXPECT_EQ(lane.lblLap[10].Caption(), "");
  // Seen at pylon 2 before the tenth lap was over: now the lane owes an eleventh.
  rig.CutAt(ten + 3999, "1o", 1);
  EXPECT_EQ(lane.LapTarget(), 11);
  EXPECT_TRUE(lane.lblLap[10].Visible());
  lane.UpdateLapTime(ten + 5000);
  EXPECT_EQ(lane.lblLap[10].Caption(), "78.0");
  // Withdrawn, and reported again: the cell goes and comes.
  rig.CutAt(ten + 6000, "oo", 1);
  EXPECT_FALSE(lane.lblLap[10].Visible());
  EXPECT_EQ(lane.lblLap[10].Caption(), "");
  EXPECT_EQ(lane.FinalTime(), ten);
  EXPECT_EQ(rig.Final(), ten);
  rig.CutAt(ten + 6500, "1o", 1);
  EXPECT_TRUE(lane.lblLap[10].Visible());
  EXPECT_EQ(lane.lblLap[9].BackColor(), kSilver) << "no finish any more";
  rig.LapAt(ten + 7000);
  EXPECT_EQ(lane.lblLap[10].Caption(), "80.00");
  EXPECT_EQ(lane.lblLap[10].BackColor(), kSilver);
  EXPECT_EQ(rig.Final(), ten + 7000);
}

TEST(Laps, ANoviceIsCreditedWithTheFirstLap) {
  LaneRig rig;
  rig.lane.chkNovice.SetValue(1);
  EXPECT_EQ(rig.lane.lblHdr[0].Caption(), "Lap 1");
  EXPECT_FALSE(rig.lane.lblHdr[1].Visible());
  EXPECT_EQ(rig.lane.lblHdr[10].Caption(), "Lap 10");
  rig.Start();
  EXPECT_TRUE(rig.lane.CanDoLap(1) || rig.lane.IsFinished());
  rig.LapAt(12000);
  EXPECT_EQ(rig.Kinds(), "L1 L2");
  EXPECT_EQ(rig.lane.lblLap[0].Caption(), "12.00");
  EXPECT_EQ(rig.lane.lblLap[0].BackColor(), kSilver);
  EXPECT_FALSE(rig.lane.lblLap[1].Visible());
  EXPECT_TRUE(rig.lane.lblLap[2].Visible());
  // The station has counted one lap; its second is the lane's third.
  rig.At(19000);
  EXPECT_FALSE(rig.lane.CanDoLap(1));
  EXPECT_TRUE(rig.lane.CanDoLap(2));
  const std::int32_t last = rig.Fly(8, 19000);
  EXPECT_EQ(rig.lane.Laps(), 10);
  EXPECT_EQ(rig.Final(), last);

  rig.race.RaceActive = false;
  rig.lane.chkNovice.SetValue(0);
  EXPECT_EQ(rig.lane.lblHdr[1].Caption(), "Lap 2");
  EXPECT_TRUE(rig.lane.lblHdr[1].Visible());
}

TEST(Laps, TheNoviceBoxStaysAsItIsDuringARace) {
  for (const int before : {0, 1}) {
    LaneRig rig;
    rig.lane.chkNovice.SetValue(before);
    rig.Start();
    const Color color = rig.lane.chkNovice.ForeColor();
    rig.lane.chkNovice.SetValue(1 - before);
    EXPECT_EQ(rig.lane.chkNovice.Value(), before);
    EXPECT_EQ(rig.lane.chkNovice.ForeColor(), color);
    EXPECT_FALSE(rig.lane.InNoviceClick());
  }
}

TEST(Laps, AStationsLapCountsOnce) {
  LaneRig rig;
  rig.Start();
  rig.At(10000);
  EXPECT_FALSE(rig.lane.CanDoLap(0));
  EXPECT_TRUE(rig.lane.CanDoLap(1));
  rig.LapAt(10000);
  rig.At(13999);
  EXPECT_FALSE(rig.lane.CanDoLap(2)) << "locked out";
  rig.At(14000);
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), kWindow);
  EXPECT_FALSE(rig.lane.CanDoLap(1)) << "counted already";
  EXPECT_TRUE(rig.lane.CanDoLap(2));
  rig.At(40001);
  EXPECT_FALSE(rig.lane.CanDoLap(2)) << "finished";
}

TEST(Laps, ALaneFinishesByLapsByCutsAndBySilence) {
  struct {
    const char* what;
    int laps;
    int cuts;
    std::int32_t sinceLast;
    bool finished;
  } const kCases[] = {{"silent from the start", 0, 0, 30000, false},
                      {"at last", 0, 0, 30001, true},
                      {"nine laps", 9, 0, 10000, false},
                      {"ten laps", 10, 0, 9999, false},
                      {"ten laps, 10 s", 10, 0, 10000, true},
                      {"a cut: owes one", 10, 1, 10000, false},
                      {"two cuts", 3, 2, 10000, true}};
  for (const auto& c : kCases) {
    LaneRig rig;
    rig.Start();
    if (c.cuts > 0) rig.CutAt(1, c.cuts == 1 ? "o1" : "11", 0);
    const std::int32_t last = c.laps > 0 ? rig.Fly(c.laps, 6000) : 0;
    rig.At(last + c.sinceLast);
    EXPECT_EQ(rig.lane.IsFinished(), c.finished) << c.what;
  }
}

TEST(Laps, ALaneThatDoesNotFlyIsFinishedAndTakesNothing) {
  LaneRig rig;
  rig.Start();
  rig.LapAt(10000);
  rig.lane.InitializeRace(-1000000);
  rig.At(-500000);
  EXPECT_TRUE(rig.lane.IsFinished());
  EXPECT_EQ(rig.lane.TimeBase(), 0);
  EXPECT_EQ(rig.lane.EventCount(), 0);
  EXPECT_EQ(rig.lane.Laps(), 0);
  rig.LapAt(20000);
  rig.lane.DoCut("11", 0, 20000);
  rig.lane.DoTurn(4, 20000, 80);
  EXPECT_EQ(rig.lane.EventCount(), 0);
  rig.Start();
  EXPECT_FALSE(rig.lane.IsFinished());
}

TEST(Laps, InitializeRaceClearsTheRaceBefore) {
  LaneRig rig;
  rig.race.CommActive = true;
  rig.Start();
  EXPECT_FALSE(rig.lane.cmdLap.Visible());
  rig.race.CommActive = false;
  rig.owner.clockRunning = false;
  rig.CutAt(6000, "11", 2);
  rig.Fly(11, 7000);
  rig.Final();
  rig.lane.LaneOrder(1);
  rig.lane.lblStatus.SetTag("Locked");
  rig.lane.lblCut_MouseMove(0);
  rig.lane.InitializeRace(0);
  const frmLane& lane = rig.lane;
  EXPECT_EQ(lane.TimeBase(), -60000);
  EXPECT_EQ(lane.FinalTime(), kNoFinalTime);
  EXPECT_EQ(lane.LapTarget(), 10);
  EXPECT_EQ(lane.CutsBeforeFinish(), 0);
  EXPECT_EQ(lane.cmdCut.Caption(), "Cut");
  EXPECT_EQ(lane.lblStatus.Tag(), "");
  EXPECT_EQ(lane.lblStatus.BackColor(), kWindow);
  EXPECT_FALSE(lane.tmrLaps.Enabled());
  EXPECT_FALSE(lane.cmdOrder.Visible());
  EXPECT_FALSE(lane.cmdShow.Visible());
  EXPECT_FALSE(lane.lblCut[0].Visible());
  EXPECT_TRUE(lane.lblLap[0].Visible());
  EXPECT_FALSE(lane.lblLap[1].Visible());
  EXPECT_TRUE(lane.cmdLap.Visible());
  EXPECT_FALSE(lane.cmdLap.Enabled());
}

TEST(Laps, ARefusedLapLeavesTheLaneAsItWas) {
  LaneRig rig;
  rig.Start();
  for (int i = 0; i < 101; ++i) rig.LapAt(10000 + 4000 * i);
  ASSERT_EQ(rig.lane.EventCount(), 101);
  const std::int32_t last = rig.lane.LastLapTime();
  EXPECT_THROW(rig.LapAt(900000), SubscriptError);
  EXPECT_EQ(rig.lane.LastLapTime(), last);
  EXPECT_EQ(rig.owner.lapEvents, 101);

  rig.lane.InitializeRace(2000000000);
  rig.race.RaceDone = true;
  EXPECT_THROW(rig.LapAt(2000000000), OverflowError);
  EXPECT_EQ(rig.lane.EventCount(), 0);
  EXPECT_THROW(rig.lane.InitializeRace(INT32_MIN), OverflowError);
  EXPECT_EQ(rig.lane.TimeBase(), 2000000000 - 60000);
}

TEST(Laps, TheLightIsWhatIsLeftOfLapOrTurn) {
  LaneRig rig;
  rig.Start();
  std::uint8_t laps = 9;
  std::uint8_t lit = 9;
  std::array<std::int16_t, 4> cuts = {};
  rig.lane.GetInfo(laps, lit, cuts);
  EXPECT_EQ(laps, 0);
  EXPECT_EQ(lit, 0);
  rig.LapAt(10000);
  rig.lane.GetInfo(laps, lit, cuts);
  EXPECT_EQ(laps, 1);
  EXPECT_EQ(lit, 255);
  rig.LapAt(13500);  // the timer of the first lap runs on
  rig.At(13900);
  rig.lane.GetInfo(laps, lit, cuts);
  EXPECT_EQ(lit, 12);
  rig.lane.DoTurn(4, 13900, 800);
  rig.lane.GetInfo(laps, lit, cuts);
  EXPECT_EQ(lit, 100);
  rig.At(14700);
  rig.lane.GetInfo(laps, lit, cuts);
  EXPECT_EQ(lit, 0);
}

}  // namespace
}  // namespace quorvane
