#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

constexpr Color kFinishColor = Color::Rgb(0x80FF80);
constexpr Color kNoFinishColor = Color::Rgb(0xFFC0C0);

TEST(Finish, ResultStatusAndCells) {
  struct {
    const char* what;
    bool fai;
    const char* cuts;
    int laps;
    std::int32_t final;
    const char* status;
    int finishCell;      // -1: none
    int unfinishedCell;  // -1: none
    const char* text;
  } const kCases[] = {{"ten laps", false, "oo", 10, 73000, "1:13.00", 9, -1, ""},
                      {"a cut and eleven laps", false, "1o", 11, 80000, "1:20.00", 10, -1, ""},
                      {"a cut and ten laps", false, "1o", 10, kNoFinalTime, "DNF", -1, 10, "DNF"},
                      {"two cuts and ten laps", false, "11", 10, kNoFinalTime, "Dbl Cut", -1, 10, "DBL"},
                      {"two cuts and eleven laps", false, "11", 11, kNoFinalTime, "Dbl Cut", -1, -1, ""},
                      {"nine laps", false, "oo", 9, kNoFinalTime, "DNF", -1, 9, "DNF"},
                      {"FAI, a cut", true, "1o", 10, 73000, "1:13.00", 9, -1, ""},
                      {"FAI, two cuts", true, "11", 10, kNoFinalTime, "Dbl Cut", -1, -1, ""},
                      {"FAI, two cuts, four laps", true, "11", 4, kNoFinalTime, "Dbl Cut", -1, 4, "DBL"}};
  for (const auto& c : kCases) {
    LaneRig rig;
    rig.race.IsFaiMode = c.fai;
    rig.Start();
    rig.CutAt(6000, c.cuts, 0);
    rig.At(rig.Fly(c.laps, 10000) + 30001);
    EXPECT_EQ(rig.Final(), c.final) << c.what;
    EXPECT_EQ(rig.lane.lblStatus.Caption(), c.status) << c.what;
    for (int cell = 9; cell <= 10; ++cell) {
      EXPECT_EQ(rig.lane.lblLap[cell].BackColor() == kFinishColor, cell == c.finishCell) << c.what;
    }
    for (int cell = 0; cell <= 10; ++cell) {
      const std::string& text = rig.lane.lblLap[cell].Caption();
      EXPECT_EQ(text == "DNF" || text == "DBL", cell == c.unfinishedCell) << c.what << " " << cell;
      if (cell == c.unfinishedCell) {
        EXPECT_EQ(text, c.text) << c.what;
      }
    }
    EXPECT_EQ(rig.lane.txtLapTen.BackColor() == kNoFinishColor, c.final == kNoFinalTime) << c.what;
    EXPECT_EQ(rig.lane.txtLapTen.Text(), rig.lane.lblLap[9].Caption()) << c.what;
  }
}

TEST(Finish, TimesAboveAMinuteShowMinutes) {
  for (const auto& [last, text] : std::vector<std::pair<std::int32_t, const char*>>{
           {60000, "60.00"}, {60010, "1:00.01"}, {75500, "1:15.50"}}) {
    LaneRig rig;
    rig.Start();
    for (int i = 0; i < 9; ++i) rig.LapAt(10000 + 1000 * i);
    rig.LapAt(last);
    rig.Final();
    EXPECT_EQ(rig.lane.lblStatus.Caption(), text);
  }
}

TEST(Finish, AnEntryAfterTheRaceShowsInTheResult) {
  LaneRig rig;
  rig.Start();
  const std::int32_t last = rig.Fly(9, 10000);
  rig.At(last + 31000);
  rig.lane.FinalizeRace();
  rig.race.RaceDone = true;
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "DNF");
  rig.lane.cmdLap_Click();
  EXPECT_EQ(rig.lane.lblLap[9].Caption(), "97.00");
  EXPECT_EQ(rig.lane.lblLap[10].Caption(), "");
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "1:37.00");
  EXPECT_EQ(rig.lane.txtLapTen.Text(), "97.00");
  EXPECT_EQ(rig.lane.txtLapTen.BackColor(), kFinishColor);
  rig.lane.cmdCut_Click();
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "1:37.00") << "a cut after the finish costs nothing";
  EXPECT_EQ(rig.lane.CutCount(), 1);
}

