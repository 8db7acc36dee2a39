#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

TEST(Cuts, ALaneFollowsWhatEachJudgeReports) {
  const std::pair<const char*, const char*> kCases[] = {
      {"C0 C0+100", "C0"},
      {"C0 W0+100 W0+100", "-C0"},
      {"C0 L D0 C0+100", "C0 L1 -C1"},  // the later of two is withdrawn
      {"C0 L D0 W0+100", "-C0 L1 -C1"},
      {"C0 D1 W0 C1", "-C0 C0 -C0"},
      {"C0 W0 C0+999", "C0"},  // back within a second
      {"C0 W0 C0+1000", "-C0 C0"},
      {"C0 W0 C1+100", "-C0 C0"},
      {"C0 C1 W0 C0+100", "-C0 C0 C0"},
      {"C0 W0 D0+100", "C0 C0"},
      {"2L D2+3999", "L1 C1 C1 L2"},  // belongs to the lap before
      {"2L C2+4000", "L1 L2 C2"},
      {"2L C1+0", "L1 C1 L2"},
      {"2L C0+10", "L1 L2 C2"},
      {"2L C3+10", "L1 L2 C2"},
      {"C0 P", "C0 C0 C0"},  // the panel wants two and has none
      {"10L C0 L D0", "L1 L2 L3 L4 L5 L6 L7 L8 L9 L10 C10 L11"}};
  for (const auto& [script, log] : kCases) EXPECT_EQ(LaneRig(script).Kinds(), log) << script;
  for (const auto& [code, cuts] : {std::pair("o1", 1), {"11", 2}, {"1", 0}, {"11o", 0}}) {
    LaneRig rig("");
    rig.CutAt(6000, code, 0);
    EXPECT_EQ(rig.lane.CutCount(), cuts) << code;
    EXPECT_EQ(rig.owner.broadcasts, 1);
  }
}

TEST(Cuts, TheCaptionsShowTheCutsBeforeTheFinish) {
  for (const auto& [script, shown] : {std::pair("C0", "Cuts(1)||FF0000"),
                                      {"C0 C1+100", "Cuts(2)|DBL CUT|FF0000"},
                                      {"C0 C1+100 C2+100", "Cuts(3)|DBL CUT|FF0000"},
                                      {"C0 C1 W1 W0", "Cut||windowText"},
                                      {"10L C0", "Cut||buttonText"}}) {
    const LaneRig rig(script);
    const Control& status = rig.lane.lblStatus;
    EXPECT_EQ(rig.lane.cmdCut.Caption() + "|" + status.Caption() + "|" + status.ForeColor().Name(), shown);
  }
}

TEST(Cuts, KeysNameTheMissedPylon) {
  LaneRig rig("");
  // Time, pylon (0: the button for a cut), cuts in the log.
  using Step = std::tuple<std::int32_t, int, int>;
  for (const auto& [time, pylon, cuts] :
       {Step{3000, 1, 0}, Step{3001, 1, 1}, Step{5000, 3, 1}, Step{6001, 1, 1}, Step{6002, 1, 2},
        Step{6002, 2, 3}, Step{8001, 3, 4}, Step{9003, 2, 4}, Step{20000, 0, 5}, Step{30000, 0, 5}}) {
    rig.At(time);
    rig.race.RaceActive = time != 5000 && time < 30000;
    pylon == 0 ? rig.lane.cmdCut_Click() : rig.lane.cntrCut(pylon);
    EXPECT_EQ(rig.lane.EventCount(), cuts) << time << " " << pylon;
  }
  rig.lane.cmdLap_Click();
  EXPECT_EQ(rig.Kinds(), "C0 C0 C0 C0 C0") << "no race any more";
  const char* const kNames[] = {"MP1", "MP1", "MP2", "MP3", "ME"};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(rig.lane.Events()[i].SourceName, kNames[i]) << i;
}

TEST(Cuts, ARefusedCutLeavesTheLaneAsItWas) {
  LaneRig rig("C0 99T+100");
  for (const bool full : {false, true}) {
    if (full) rig.Play("T");
    rig.At(rig.owner.raceTime + 9000);
    const auto before = Shown(rig.lane);
    EXPECT_THROW(rig.Play("D2"), SubscriptError) << "both or none";
    if (full) {
      EXPECT_THROW(rig.lane.cntrCut(2), SubscriptError);
      EXPECT_THROW(rig.Play("T"), SubscriptError);
    }
    EXPECT_EQ(Shown(rig.lane), before);
    EXPECT_FALSE(rig.lane.NeedsCutDisplay());
  }
  EXPECT_EQ(rig.lane.MissedPylon(), 0);
  EXPECT_EQ(rig.lane.MissedPylonTimes()[1], 0);
  rig.Play("W0");
  EXPECT_EQ(rig.lane.Events()[0].Kind, "-C") << "a withdrawal needs no slot";
}

