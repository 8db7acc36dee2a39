// What was entered is taken back, put again and put right.

#include <gtest/gtest.h>

#include "results/race_records.h"
#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

// By hand, from the second 1: F1 at each lap of lane 1.
void Fly(ConsoleRig& rig, int laps) {
  rig.Load();
  rig.At(1000);
  rig.Click("frmJudge.cmdStart");
  for (int lap = 1; lap <= laps; ++lap) {
    rig.At(1000 + lap * 7000);
    rig.Key("F1");
  }
}

TEST(Corrections, UndoAndRedoFollowTheHandsUntilTheSave) {
  ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
  const auto menu = [&] {
    return rig.judge().mnuUndo.Caption() + " | " + rig.judge().mnuRedo.Caption() +
           (rig.judge().mnuUndo.Enabled() ? "" : " off") + (rig.judge().mnuRedo.Enabled() ? "" : " off");
  };
  const auto click = [&](const char* entry) { rig.Click(std::string("frmJudge.") + entry); };
  Fly(rig, 2);
  rig.Key("F6");
  rig.At(16000);
  EXPECT_EQ(menu(), "&Undo cut MP1, lane 2 | &Redo off");
  click("mnuUndo");
  click("mnuUndo");
  EXPECT_EQ(menu(), "&Undo lap 1, lane 1 | &Redo lap 2, lane 1");
  EXPECT_EQ(rig.lane(0).Counts().laps, 1);
  EXPECT_EQ(rig.lane(1).Counts().cutCount, 0);
  click("mnuRedo");
  EXPECT_EQ(menu(), "&Undo lap 2, lane 1 | &Redo cut MP1, lane 2");
  rig.Key("F2");
  EXPECT_EQ(menu(), "&Undo lap 1, lane 2 | &Redo off");
  rig.Crash(1000);
  rig.Answer(Word::Yes);
  rig.program.door().Enter({EventKind::Load});
  EXPECT_EQ(menu(), "&Undo lap 1, lane 2 | &Redo off");
  rig.At(80000);
  EXPECT_TRUE(rig.race().RaceDone);
  click("mnuUndo");
  EXPECT_EQ(rig.lane(1).Status(), "DNF");
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(menu(), "&Undo | &Redo off off");
  EXPECT_EQ(rig.Value("Race1_Lane1", "Corrections"), "2");
  EXPECT_EQ(rig.Value("Race1_Lane1", "Correction1"), "15000;redone;hand;;2,4,L,TM,14000,0");
  EXPECT_EQ(rig.Value("Race1_Lane1", "ByHand"), "0,1");
  EXPECT_EQ(rig.Value("Race1_Lane2", "Corrections"), "2");
  EXPECT_EQ(rig.Value("Race1_Lane3", "ByHand"), "-");
}

// Above it the free lap of a novice, which went from the lap by hand to that of the timers.
TEST(Corrections, UndoTakesNoLapOfTheTimers) {
  for (const bool crash : {false, true}) {
    ConsoleRig rig(false, SystemFiles(), ConsoleRig::Way::AtOnce);
    rig.Load();
    rig.Click("frmLane1.chkNovice");
    rig.Click("frmJudge.cmdStart");
    rig.At(7000);
    rig.Key("F1");
    rig.At(15000);
    rig.lane(0).DoStationLap(2, 15000, 400);
    if (crash) {
      rig.Key("F6");
      rig.Crash(1000);
      rig.Answer(Word::Yes);
      rig.program.door().Enter({EventKind::Load});
      rig.Click("frmJudge.mnuUndo");
    }
    EXPECT_EQ(rig.judge().mnuUndo.Caption(), "&Undo lap 1, lane 1");
    for (const char* way : {"Undo", "Redo", "Undo"}) {
      rig.Click(std::string("frmJudge.mnu") + way);
      EXPECT_EQ(rig.lane(0).EventCount(), way[0] == 'U' ? 2 : 3);
    }
    EXPECT_EQ(rig.lane(0).Events().LatestLapTime(), 15000);
    EXPECT_FALSE(rig.judge().mnuUndo.Enabled());
  }
}

