#include <gtest/gtest.h>

#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

TEST(Records, ALaneIsWrittenWithAllItsEvents) {
  LaneRig rig;
  rig.Start();
  rig.Play("C1+6000 W1+1000 C1+2000 L+53350 T+650");
  rig.lane.FinalizeRace();
  rig.lane.Rank(0);
  rig.lane.SaveLane("Race7");
  std::string written;
  for (const auto& [key, value] : rig.owner.values) {
    EXPECT_EQ(key.first, "Race7_Lane1");
    written += key.second + "=" + value + "; ";
  }
  EXPECT_EQ(
      written,
      "Cuts=C P2 9.00; Event0=0,1,-C,P2,7000,6000; Event1=0,1,C,P2,9000,9000; "
      "Event2=1,4,L,TM,62350,0; Event3=1,4,T,TM,63000,0; Laps=62.35,DNF,,,,,,,,,; NumCuts=1; NumEvents=4; "
      "NumLaps=1; Placing=; Position=100; Time=nt; ");
}

TEST(Records, AnEntryThatMakesNoSenseKeepsItsSlotAsItWas) {
  const std::string before = "7,254,C,ME,7000,7000";
  const std::pair<const char*, std::string> kCases[] = {
      {"1,4,L,TM,12345,0", "1,4,L,TM,12345,0"},
      {"1,4,\xff\x01,\xc3,12345x, 3", "1,4,\xff\x01,\xc3,12345,3"},
      {",,,,,", "0,0,,,0,0"},
      {"1,4,L,TM,12345", before},
      {"1,4,L,TM,12345,0,7", before},
      {"", before},
      {"256,4,L,TM,12345,0", before},
      {"1,4,L,TM,1e999,0", before},
      {"1,4,L,TM,12345,-1e300", before}};
  for (const auto& [entry, kept] : kCases) {
    LaneRig rig;
    rig.owner.values = {{{"Race1_Lane1", "NumEvents"}, "1"},
                        {{"Race1_Lane1", "Event0"}, before},
                        {{"Race2_Lane1", "NumEvents"}, "2"},
                        {{"Race2_Lane1", "Event0"}, entry},
                        {{"Race2_Lane1", "Event1"}, "2,4,L,TM,20000,0"}};
    rig.lane.LoadLane("Race1");
    rig.lane.InitializeRace(60000);
    rig.lane.LoadLane("Race2");
    EXPECT_EQ(EventText(rig.lane.Events()[0]), kept) << entry;
    EXPECT_EQ(rig.lane.Laps(), 2) << entry;
  }
}

TEST(Records, NumbersOutOfRangeAreCutToTheLog) {
  for (const auto& [text, count] :
       {std::pair("99999", 101), {"-3", 0}, {"1e400", 101}, {"three", 0}, {"2.4", 2}, {"nan", 0}}) {
    LaneRig rig;
    rig.owner.values = {{{"Race1_Lane1", "NumEvents"}, text},
                        {{"Race1_Lane1", "NumLaps"}, "70000"},
                        {{"Race1_Lane1", "Event0"}, "255,4,L,TM,20000,0"},
                        {{"Race1_Lane1", "Event100"}, "255,254,C,MP1,20000,0"}};
    rig.lane.LoadLane("Race1");
    EXPECT_EQ(rig.lane.EventCount(), count) << text;
    EXPECT_EQ(rig.lane.CutCount(), count == 101 ? 1 : 0) << text;
    EXPECT_EQ(rig.Info().first, count > 0 ? 255 : 0) << text;
  }
}

TEST(Records, MissingCaptionsAreBlankAndHidden) {
  LaneRig rig;
  rig.owner.values = {
      {{"Race1_Lane1", "NumEvents"}, "1"},      {{"Race1_Lane1", "Event0"}, "9,4,L,TM,20000,0"},
      {{"Race1_Lane1", "Laps"}, "1.00,2.00"},   {{"Race1_Lane1", "Cuts"}, "stray,marks"},
      {{"Race2_Lane1", "Laps"}, "stray,cells"}, {{"Race2_Lane1", "Placing"}, "Third"},
      {{"Race2_Lane1", "Position"}, "3"}};
  rig.lane.LoadLane("Race1");
  EXPECT_EQ(rig.Cell(1), "2.00");
  EXPECT_EQ(rig.lane.lblLap[2].Caption(), " ");
  EXPECT_EQ(rig.Cell(2), "hidden");
  EXPECT_FALSE(rig.lane.lblCut[0].Visible());
  EXPECT_EQ(rig.lane.Laps(), 9);
  rig.lane.LoadLane("Race2");
  EXPECT_EQ(rig.lane.lblStatus.Caption() + rig.lane.lblStatus.Tag(), "Third3");
  EXPECT_EQ(rig.Cell(0) + rig.Cell(1), "DNFhidden");
  rig.lane.LoadLane("Race9");
  EXPECT_EQ(rig.lane.lblStatus.Caption() + rig.lane.lblStatus.Tag(), "");
}

}  // namespace
}  // namespace quorvane