TEST(Turns, ShowTheLightAndTheSpeed) {
  LaneRig rig("L T+1000");
  EXPECT_FALSE(rig.lane.tmrLaps.Enabled());
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), kGreen);
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "");
  EXPECT_FALSE(rig.lane.CanDoTurn());
  rig.At(8080);
  EXPECT_TRUE(rig.lane.CanDoTurn());
  EXPECT_EQ(rig.lane.lblStatus.BackColor(), kWindow);
  EXPECT_EQ(rig.lane.TurnTimerEnd(), 0);
  rig.Play("L T+0");  // in the very millisecond of the lap
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "0 MPH");
  rig.At(20000);
  rig.lane.cntrCut(1);
  rig.lane.cmdTurn_Click();
  EXPECT_EQ(rig.lane.tmrTurns.Interval(), 2000);
  EXPECT_EQ(rig.Kinds(), "L1 T1 L2 T2 C2 T2");
  EXPECT_EQ(rig.lane.Events()[5].SourceName, "ME");
  EXPECT_EQ(rig.lane.Turns(), 2);
  rig.race.RaceActive = false;
  rig.At(30000);
  rig.lane.cmdTurn_Click();
  EXPECT_EQ(rig.lane.EventCount(), 6);
  rig.At(46000);
  EXPECT_FALSE(rig.lane.CanDoTurn()) << "finished";
}

TEST(Marks, StandInTheColumnOfTheirLap) {
  const LaneRig rig("T T L T C1 9L T C3", true);
  std::string marks;
  for (const Control* mark : rig.lane.lblCut) {
    if (mark->Visible()) marks += mark->Anchor()->Name() + " " + mark->Caption() + "|" + mark->Tag() + "; ";
  }
  EXPECT_EQ(marks,
            "lblLap(0) T  7.00|T TM 7.00; lblLap(1) T  28.00|T TM 28.00; lblLap(1) C P2 35.00|C P2 35.00; "
            "lblLap(10) T  105.00|T TM 105.00; lblLap(10) C ST 112.00|C ST 112.00; ");
  EXPECT_EQ(rig.lane.lblCut[3].BackColor(), kWhite);
  EXPECT_EQ(rig.lane.lblCut[4].BackColor(), kButtonFace);
  const LaneRig late("T L T L T L T L T L T L T L T L T L T L T L T");
  const ControlArray& strip = late.lane.lblCut;
  EXPECT_EQ(strip[10].Anchor()->Name() + " " + strip[10].BackColor().Name(), "lblLap(10) FFFFFF");
  EXPECT_EQ(strip[11].Anchor()->Name() + " " + strip[11].BackColor().Name(), "lblLap(10) buttonFace");
  EXPECT_FALSE(strip[11].Visible()) << "one more turn than there are columns";
}

TEST(Marks, ThePopUpFollowsThePointer) {
  LaneRig rig("D0");
  for (const int mark : {0, 1}) {
    rig.lane.lblCut[mark].onHover();
    EXPECT_EQ(rig.lane.cmdShow.Caption(), "C P1 7.00");
    EXPECT_EQ(rig.lane.cmdShow.Anchor(), &rig.lane.lblCut[mark]);
  }
  rig.lane.fraLane.onHover();
  EXPECT_FALSE(rig.lane.cmdShow.Visible());
  rig.lane.lblCut[1].onHover();
  EXPECT_TRUE(rig.lane.cmdShow.Visible());
  rig.Play("C0");
  EXPECT_FALSE(rig.lane.cmdShow.Visible()) << "its mark is gone";
}

TEST(LaneLog, NamesSourcesAndTalliesTheirCuts) {
  LaneLog log;
  for (const int source : {0, 1, 2, 3, kPanelSource, 4, 2, 6, 7, 253, 255}) log.AddEvent({"C", 1000, source});
  std::string names;
  for (const LaneEvent& event : log.Entries()) names += event.SourceName + " ";
  EXPECT_EQ(names, "P1 P2 P3 ST ME TM P3 PY ? ? ? ");
  EXPECT_EQ(RecountCuts(log, false).pylonCuts, (PylonTally{11, 0, 0, 0})) << "all for the first entry's";
  using Tally = std::pair<std::string, PylonTally>;
  for (const auto& [name, tally] :
       {Tally{"P1", {1, 1, 2, 7}}, Tally{"2", {0, 1, 3, 7}}, Tally{"4", {1, 1, 2, 7}}}) {
    log.Read([&](const std::string& key) {
      return key == "NumEvents" ? "11" : key == "Event0" ? "0,0,C," + name + ",1000,1000" : "";
    });
    EXPECT_EQ(RecountLaps(log, false).pylonCuts, tally) << name;
  }
}

TEST(LaneLog, AFullStripStepsBackAndShowsNoMoreMarks) {
  LaneLog log;
  for (int i = 0; i < 14; ++i) log.AddEvent({i % 2 == 0 ? "T" : "L", 1000 * i, 4, (i + 1) / 2});
  for (int i = 0; i < 61; ++i) log.AddEvent({"C", 1000 * i, 0, 7});
  const CutRecount r = RecountCuts(log, false);
  EXPECT_EQ(r.cutCount, 33);
  for (const CutMark& mark : r.marks) EXPECT_LE(mark.index, kLastCutMark);
}

}  // namespace
}  // namespace quorvane
