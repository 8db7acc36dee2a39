// Frames received and sent, controller mode, and the message detail panel.

#include "base/checked.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

class LinkTrafficTest : public LinkTest {
 protected:
  void Tick(Word answer) {
    platform.answers.push_back({answer, {}});
    Click("chkSystemController");
  }
  void ExpectControl(bool controls, bool ticked) {
    EXPECT_EQ(link.IsControllerMode(), ticked);
    EXPECT_EQ(link.chkListen.Enabled(), !controls);
    EXPECT_EQ(Saved("chkSystemController"), ticked ? "1" : "0");
  }
};

TEST_F(LinkTrafficTest, AFrameReachesTheRaceAndLightsTheLampForMoreThanATenthOfASecond) {
  RunUntil(500);
  Rx(Frame(6, 2, {.temperature = 80, .voltage = 128}) + Bytes{0x55, 0xAA, 0, 0});
  EXPECT_EQ(race.senders, "2 ");
  EXPECT_EQ(link.lblVolt[2].Caption(), "9.4");
  RunUntil(601);  // the timer fired at exactly 100 ms: not yet
  EXPECT_TRUE(race.readLit && !race.writeLit);
  RunUntil(701);
  EXPECT_FALSE(race.readLit || link.tmrIndicators.Enabled());
}

TEST_F(LinkTrafficTest, BytesWithThePortClosedAreGoneAndAHiddenFormHandsOn) {
  Click("optPort(0)");
  Rx(Frame(254, 1));
  Click("optPort(2)");
  EXPECT_EQ(race.senders, "");
  for (const bool hide : {true, false}) {
    door.AllForms().Show(link);
    hide ? Click("cmdHide") : door.Enter({EventKind::Close, "frmSerialPort"});
    Rx(Frame(254, 1));
    EXPECT_EQ(link.lblAge[1].Caption(), "Off");
  }
  EXPECT_EQ(race.senders, "1 1 ");
}

TEST_F(LinkTrafficTest, WhatIsNoGoodFrameIsReportedUntilTheNextPollEvenUnderSteadyNoise) {
  Rx(Frame(6, 0) + Frame(1, 255));  // a good acknowledgement does not change who was addressed
  race.senders.clear();
  Bytes frame = Frame(254, 1, {.clock = 3 << 16}), low = Frame(1, 2), ack = Frame(254, 255);
  frame[2] = 0x4F;  // instead of 254 ^ 1 ^ 3
  low[2] = 0x0F;
  ack[2] ^= 1;
  const std::pair<Bytes, const char*> cases[] = {
      // An acknowledgement names no sender: it comes from the station that was addressed last.
      {ack, "Pylon 1 -> Laptop, Ecc Error 0x1, 0x0"},
      {frame, "Judges 2 -> Laptop, Ecc Error 0xFC, 0x4F"},
      {low, "Judges 3 -> Judges 2, Ecc Error 0x3, 0xF"},
      {Bytes{0x0A, 0x00} + Bytes(34, 0), "Unexpected 0xA, 0x0"}};
  for (const auto& [bytes, message] : cases) {
    Rx(bytes);
    EXPECT_EQ(link.lblMessage.Caption(), message);
    Rx(Bytes(36, 0));  // the bytes owed
  }
  EXPECT_EQ(race.senders, "");
  for (int ms = 0; ms < 2000; ms += 100) {
    RunUntil(ms);
    Rx(Bytes(72, 9));
  }
  EXPECT_EQ(link.lblMessage.Caption(), "Unexpected 0x9, 0x9");
  RunUntil(2001);
  EXPECT_EQ(link.lblMessage.Caption(), "");
  EXPECT_EQ(serial.sent.size(), 1U);
}

// A lap is answered with a frame of the console's own before the rest of the frame is handled; an error ends
// only the frame that raised it.
TEST_F(LinkTrafficTest, AFrameIsHandledFromItsOwnCopyAndAlone) {
  race.onFrame = [&](const StationMessage& frame) {
    if (frame.From == 1) throw OverflowError();
    link.SendMessage(3, 4);
    EXPECT_EQ(std::pair(int{frame.From}, int{frame.Lap[0]}), std::pair(2, 7));
  };
  Rx(Frame(254, 1) + Frame(254, 2, {.lap = {7}, .voltage = 255}));
  EXPECT_EQ(race.senders, "1 2 ");
  EXPECT_EQ(link.lblVolt[2].Caption(), "18.8");
  EXPECT_EQ(link.lblAge[1].Caption() + link.lblAge[2].Caption() + link.lblAge[4].Caption(), "Off0Off");
}

