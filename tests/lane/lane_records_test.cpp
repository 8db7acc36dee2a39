#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

using Section = std::map<std::string, std::string>;

Section SectionOf(const FakeOwner& owner, const std::string& name) {
  Section section;
  for (const auto& [key, value] : owner.values) {
    if (key.first == name) section[key.second] = value;
  }
  return section;
}

TEST(Records, ALaneIsWrittenWithAllItsEvents) {
  LaneRig rig;
  rig.Start();
  rig.CutAt(6000, "1o", 1);
  rig.CutAt(7000, "oo", 1);
  rig.CutAt(9000, "1o", 1);
  rig.LapAt(62350);
  rig.lane.DoTurn(4, 63000, 80);
  rig.lane.FinalizeRace();
  rig.lane.lblStatus.SetTag("100");
  rig.lane.SaveLane("Race7");
  EXPECT_EQ(SectionOf(rig.owner, "Race7_Lane1"), (Section{{"NumEvents", "4"},
                                                          {"NumCuts", "1"},
                                                          {"NumLaps", "1"},
                                                          {"Placing", ""},
                                                          {"Position", "100"},
                                                          {"Time", "nt"},
                                                          {"Laps", "62.35,DNF,,,,,,,,,"},
                                                          {"Cuts", "C P2 9.00"},
                                                          {"Event0", "0,1,-C,P2,7000,6000"},
                                                          {"Event1", "0,1,C,P2,9000,9000"},
                                                          {"Event2", "1,4,L,TM,62350,0"},
                                                          {"Event3", "1,4,T,TM,63000,0"}}));
}

// Everything that is kept of a lane and shows on its panel.
void ExpectSameLane(const frmLane& a, const frmLane& b) {
  ASSERT_EQ(a.EventCount(), b.EventCount());
  for (int i = 0; i < a.EventCount(); ++i) EXPECT_EQ(a.Events()[i], b.Events()[i]) << i;
  EXPECT_EQ(a.Laps(), b.Laps());
  EXPECT_EQ(a.LapTarget(), b.LapTarget());
  EXPECT_EQ(a.CutCount(), b.CutCount());
  EXPECT_EQ(a.CutsBeforeFinish(), b.CutsBeforeFinish());
  EXPECT_EQ(a.FinalTime(), b.FinalTime());
  EXPECT_EQ(a.PylonCuts(), b.PylonCuts());
  EXPECT_EQ(a.lblStatus.Caption(), b.lblStatus.Caption());
  EXPECT_EQ(a.lblStatus.Tag(), b.lblStatus.Tag());
  EXPECT_EQ(a.cmdCut.Caption(), b.cmdCut.Caption());
  for (int i = 0; i <= 10; ++i) {
    EXPECT_EQ(a.lblLap[i].Caption(), b.lblLap[i].Caption()) << i;
    EXPECT_EQ(a.lblLap[i].Visible(), b.lblLap[i].Visible()) << i;
    EXPECT_EQ(a.lblLap[i].BackColor(), b.lblLap[i].BackColor()) << i;
  }
}

TEST(Records, ALoadedLaneShowsWhatWasFlown) {
  struct {
    const char* what;
    bool fai;
    const char* cuts;
    int laps;
    const char* mode;
  } const kCases[] = {{"ten laps", false, "oo", 10, "2, AMA 1324"},
                      {"a cut, eleven laps", false, "1o", 11, "2, AMA 1324"},
                      {"owes the eleventh", false, "1o", 10, "2, AMA 1324"},
                      {"FAI, a cut", true, "1o", 10, "4, FAI 123"},
                      {"FAI, a cut, unknown mode", true, "1o", 10, ""},
                      {"nothing", false, "oo", 0, "2"}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.what);
    LaneRig rig;
    rig.race.IsFaiMode = c.fai;
    rig.Start();
    rig.CutAt(6000, c.cuts, 1);
    rig.At((c.laps > 0 ? rig.Fly(c.laps, 10000) : 0) + 30001);
    rig.lane.FinalizeRace();
    rig.lane.lblStatus.SetTag("2");
    rig.lane.lblStatus.SetCaption("Second");
    rig.owner.values[{"Race3", "RaceMode"}] = c.mode;
    rig.lane.SaveLane("Race3");

    LaneRig other;
    other.owner.values = rig.owner.values;
    other.race.IsFaiMode = *c.mode == '\0' ? c.fai : !c.fai;
    const bool before = other.race.IsFaiMode;
    other.lane.LoadLane("Race3");
    ExpectSameLane(rig.lane, other.lane);
    EXPECT_TRUE(other.lane.IsFinished());
    EXPECT_EQ(other.race.IsFaiMode, before);
    other.lane.InitializeRace(60000);
    EXPECT_FALSE(other.lane.IsFinished());
    EXPECT_EQ(other.lane.Laps(), 0);
  }
}

TEST(Records, LoadingReplacesWhateverThePanelShowed) {
  for (const char* events : {"0", "1"}) {
    LaneRig fresh;
    fresh.owner.values[{"Race1_Lane1", "NumEvents"}] = events;
    fresh.owner.values[{"Race1_Lane1", "Event0"}] = "1,4,L,TM,20000,0";
    fresh.lane.LoadLane("Race1");
    LaneRig rig;
    rig.owner.values = fresh.owner.values;
    rig.Start();
    rig.CutAt(6000, "11", 1);
    rig.At(rig.Fly(11, 10000) + 10000);
    rig.Final();
    rig.lane.DoTurn(4, rig.owner.raceTime, 500);
    rig.lane.LaneOrder(1);
    rig.lane.lblStatus.SetTag("Locked");
    rig.lane.LoadLane("Race1");
    ExpectSameLane(rig.lane, fresh.lane);
    EXPECT_FALSE(rig.lane.tmrTurns.Enabled());
    EXPECT_FALSE(rig.lane.cmdOrder.Visible());
    for (Control* mark : rig.lane.lblCut) EXPECT_FALSE(mark->Visible());
  }
}

