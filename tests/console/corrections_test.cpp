// What was entered is taken back, put again and put right.

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace quorvane
