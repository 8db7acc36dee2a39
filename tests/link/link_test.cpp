// What the link's scripts do not say.

#include "base/checked.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

// A lap is answered with a frame of the console's own before the rest of the frame is handled; an error ends
// only the frame that raised it.
TEST(Link, AFrameIsHandledFromItsOwnCopyAndAlone) {
  LinkRig rig;
  rig.EnterLoad();
  rig.race.onFrame = [&](const StationMessage& frame) {
    if (frame.From == 1) throw OverflowError();
    rig.link.SendMessage(3, 4);
    EXPECT_EQ(std::pair(int{frame.From}, int{frame.Lap[0]}), std::pair(2, 7));
  };
  rig.Rx(Frame(254, 1) + Frame(254, 2, {.lap = {7}, .voltage = 255}));
  EXPECT_EQ(rig.race.senders, "1 2 ");
  EXPECT_EQ(rig.link.lblVolt[2].Caption(), "18.8");
  EXPECT_EQ(rig.link.lblAge[1].Caption() + rig.link.lblAge[2].Caption() + rig.link.lblAge[4].Caption(),
            "Off0Off");
}

// The box is open after the frame that raised it was handled, and no port counts as open while it asks.
TEST(Link, WhatIsBehindABoxIsSettled) {
  LinkRig rig;
  rig.EnterLoad();
  std::string behind;
  rig.platform.whileOpen = [&](const DialogBox&) {
    behind += rig.race.senders + rig.link.lblAge[3].Caption() + (rig.state.CommActive ? " on, " : " off, ");
  };
  rig.platform.answers.push_back({DialogAnswer::Word::Yes, {}});
  rig.Click("chkSystemController");
  rig.Rx(Frame(6, 3));
  rig.serial.busy[3] = {5, "Access is denied"};
  rig.Click("optPort(1)");
  EXPECT_EQ(behind, "Off on, 3 0 on, 3 0 off, ");
}

TEST(LinkCounters, SilenceIsTheLongestGapOrTheOneThatLasts) {
  LinkCounters counters;
  EXPECT_EQ(counters.LongestSilence(2, 9000), 0);
  for (const std::int64_t ms : {1000, 5000, 6000}) counters.Good(2, ms);
  EXPECT_EQ(counters.LongestSilence(2, 6500), 4000);
  counters.Heard(2, 13000);
  EXPECT_EQ(counters.LongestSilence(2, 13000), 7000);
  EXPECT_FALSE(counters.IsSilent(2, 17400, 0));
  EXPECT_TRUE(counters.IsSilent(2, 17401, 0));
  EXPECT_FALSE(counters.IsSilent(2, 18400, 14000));  // the race began later
  EXPECT_TRUE(counters.IsSilent(3, 13401, 9000));    // never heard
}

}  // namespace
}  // namespace quorvane