TEST(Records, EntriesThatMakeNoSenseAreLeftOut) {
  struct {
    const char* entry;
    bool kept;
  } const kCases[] = {{"1,4,L,TM,12345,0", true},
                      {"1,4,L,TM,12345", false},
                      {"1,4,L,TM,12345,0,7", false},
                      {"", false},
                      {",,,,,", true},
                      {"256,4,L,TM,12345,0", false},
                      {"1,-1,L,TM,12345,0", false},
                      {"1,4,L,TM,99999999999,0", false},
                      {"1,4,L,TM,1e999,0", false},
                      {"1,4,\xff\x01,\xc3,12345,0", true},
                      {"1,4,L,TM,12345,-1e300", false}};
  for (const auto& c : kCases) {
    LaneRig rig;
    rig.owner.values[{"Race1_Lane1", "NumEvents"}] = "2";
    rig.owner.values[{"Race1_Lane1", "Event0"}] = c.entry;
    rig.owner.values[{"Race1_Lane1", "Event1"}] = "2,4,L,TM,20000,0";
    rig.lane.LoadLane("Race1");
    EXPECT_EQ(rig.lane.EventCount(), 2);
    EXPECT_EQ(rig.lane.Events()[0] == LaneEvent{}, !c.kept || std::string(c.entry) == ",,,,,") << c.entry;
    EXPECT_EQ(rig.lane.Laps(), 2) << c.entry;
  }
}

TEST(Records, AnEntryThatIsLeftOutKeepsItsSlot) {
  LaneRig rig;
  rig.owner.values = {{{"Race1_Lane1", "NumEvents"}, "2"},
                      {{"Race1_Lane1", "Event0"}, "1,4,L,TM,10000,0"},
                      {{"Race1_Lane1", "Event1"}, "1,0,C,P1,11000,11000"},
                      {{"Race2_Lane1", "NumEvents"}, "2"},
                      {{"Race2_Lane1", "Event0"}, "1,4,L,TM,12000,0"},
                      {{"Race2_Lane1", "Event1"}, "2,4,L,TM,20000"}};
  rig.lane.LoadLane("Race1");
  rig.lane.InitializeRace(60000);
  rig.lane.LoadLane("Race2");
  EXPECT_EQ(rig.Kinds(), "L1 C1");
  EXPECT_EQ(rig.lane.Events()[0].EventTime, 12000);
  EXPECT_EQ(rig.lane.CutCount(), 1);
}

TEST(Records, NumbersOutOfRangeAreCutToTheLog) {
  for (const auto& [text, count] : std::vector<std::pair<const char*, int>>{
           {"99999", 101}, {"-3", 0}, {"1e400", 101}, {"-1e400", 0}, {"three", 0}, {"2.4", 2}, {"nan", 0}}) {
    LaneRig rig;
    rig.owner.values[{"Race1_Lane1", "NumEvents"}] = text;
    rig.owner.values[{"Race1_Lane1", "NumLaps"}] = "70000";
    rig.owner.values[{"Race1_Lane1", "Time"}] = "1e99";
    rig.owner.values[{"Race1_Lane1", "Event0"}] = "255,4,L,TM,20000,0";
    rig.owner.values[{"Race1_Lane1", "Event100"}] = "255,254,C,MP1,20000,0";
    rig.lane.LoadLane("Race1");
    EXPECT_EQ(rig.lane.EventCount(), count) << text;
    EXPECT_EQ(rig.lane.CutCount(), count == 101 ? 1 : 0) << text;
    std::uint8_t laps = 0;
    std::uint8_t lit = 0;
    std::array<std::int16_t, 4> cuts = {};
    rig.lane.GetInfo(laps, lit, cuts);
    EXPECT_EQ(laps, count > 0 ? 255 : 0) << text;
  }
}

TEST(Records, MissingCaptionsAreBlankAndHidden) {
  LaneRig rig;
  rig.owner.values[{"Race1_Lane1", "NumEvents"}] = "1";
  rig.owner.values[{"Race1_Lane1", "Event0"}] = "9,4,L,TM,20000,0";
  rig.owner.values[{"Race1_Lane1", "Laps"}] = "1.00,2.00";
  rig.owner.values[{"Race1_Lane1", "Cuts"}] = "stray,marks";
  rig.lane.LoadLane("Race1");
  EXPECT_EQ(rig.lane.lblLap[1].Caption(), "2.00");
  EXPECT_TRUE(rig.lane.lblLap[1].Visible());
  EXPECT_EQ(rig.lane.lblLap[2].Caption(), " ");
  EXPECT_FALSE(rig.lane.lblLap[2].Visible());
  EXPECT_EQ(rig.lane.lblCut[2].Caption(), " ");
  EXPECT_FALSE(rig.lane.lblCut[0].Visible());
}

TEST(Records, LoadStatusReadsOnlyThePlace) {
  LaneRig rig;
  rig.Start();
  rig.LapAt(10000);
  rig.owner.values[{"Race2_Lane1", "Placing"}] = "Third";
  rig.owner.values[{"Race2_Lane1", "Position"}] = "3";
  rig.lane.LoadStatus("Race2");
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "Third");
  EXPECT_EQ(rig.lane.lblStatus.Tag(), "3");
  EXPECT_EQ(rig.lane.Laps(), 1);
  rig.lane.LoadStatus("Race9");
  EXPECT_EQ(rig.lane.lblStatus.Caption(), "");
  EXPECT_EQ(rig.lane.lblStatus.Tag(), "");
}

}  // namespace
}  // namespace quorvane
