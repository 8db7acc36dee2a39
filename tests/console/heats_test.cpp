#include <gtest/gtest.h>

#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

TEST(Heats, RoundAndHeatFollowFromTheRaceNumber) {
  ConsoleRig rig;
  rig.Load();
  const struct {
    const char* box;
    const char* typed;
    int race;
    const char* heat;
    const char* round;
  } kCases[] = {
      {"txtRound", "2", 5, "1", "2"},    {"txtHeat", "4", 8, "4", "2"},      {"txtHeat", "5", 9, "1", "3"},
      {"txtHeat", "abc", 8, "4", "2"},   {"txtRound", "-7", 1, "1", "1"},    {"txtHeat", "2.5", 2, "2", "1"},
      {"txtHeat", "40000", 2, "2", "1"}, {"txtRound", "20000", 2, "2", "1"},
  };
  for (const auto& c : kCases) {
    rig.Type(std::string("frmJudge.") + c.box, c.typed);
    EXPECT_EQ(rig.race().RaceNumber, c.race) << c.box << " " << c.typed;
    EXPECT_EQ(rig.judge().txtHeat.Text(), c.heat) << c.box << " " << c.typed;
    EXPECT_EQ(rig.judge().txtRound.Text(), c.round) << c.box << " " << c.typed;
  }
  EXPECT_EQ(rig.Value("Current", "Race"), "2");
}

TEST(Heats, ButtonsMoveAndStopAtTheFirstRace) {
  ConsoleRig rig;
  rig.Load();
  const std::pair<const char*, int> kSteps[] = {{"cmdIncHeat", 2},  {"cmdDecRound", 1}, {"cmdIncRound", 5},
                                                {"cmdIncRound", 9}, {"cmdDecHeat", 8},  {"cmdDecRound", 4}};
  for (const auto& [button, race] : kSteps) {
    rig.Click(std::string("frmJudge.") + button);
    EXPECT_EQ(rig.race().RaceNumber, race) << button;
  }
  EXPECT_EQ(rig.race().LastRaceRun, -1);
}

TEST(Heats, NoMoveWhileARaceIsFlown) {
  ConsoleRig rig;
  rig.Load();
  rig.Click("frmJudge.cmdStart");
  for (const char* control : {"cmdIncHeat", "cmdIncRound", "mnuHeatsPerRound", "mnuSelectFile", "cmdRefly"}) {
    rig.Click(std::string("frmJudge.") + control);
  }
  rig.Type("frmJudge.txtHeat", "3");
  rig.judge().MoveBy(1);  // not even past the controls
  EXPECT_EQ(rig.race().RaceNumber, 1);
  EXPECT_FALSE(rig.race().ReflyMode);
}

TEST(Heats, LeavingAFinishedRaceSavesItUnderItsOwnNumberAndAReflyTakesItsMarkAlong) {
  ConsoleRig rig;
  rig.Load();
  rig.Click("frmJudge.cmdStart");
  rig.At(40000);
  rig.Click("frmJudge.cmdIncRound");
  EXPECT_NE(rig.Value("Race1", "Timestamp"), "-");
  EXPECT_EQ(rig.race().RaceNumber, 5);
  rig.Click("frmJudge.cmdDecRound");
  rig.Click("frmJudge.cmdRefly");
  EXPECT_EQ(rig.judge().fraHeatControl.ForeColor(), kRed);
  rig.Click("frmJudge.cmdIncHeat");
  EXPECT_EQ(rig.judge().fraHeatControl.Caption(), "Race 2");
  EXPECT_EQ(rig.judge().fraHeatControl.ForeColor(), kButtonText);
}

TEST(Heats, TheBoxForHeatsPerRoundInsists) {
  ConsoleRig rig;
  rig.Load();
  for (const char* text : {"", "1", "x", "99999", "-4"}) rig.Answer(Word::Text, text);
  rig.Answer(Word::Cancel);
  rig.Answer(Word::Text, "3");
  rig.Click("frmJudge.mnuHeatsPerRound");
  EXPECT_EQ(rig.race().HeatsPerRound, 3);
  EXPECT_EQ(rig.Value("Current", "HeatsPerRound"), "3");
  EXPECT_EQ(rig.platform.shown.back().box.preset, "0");
}