TEST_F(LinkTrafficTest, TakingControlAsksAndTellsTheStations) {
  Tick(Word::No);  // ticked all the same
  ExpectControl(false, true);
  Click("chkSystemController");  // giving it up asks nothing
  EXPECT_EQ(race.raceEvents, 0);
  platform.shown.clear();
  Tick(Word::Yes);
  ExpectBox(DialogKind::YesNo, DialogIcon::Exclamation, "Enabling CONTROLLER mode",
            "Do you want to CONTROL the race equipment\rfrom this computer\r\r"
            "Confirm that you really want to do this.");
  ExpectControl(true, true);
  EXPECT_EQ(race.raceEvents, 1);
  Click("chkSystemController");
  ExpectControl(false, false);
  for (const char* saved : {"0", "2", "no", "1"}) {
    platform.settings.SaveSetting("frmSerialPort", "chkSystemController", saved);
    Activate();
    EXPECT_EQ(link.IsControllerMode(), std::string(saved) == "1") << saved;
  }
  Activate();  // the box does not change: nothing to ask
  EXPECT_EQ(platform.shown.size(), 2U);
}

TEST_F(LinkTrafficTest, AStarterOnTheAirWins) {
  Rx(Frame(6, 3));
  EXPECT_TRUE(platform.shown.empty());  // nothing to cancel
  Tick(Word::Yes);
  platform.shown.clear();
  std::string handledBeforeBox;
  platform.whileOpen = [&](const DialogBox&) {
    handledBeforeBox = race.senders + link.lblAge[3].Caption();
    Rx(Frame(6, 4));  // reception goes on behind the box
  };
  Rx(Frame(6, 3) + Frame(6, 3));
  ExpectBox(DialogKind::OkCancel, DialogIcon::Exclamation, "Cancel CONTROLLER mode",
            "CONTROLLER mode is cancelled\rbecause the STARTER was detected");
  EXPECT_TRUE(platform.shown[0].box.byRadio);
  EXPECT_EQ(handledBeforeBox, "3 3 3 0");
  EXPECT_EQ(race.senders, "3 3 3 4 ");
  ExpectControl(false, false);
  // While the question is open it wins over Yes.
  platform.whileOpen = [&](const DialogBox& box) {
    if (box.kind == DialogKind::YesNo) Rx(Frame(6, 3));
  };
  Tick(Word::Yes);
  ExpectControl(false, false);
  EXPECT_EQ(race.raceEvents, 1);
}

TEST_F(LinkTrafficTest, NothingIsSentWhileTheLinkIsOffOrOnlyListens) {
  link.chkListen.SetValue(1);
  link.SendMessage(6, 3);
  link.chkListen.SetValue(0);
  state.CommActive = false;
  link.SendMessage(6, 3);
  EXPECT_TRUE(serial.sent.empty() && !race.writeLit);
  RunUntil(2001);
  EXPECT_EQ(link.lblStation[0].ForeColor(), kRed);  // polled in vain
  state.CommActive = true;
  link.chkListen.SetValue(1);
  link.chkListen.SetEnabled(false);  // as in controller mode
  link.SendMessage(2, 254);
  EXPECT_EQ(serial.sent, std::vector<Bytes>{Frame(2, 254)});  // without control it carries its addresses only
  EXPECT_TRUE(race.writeLit && !race.readLit);
  for (const int bad : {-1, 256}) {
    EXPECT_THROW(link.SendMessage(bad, 3), OverflowError);
    EXPECT_THROW(link.SendMessage(3, bad), OverflowError);
  }
}