// The table strikes, inserts and moves by the entry that is chosen.
TEST(Corrections, TheTablePutsALogRight) {
  ConsoleRig rig;
  const auto at = [&](int ms, const char* key) { rig.At(ms), rig.Key(key); };
  const auto choose = [&](int row) {
    rig.program.door().Enter({.kind = EventKind::Choose, .target = "frmLog.lstEntries", .number = row});
  };
  frmLog& table = rig.judge().LapsAndCuts();
  Fly(rig, 3);
  at(24000, "F5");
  rig.Click("frmLane1.mnuLog");
  const std::vector<std::string> entries = {"1\t7.00\tLap 1\thand", "2\t14.00\tLap 2\thand",
                                            "3\t21.00\tLap 3\thand", "4\t23.00\tCut MP1\thand"};
  EXPECT_EQ(table.lstEntries.Items(), entries);
  EXPECT_TRUE(table.cmdMove.Enabled());
  rig.Answer(Word::Text, "2");
  rig.Click("frmLog.cmdMove");
  choose(1);
  EXPECT_FALSE(table.cmdMove.Enabled());
  rig.Click("frmLog.cmdStrike");
  for (const char* time : {"10.5", "x", "0:10.5"}) {
    rig.Answer(Word::Text, time);
    rig.Click("frmLog.cmdInsert");
    EXPECT_EQ(table.lblTold.Caption(), std::string(time) == "10.5"
                                           ? "Corrections on this lane: 3"
                                           : "No lap of this lane can be at " + std::string(time));
  }
  EXPECT_EQ(table.lstEntries.Items()[1], "2\t10.50\tLap 2\thand");
  EXPECT_EQ(table.lstEntries.Items()[3], "4\t23.00\tCut MP2\thand");
  EXPECT_EQ(rig.judge().mnuUndo.Caption(), "&Undo lap 2, lane 1");
  rig.Click("frmJudge.mnuUndo");
  rig.Click("frmJudge.mnuUndo");
  EXPECT_EQ(rig.lane(0).lblLap[1].Caption(), "14.00");
  rig.lane(0).AdjustTime(-500);  // as when the starter is heard after all
  EXPECT_EQ(CorrectionText(rig.lane(0).Events().Corrections()[0]),
            "22500;moved;hand;3,254,C,MP1,22500,22500;3,254,C,MP2,22500,22500");
}

TEST(Corrections, AnAmendmentKeepsWhatWasBefore) {
  ConsoleRig rig;
  Fly(rig, 10);
  rig.At(160000);
  EXPECT_EQ(rig.lane(0).Status(), "First");
  rig.Click("frmJudge.cmdSave");
  const std::string saved = rig.Value("Race1", "Timestamp");
  EXPECT_FALSE(rig.judge().mnuAmend.Enabled());
  const auto strike = [&] {
    rig.Click("frmJudge.cmdDecHeat");
    rig.Click("frmJudge.mnuAmend");
    EXPECT_EQ(rig.judge().fraHeatControl.Caption(), "Race 1 AMEND");
    rig.Click("frmLane1.mnuLog");
    rig.Click("frmLog.cmdStrike");
    EXPECT_EQ(rig.lane(0).Status(), "DNF");
  };
  strike();
  rig.Click("frmJudge.cmdIncHeat");
  EXPECT_EQ(rig.judge().lblNotice.Caption(),
            "Not amended: the race stays as it was saved. Its corrections: Bring Back Last Race");
  EXPECT_EQ(rig.Value("Race1_Lane1", "NumLaps"), "10");
  strike();
  for (const char* lane : {"frmLane1.lblStatus", "frmLane2.lblStatus"}) {
    EXPECT_FALSE(rig.race().Unsaved);
    rig.Answer(Word::Text, "Protest upheld");
    rig.Click(lane);
    if (lane[7] == '1') rig.Click("frmJudge.cmdReorder");
  }
  rig.Type("frmJudge.txtComments", "Lap 10 was lane 2");
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(rig.LastBox(), "Amend Race");
  const std::array<std::array<const char*, 3>, 13> kKept = {
      {{"Race1", "Amendments", "1"},
       {"Race1", "Timestamp", saved.c_str()},
       {"Race1", "Was1_Comments", "No comments"},
       {"Race1", "Comments", "Lap 10 was lane 2"},
       {"Race1_Lane1", "NumLaps", "9"},
       {"Race1_Lane1", "Was1_NumLaps", "10"},
       {"Race1_Lane1", "Was1_Placing", "First"},
       {"Race1_Lane1", "Placing", "DNF"},
       {"Race1_Lane1", "Event9", ""},
       {"Race1_Lane1", "Was1_Event9", "10,4,L,TM,70000,0"},
       {"Race1_Lane1", "Correction0",
        "46347.376851851855, 11/21/2026 9:02:40 AM;struck;TM or hand;10,4,L,TM,70000,0;"},
       {"Race1_Lane2", "Placing", "Protest upheld"},
       {"Race1_Lane3", "Was1_Placing", "-"}}};
  for (const auto& [section, key, value] : kKept) EXPECT_EQ(rig.Value(section, key), value) << key;
  EXPECT_EQ(rig.judge().fraHeatControl.Caption(), "Race 1");
  EXPECT_FALSE(rig.judge().cmdSave.Enabled() || rig.judge().cmdReorder.Enabled());
  rig.Click("frmJudge.mnuAmend");
  rig.Answer(Word::Text, "Second");
  rig.Click("frmLane1.lblStatus");
  rig.Click("frmJudge.cmdSave");
  const RaceRecord race = ReadRace(OpenProject(rig.program.project(), rig.race()), 1);
  std::string told;
  for (const AmendedText& place : race.lanes[0].places) told += place.before + " > " + place.after + "; ";
  for (const AmendedText& text : race.amendedComments) told += text.before + " > " + text.after;
  EXPECT_EQ(told, "First > DNF; DNF > Second; No comments > Lap 10 was lane 2");
}

}  // namespace
}  // namespace quorvane