TEST(Modes, TheListCountsFromZeroAndTheModesFromOne) {
  ConsoleRig rig;
  rig.Load();
  const struct {
    int entry;
    int mode;
    bool fai;
  } kCases[] = {{0, 1, false}, {4, 4, true}, {5, 5, true}, {2, 2, false}};
  for (const auto& c : kCases) {
    rig.program.door().Enter(
        {.kind = EventKind::Choose, .target = "frmJudge.cboRaceMode", .number = c.entry});
    EXPECT_EQ(rig.race().RaceMode, c.mode);
    EXPECT_EQ(rig.race().IsFaiMode, c.fai);
    EXPECT_EQ(rig.judge().cboRaceMode.ListIndex(), c.mode - 1);
  }
  rig.judge().ApplyRaceMode(99);
  EXPECT_EQ(rig.judge().lblRaceMode.Caption(), "FAI 312");
}

// The starter's switch may stand at the next race's mode before the last one is saved.
TEST(Modes, AFinishedRaceKeepsItsOwnUntilItIsSaved) {
  ConsoleRig rig(true);
  rig.Load();
  rig.Starter(60000, true);
  rig.At(6000);
  rig.lane(0).DoCut("1o", 0, 66000);
  rig.At(40000);
  ASSERT_TRUE(rig.judge().cmdSave.Enabled());
  rig.Starter(100000, true, 5);
  EXPECT_EQ(rig.judge().lblRaceMode.Caption(), "AMA 1324");
  rig.lane(0).FinalizeRace();
  EXPECT_EQ(rig.lane(0).LapTarget(), 11);
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(rig.Value("Race1", "RaceMode"), "2, AMA 1324");
  rig.Starter(70000, false, 5);
  EXPECT_EQ(rig.race().RaceMode, 5);
}

TEST(Modes, FaiLanesStartApartAndTheFourthStaysDown) {
  const std::pair<int, std::array<int, 3>> kCases[] = {
      {4, {0, 1000, 2000}}, {5, {2000, 0, 1000}}, {6, {1000, 2000, 0}}};
  for (const auto& [mode, delays] : kCases) {
    ConsoleRig rig;
    rig.Load();
    rig.judge().ApplyRaceMode(mode);
    rig.Click("frmJudge.cmdStart");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(rig.lane(i).TimeBase(), -delays[static_cast<std::size_t>(i)]);
    EXPECT_FALSE(rig.lane(3).Visible());
    rig.At(6000);
    rig.Key("F4");
    EXPECT_EQ(rig.lane(3).EventCount(), 0);
    rig.Answer(Word::No);
    rig.Click("frmJudge.cmdReset");
    rig.judge().ApplyRaceMode(2);
    rig.Click("frmJudge.cmdIncHeat");
    rig.Click("frmJudge.cmdDecHeat");
    EXPECT_TRUE(rig.lane(3).Visible());
  }
}

TEST(LaneColors, TheMenuInsistsOnASchemeThatIsOffered) {
  ConsoleRig rig;
  rig.Load();
  EXPECT_EQ(rig.lane(0).fraLane.Caption(), " Low Green");
  for (const char* text : {"9", "0", "0.4", "x", "2.5"}) rig.Answer(Word::Text, text);
  rig.Click("frmJudge.mnuLaneColors");
  EXPECT_EQ(rig.race().LaneColorScheme, 2);
  EXPECT_EQ(rig.platform.settings.GetSetting("RaceInfo", "LaneColor", "-"), "2");
  EXPECT_EQ(rig.lane(0).lblLow.BackColor(), Color::Rgb(0xFF6060));
  EXPECT_EQ(rig.lane(0).lblHigh.BackColor(), kButtonFace);
  EXPECT_EQ(rig.platform.shown.back().box.text.substr(0, 80),
            "Enter the lane color assignments (1-8) :\rCurrent assignment (1)\r\rChoices are:\r  ");
  for (const auto& [stored, name] :
       {std::pair{"6", ""}, {"9", " Lane 4"}, {"0", ""}, {"77", ""}, {"-1", ""}}) {
    rig.platform.settings.SaveSetting("RaceInfo", "LaneColor", stored);
    rig.Click("frmJudge.mnuLaneColors");  // cancelled
    rig.lane(3).UpdateLaneColor();
    EXPECT_EQ(rig.lane(3).lblLaneName.Caption(), name) << stored;
    EXPECT_EQ(rig.lane(3).lblLow.BackColor(), kButtonFace) << stored;
  }
}

}  // namespace
}  // namespace quorvane