TEST_F(LinkTrafficTest, AControllersFrameCarriesTheRace) {
  Tick(Word::Yes);
  race.laps = {1, 2, 3, 10};
  race.lit = {0, 5, 255, 1};
  race.cuts = {{{1, 0, 0, 0}, {0, 2, 0, 0}, {1, 3, 0, 1}, {0, 0, -1, 0}}};
  field::Report expected{.running = true,
                         .clock = 120000,
                         .cuts = {0x01, 0x0C, 0x4D, 0x00},
                         .lit = {0, 5, 255, 1},
                         .mode = 5,
                         .lap = {1, 2, 3, 10}};
  link.SendMessage(6, 3);
  EXPECT_EQ(serial.sent.back(), Frame(6, 3, expected));
  // Without control the bytes stay as they were last sent.
  Click("chkSystemController");
  race.laps = {9, 9, 9, 9};
  race.cuts = {};
  link.SendMessage(1, 254);
  EXPECT_EQ(serial.sent.back(), Frame(1, 254, expected));
  // With it they are made anew, and no old cut stays behind.
  Tick(Word::Yes);
  expected.lap = race.laps;
  expected.cuts = {};
  link.SendMessage(6, 3);
  EXPECT_EQ(serial.sent.back(), Frame(6, 3, expected));
}

class LinkDetailTest : public LinkTrafficTest {
 protected:
  void SetUp() override {
    EnterLoad();
    Rx(Frame(254, 1));
    EXPECT_EQ(link.lblMsg.Caption(), "");  // nothing while closed
    Click("cmdMore");
  }
  std::string After(const Bytes& bytes) {
    Rx(bytes);
    return link.fraMore.Caption();
  }
};

TEST_F(LinkDetailTest, ComesBackAtTheNextStartAsItWasLeft) {
  for (const bool open : {true, false}) {
    EnterLoad();
    EXPECT_EQ(link.fraMore.Visible(), open);
    EXPECT_EQ(link.cmdMore.Caption() + Saved("More"), open ? "<>" : "><");
    Click("cmdMore");
  }
}

TEST_F(LinkDetailTest, ShowsFramesReceivedAndSentAndEachAcknowledgementOnce) {
  EXPECT_EQ(After(Frame(254, 1, {.lap = {3}})), "Msg (Judges 2 -> Laptop)");
  EXPECT_NE(link.lblMsg.Caption().find("Lap=3,0,0,0"), std::string::npos);
  RunUntil(500);
  link.SendMessage(6, 254);
  EXPECT_NE(link.lblMsg.Caption().find("Ecc=0xF8"), std::string::npos);
  EXPECT_EQ(After(Frame(254, 255)), "Msg (Laptop -> Pylon 1) Ack");
  EXPECT_EQ(link.lblAge[6].Tag(), "500");
  for (int i = 0; i < 2000; ++i) Rx(Frame(254, 255));
  EXPECT_EQ(link.fraMore.Caption().substr(0, 32), "Msg (Laptop -> Pylon 1) Ack Ack ");
  EXPECT_LT(link.fraMore.Caption().size(), 4100U);
  // One that is not for the sender shown last is a frame like others, and leaves alone who was addressed.
  link.SendMessage(2, 254);
  EXPECT_EQ(After(Frame(7, 255)), "Msg (Ack -> Display)");
  EXPECT_EQ(After(Frame(255, 255)), "Msg (Ack -> Display) Ack");
  EXPECT_EQ(link.lblAge[2].Tag() + link.lblAge[7].Tag(), "500");
}

TEST_F(LinkDetailTest, ShowsOnlyTheSelectedStationsTrafficAndAFrozenPanelKeepsItsFrame) {
  Click("lblStation(2)");
  EXPECT_EQ(After(Frame(254, 1)), "Msg");
  EXPECT_EQ(After(Frame(254, 2)), "Msg (Judges 3 -> Laptop)");
  EXPECT_EQ(After(Frame(2, 6)), "Msg (Pylon 1 -> Judges 3)");
  Click("cmdStation");
  Click("lblMsg");
  EXPECT_TRUE(link.cmdFreeze.Visible());
  EXPECT_EQ(After(Frame(254, 0)), "Msg (Pylon 1 -> Judges 3)");
  EXPECT_EQ(link.lblAge[0].Caption(), "0");  // the rows go on
  Click("cmdFreeze");
  EXPECT_EQ(After(Frame(254, 4)), "Msg (Timers -> Laptop)");
  Click("lblMsg");
  Click("lblMsg");
  EXPECT_FALSE(link.cmdFreeze.Visible());
  Click("cmdCopyMsg");
  EXPECT_EQ(platform.copied.substr(0, 58), "Msg (Timers -> Laptop)\nWig1=0x55, Wig2=0xAA, Ecc=0xFA\nStrt");
}

}  // namespace
}  // namespace quorvane
