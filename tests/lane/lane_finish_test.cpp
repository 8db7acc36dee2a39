#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

constexpr Color kFinishColor = Color::Rgb(0x80FF80);
constexpr std::int32_t kNone = kNoResult;

TEST(Finish, TheLogMakesTheResultAndItComesBackFromTheFile) {
  struct {
    const char* script;
    bool fai;
    const char* counts;  // laps, target, cuts, those before the finish
    std::int32_t finalTime;
    const char* status;
    int cell;  // of the finish, or with "DNF" or "DBL"; -1: none
    const char* text;
  } const kCases[] = {{"9L", false, "9 10 0 0", kNone, "DNF", 9, "DNF"},
                      {"10L", false, "10 10 0 0", 70000, "1:10.00", 9, "70.00"},
                      {"12L", false, "12 10 0 0", 70000, "1:10.00", 9, "70.00"},
                      {"9L P 2L", false, "11 11 1 1", 84000, "1:24.00", 10, "84.00"},
                      {"9L P L", false, "10 11 1 1", kNone, "DNF", 10, "DNF"},
                      {"10L P", false, "10 10 1 0", 70000, "1:10.00", 9, "70.00"},
                      {"D0 10L", false, "10 11 2 2", kNone, "Dbl Cut", 10, "DBL"},
                      {"P P P 11L", false, "11 11 3 3", 98000, "Dbl Cut", -1, ""},
                      {"P 9L P 2L", false, "11 11 2 2", 91000, "Dbl Cut", -1, ""},
                      {"9L P L", true, "10 10 1 1", 77000, "1:17.00", 9, "77.00"},
                      {"P 10L P", true, "10 10 2 1", 77000, "1:17.00", 9, "77.00"},
                      {"4L P 5L P L", true, "10 10 2 2", 200000, "Dbl Cut", -1, ""},
                      {"D0 4L", true, "4 10 2 2", kNone, "Dbl Cut", 4, "DBL"}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.script + std::string(c.fai ? ", FAI" : ""));
    LaneRig rig(c.script, c.fai);
    const frmLane& lane = rig.lane;
    rig.At(rig.owner.raceTime + 30001);
    const bool finished = *c.status == '1';
    EXPECT_EQ(rig.Final(), finished ? c.finalTime : kNone);
    EXPECT_EQ(lane.FinalTime(), c.finalTime);
    EXPECT_EQ(lane.lblStatus.Caption(), c.status);
    EXPECT_EQ(std::to_string(lane.Laps()) + " " + std::to_string(lane.LapTarget()) + " " +
                  std::to_string(lane.CutCount()) + " " + std::to_string(lane.CutsBeforeFinish()),
              c.counts);
    for (int i = 0; i <= 10; ++i) {
      const std::string& text = lane.lblLap[i].Caption();
      EXPECT_EQ(lane.lblLap[i].BackColor() == kFinishColor, finished && i == c.cell) << i;
      EXPECT_EQ(text == "DNF" || text == "DBL", !finished && i == c.cell) << i;
      EXPECT_TRUE(i != c.cell || text == c.text) << text;
    }
    const std::pair<const Control&, const Control&> kBoxes[] = {{lane.txtLapTen, lane.lblLap[9]},
                                                                {lane.txtLapEleven, lane.lblLap[10]}};
    for (const auto& [box, cell] : kBoxes) {
      EXPECT_EQ(box.Text(), cell.Caption());
      EXPECT_EQ(box.BackColor(), finished ? cell.BackColor() : Color::Rgb(0xFFC0C0));
    }

    for (const char* mode : {"", "7, FAI", c.fai ? "4, FAI 123" : "3, AMA 2413"}) {
      rig.owner.values[{"Race3", "RaceMode"}] = mode;
      rig.lane.SaveLane("Race3");
      LaneRig other;
      other.owner.values = rig.owner.values;
      other.race.IsFaiMode = c.fai == (*mode == '\0' || *mode == '7');  // an unknown mode is the console's
      other.lane.LoadLane("Race3");
      EXPECT_EQ(Shown(other.lane), Shown(lane)) << mode;
      EXPECT_TRUE(other.lane.IsFinished());
      other.lane.InitializeRace(-1000000);
      EXPECT_EQ(other.Cell(0), "") << "also off a lane that does not fly the next one";
      other.Start();
      EXPECT_FALSE(other.lane.IsFinished());
    }
    rig.lane.LaneOrder(1);
    EXPECT_EQ(lane.cmdOrder.Visible(), finished);
  }
}

TEST(Finish, AnEntryAfterTheRaceShowsInTheResult) {
  LaneRig rig("9L");
  rig.At(94000);
  rig.lane.FinalizeRace();
  rig.race.RaceDone = true;
  const Control& box = rig.lane.txtLapTen;
  for (const auto& [entry, shown] : {std::pair("L", "101.00 101.00 80FF80 1:41.00"),
                                     {"C0+10", "101.00 101.00 80FF80 1:41.00"},  // it costs nothing any more
                                     {"C2+10", "101.00 101.00 FFC0C0 Dbl Cut"}}) {
    rig.Play(entry);
    EXPECT_EQ(
        rig.Cell(9) + " " + box.Text() + " " + box.BackColor().Name() + " " + rig.lane.lblStatus.Caption(),
        shown);
  }
  rig.lane.txtLapTen.onGotFocus();
  EXPECT_EQ(box.SelectionLength(), 6);
}