TEST(Places, AreGivenOneAfterTheOther) {
  LaneRig rig;
  rig.Start();
  rig.At(rig.Fly(10, 10000) + 10000);
  rig.Final();
  frmLane& lane = rig.lane;
  lane.LaneOrder(1);
  EXPECT_TRUE(lane.cmdOrder.Visible());
  EXPECT_EQ(lane.cmdOrder.Caption(), "First");
  lane.LaneOrder(4);
  lane.cmdOrder_Click();
  EXPECT_EQ(lane.lblStatus.Caption(), "Fourth");
  EXPECT_EQ(rig.owner.orders, std::vector<int>{4});
  EXPECT_FALSE(lane.cmdOrder.Visible());
  rig.Final();
  EXPECT_EQ(lane.lblStatus.Caption(), "Fourth") << "locked";
  EXPECT_EQ(lane.lblStatus.Tag(), "Locked");
  lane.LaneOrder(2);
  EXPECT_FALSE(lane.cmdOrder.Visible());
  lane.LaneOrder(1);
  EXPECT_TRUE(lane.cmdOrder.Visible());
  EXPECT_EQ(lane.lblStatus.Tag(), "");
  EXPECT_EQ(lane.lblStatus.Caption(), "1:13.00");
  lane.cmdOrder_Click();
  EXPECT_EQ(rig.owner.orders.back(), 2);
  lane.LaneOrder(5);
  lane.cmdOrder_Click();
  EXPECT_EQ(rig.owner.orders.size(), 2U);
  EXPECT_THROW(lane.LaneOrder(0), RunTimeError);
  EXPECT_THROW(lane.LaneOrder(6), RunTimeError);
}

TEST(Places, AreOfferedOnlyToALaneThatFinished) {
  LaneRig rig;
  rig.Start();
  rig.At(rig.Fly(9, 10000) + 31000);
  rig.Final();
  rig.lane.LaneOrder(1);
  EXPECT_FALSE(rig.lane.cmdOrder.Visible());
}

TEST(Places, TheOperatorMayTypeAStatus) {
  struct {
    DialogAnswer answer;
    bool otherRace;
    const char* after;
  } const kCases[] = {{{DialogAnswer::Word::Text, "Crashed"}, false, "Crashed"},
                      {{DialogAnswer::Word::Text, ""}, false, "before"},
                      {{DialogAnswer::Word::Text, " "}, false, "before"},
                      {{DialogAnswer::Word::Cancel, "Crashed"}, false, "before"},
                      {{DialogAnswer::Word::Text, "Crashed"}, true, ""}};
  for (const auto& c : kCases) {
    LaneRig rig;
    rig.Start();
    rig.lane.lblStatus.SetCaption("before");
    rig.owner.answer = c.answer;
    if (c.otherRace) rig.owner.whileAsking = [&rig] { rig.lane.InitializeRace(60000); };
    rig.lane.lblStatus.onClick();
    EXPECT_EQ(rig.lane.lblStatus.Caption(), c.after);
    EXPECT_EQ(rig.owner.asked.title, "Finish Order");
    EXPECT_EQ(rig.owner.asked.preset, "before");
  }
}

TEST(Panel, StandsInTheConsolesFrame) {
  LaneRig rig;
  struct Console : Form {
    explicit Console(Forms& forms) : Form(forms, "frmJudge"), frame(Add(ControlKind::Frame, "fraLane(2)")) {}
    Control& frame;
  } console(rig.forms);
  rig.race.CommActive = true;
  rig.lane.SetFormParent(console.frame, 2);
  EXPECT_FALSE(console.frame.Visible());
  EXPECT_TRUE(rig.lane.Visible());
  EXPECT_EQ(rig.lane.Container(), &console.frame);
  EXPECT_EQ(rig.lane.fraLane.Caption(), " Lane 3");
  EXPECT_EQ(rig.lane.lblLow.BackColor(), Color::Rgb(3));
  EXPECT_FALSE(rig.lane.cmdTurn.Visible());
  rig.race.CommActive = false;
  rig.lane.Resized();
  EXPECT_TRUE(rig.lane.cmdTurn.Visible());
}

}  // namespace
}  // namespace quorvane
