#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

TEST(Laps, EarlyAndQuickLapsAreIgnored) {
  using Case = std::tuple<const char*, bool, int>;
  for (const auto& [script, manualStart, laps] :
       {Case{"L+-1 L+4999", true, 0}, Case{"L+5000", true, 1}, Case{"L+20000 L+2999", true, 1},
        Case{"L+20000 L+3000", true, 2}, Case{"L+20000 L+1", false, 2}}) {
    LaneRig rig("");
    rig.race.ManualStart = manualStart;
    rig.Play(script);
    EXPECT_EQ(rig.lane.Laps(), laps) << script;
    EXPECT_EQ(rig.owner.broadcasts, laps) << script;
  }
}

TEST(Laps, CellsRunAndFreeze) {
  LaneRig rig("");
  const auto after = [&](const char* script) {
    rig.lane.UpdateLapTime(rig.Play(script));
    return rig.Cell(0) + "|" + rig.Cell(1) + "|" + rig.Cell(9) + "|" + rig.Cell(10);
  };
  rig.lane.UpdateLapTime(-1);
  EXPECT_EQ(rig.Cell(0), "");
  rig.lane.UpdateLapTime(1234);
  EXPECT_EQ(rig.Cell(0), "1.2");
  rig.Play("L+7236");
  EXPECT_EQ(rig.Cell(1), "7.2");
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), Color::Rgb(0x8080FF));
  EXPECT_EQ(after("L+10000"), "7.24|17.24|hidden|hidden");
  EXPECT_EQ(rig.lane.lblLap[1].BackColor(), kSilver);
  EXPECT_EQ(after("8L"), "7.24|17.24|73.24|hidden");
  EXPECT_EQ(rig.lane.lblLap[10].Caption(), "");
  // Seen at pylon 2 before the tenth lap was over, withdrawn, and seen again: an eleventh lap is owed or not.
  EXPECT_EQ(after("C1+3999"), "7.24|17.24|73.24|77.2");
  EXPECT_EQ(after("W1+1001"), "7.24|17.24|73.24|hidden");
  EXPECT_EQ(rig.Final(), 73236);
  EXPECT_EQ(after("C1+500"), "7.24|17.24|73.24|78.7");
  EXPECT_EQ(rig.lane.lblLap[9].BackColor(), kSilver) << "no finish any more";
  EXPECT_EQ(after("L+2500"), "7.24|17.24|73.24|81.24");
  EXPECT_EQ(rig.lane.lblLap[10].BackColor(), kSilver);
  EXPECT_EQ(rig.Final(), 81236);
  rig.lane.UpdateLapTime(rig.Play("2L"));
  EXPECT_EQ(rig.lane.Laps(), 11);
}

TEST(Laps, ANoviceIsCreditedWithTheFirstLap) {
  LaneRig rig;
  const auto heads = [&] {
    std::string text;
    for (const Control* head : rig.lane.lblHdr) text += head->Visible() ? head->Caption().substr(3) : " -";
    return text;
  };
  rig.lane.chkNovice.SetValue(1);
  EXPECT_EQ(heads(), " 1 - 2 3 4 5 6 7 8 9 10");
  EXPECT_EQ(rig.lane.chkNovice.ForeColor(), kRed);
  rig.Start();
  EXPECT_FALSE(rig.lane.CanDoLap(0));
  rig.Play("L");
  EXPECT_EQ(rig.Kinds(), "L1 L2");
  EXPECT_EQ(rig.Cell(0) + "|" + rig.Cell(1) + "|" + rig.Cell(2), "7.00|hidden|7.0");
  rig.At(12000);
  EXPECT_FALSE(rig.lane.CanDoLap(1)) << "the station has counted one lap";
  EXPECT_TRUE(rig.lane.CanDoLap(2)) << "its second is the lane's third";
  rig.lane.chkNovice.SetValue(0);
  EXPECT_EQ(rig.lane.chkNovice.Value(), 1) << "not during a race";
  rig.Play("8L");
  EXPECT_EQ(rig.Final(), 68000);
  rig.race.RaceActive = false;
  rig.lane.chkNovice.SetValue(0);
  EXPECT_EQ(heads(), " 1 2 3 4 5 6 7 8 9 10 11");
  EXPECT_EQ(rig.lane.chkNovice.ForeColor(), kBlack);
}

TEST(Laps, AStationsLapCountsOnceAndIsLitWhileLockedOut) {
  using Info = std::pair<int, int>;
  LaneRig rig("");
  EXPECT_FALSE(rig.lane.CanDoLap(0));
  EXPECT_TRUE(rig.lane.CanDoLap(1));
  rig.At(7000);
  EXPECT_EQ(rig.Info(), Info(0, 0));
  rig.lane.cmdLap_Click();
  EXPECT_EQ(rig.Info(), Info(1, 255));
  rig.Play("L+3500");  // the timer of the first lap runs on
  rig.At(10999);
  EXPECT_EQ(rig.Info(), Info(2, 0));
  EXPECT_FALSE(rig.lane.CanDoLap(3)) << "locked out";
  rig.Play("C0+1");
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), kWindow);
  EXPECT_FALSE(rig.lane.CanDoLap(2)) << "counted already";
  EXPECT_TRUE(rig.lane.CanDoLap(3));
  rig.Play("T");
  EXPECT_EQ(rig.Info(), Info(2, 10));
  rig.Play("L");
  rig.At(28000);
  rig.lane.DoLap(28000, 1000);
  EXPECT_EQ(rig.Info(), Info(4, 125)) << "another lock-out has its own end";
  rig.At(58001);
  EXPECT_FALSE(rig.lane.CanDoLap(5)) << "finished";
}

TEST(Laps, ALaneFinishesByLapsByCutsAndBySilence) {
  using Case = std::tuple<const char*, std::int32_t, bool>;
  for (const auto& [script, after, finished] :
       {Case{"", 30000, false}, Case{"", 30001, true}, Case{"9L", 10000, false}, Case{"C0 10L", 10000, false},
        Case{"10L", 9999, false}, Case{"10L", 10000, true}, Case{"C0 C1 3L", 9999, false},
        Case{"C0 C1 3L", 10000, true}}) {
    LaneRig rig(script);
    rig.At(rig.owner.raceTime + after);
    EXPECT_EQ(rig.lane.IsFinished(), finished) << script << " " << after;
  }
  LaneRig rig("L");
  rig.lane.InitializeRace(-1000000);
  rig.Play("L C0 T");
  EXPECT_EQ(rig.lane.EventCount(), 0) << "does not fly";
  EXPECT_TRUE(rig.lane.IsFinished());
  rig.Start();
  EXPECT_FALSE(rig.lane.IsFinished());
}

TEST(Laps, ARefusedLapLeavesTheLaneAsItWas) {
  LaneRig rig("101L");
  const std::int32_t last = rig.lane.LastLapTime();
  EXPECT_THROW(rig.Play("L"), SubscriptError);
  EXPECT_EQ(rig.lane.LastLapTime(), last);
  EXPECT_EQ(rig.owner.broadcasts, 101);
  rig.lane.InitializeRace(2000000000);
  EXPECT_THROW(rig.LapAt(2000000000), OverflowError);
  EXPECT_THROW(rig.lane.InitializeRace(INT32_MIN), OverflowError);
  EXPECT_EQ(rig.lane.TimeBase(), 2000000000 - 60000);
}

}  // namespace
}  // namespace quorvane