TEST(Finish, AnotherRaceReplacesWhateverThePanelShowed) {
  const std::function<void(frmLane&)> kWays[] = {[](frmLane& lane) { lane.InitializeRace(0); },
                                                 [](frmLane& lane) { lane.LoadLane("Race1"); },
                                                 [](frmLane& lane) { lane.LoadLane("Race9"); }};
  for (const auto& turn : kWays) {
    LaneRig fresh;
    LaneRig rig("D2 11L");
    fresh.owner.values = rig.owner.values = {{{"Race1_Lane1", "NumEvents"}, "1"},
                                             {{"Race1_Lane1", "Event0"}, "1,4,L,TM,20000,0"}};
    rig.At(100000);
    rig.lane.cntrCut(1);
    rig.Final();
    rig.Play("T+1 L+1");
    rig.lane.cmdOrder.SetVisible(true);
    rig.owner.answer = {DialogAnswer::Word::Text, "Crashed"};
    rig.lane.lblStatus_Click();
    rig.lane.lblCut_MouseMove(0);
    turn(rig.lane);
    turn(fresh.lane);
    EXPECT_EQ(Shown(rig.lane), Shown(fresh.lane)) << &turn - kWays;
    EXPECT_FALSE(rig.lane.cmdOrder.Visible() || rig.lane.cmdShow.Visible());
  }
}

TEST(Finish, InitializeRaceStartsTimesAndButtonsAnew) {
  LaneRig rig("L");
  rig.lane.cntrCut(1);
  for (const bool on : {true, false}) {
    rig.owner.clockRunning = on;
    rig.race.CommActive = on;
    rig.lane.InitializeRace(0);
    EXPECT_EQ(rig.lane.cmdLap.Visible(), !on);
  }
  EXPECT_FALSE(rig.lane.cmdLap.Enabled());
  rig.lane.UpdateLapTime(0);
  EXPECT_TRUE(rig.lane.cmdLap.Enabled());
  EXPECT_EQ(rig.lane.TimeBase(), -60000);
  EXPECT_EQ(rig.lane.LastLapTime(), 0);
  EXPECT_EQ(rig.lane.MissedPylonTimes()[0], 0);
}

TEST(Places, AreGivenOneAfterTheOther) {
  LaneRig rig("10L");
  frmLane& lane = rig.lane;
  rig.Final();
  lane.LaneOrder(1);
  EXPECT_EQ(lane.cmdOrder.Caption(), "First");
  lane.LaneOrder(4);
  lane.cmdOrder_Click();
  rig.Play("C2+10 W2+10");
  rig.Final();
  EXPECT_EQ(lane.lblStatus.Caption() + " " + lane.lblStatus.Tag(), "Fourth Locked");
  lane.LaneOrder(2);
  EXPECT_FALSE(lane.cmdOrder.Visible());
  lane.LaneOrder(1);
  EXPECT_TRUE(lane.cmdOrder.Visible());
  EXPECT_EQ(lane.lblStatus.Caption() + " " + lane.lblStatus.Tag(), "1:10.00 ");
  lane.cmdOrder_Click();
  lane.LaneOrder(5);
  lane.cmdOrder_Click();
  EXPECT_EQ(rig.owner.orders, (std::vector<int>{4, 2})) << "the next place, and none after the last";
  EXPECT_THROW(lane.LaneOrder(0), RunTimeError);
  EXPECT_THROW(lane.LaneOrder(6), RunTimeError);
}

TEST(Places, TheOperatorMayTypeAStatus) {
  using Word = DialogAnswer::Word;
  using Case = std::tuple<DialogAnswer, bool, const char*>;
  for (const auto& [answer, otherRace, after] :
       {Case{{Word::Text, "Crashed"}, false, "Crashed"}, Case{{Word::Text, " "}, false, "before"},
        Case{{Word::Cancel, "Crashed"}, false, "before"}, Case{{Word::Text, "Crashed"}, true, ""}}) {
    LaneRig rig;
    rig.owner.answer = {Word::Text, "before"};
    rig.lane.lblStatus.onClick();
    rig.owner.answer = answer;
    if (otherRace) rig.owner.whileAsking = [&rig] { rig.lane.InitializeRace(60000); };
    rig.lane.lblStatus.onClick();
    EXPECT_EQ(rig.lane.lblStatus.Caption(), after);
    EXPECT_EQ(rig.owner.asked.preset, "before");
  }
}

TEST(Panel, StandsInTheConsolesFrame) {
  LaneRig rig;
  LaneRig console;
  Control& frame = console.lane.fraLane;
  rig.lane.SetFormParent(frame);
  EXPECT_FALSE(frame.Visible());
  EXPECT_TRUE(rig.lane.Visible());
  EXPECT_EQ(rig.lane.fraLane.Caption(), " Lane 1");
}

}  // namespace
}  // namespace quorvane
