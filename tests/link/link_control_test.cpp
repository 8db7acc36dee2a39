// Controller mode and the frames that the console sends.

#include "base/run_time_error.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;
using testing_frames::operator+;
using Word = DialogAnswer::Word;

class LinkControlTest : public LinkTest {
 protected:
  void Tick(Word answer) {
    Answer(answer);
    Click("chkSystemController");
  }
  void ExpectControl(bool controls, bool ticked) {
    EXPECT_EQ(link.IsControllerMode(), ticked);
    EXPECT_EQ(link.chkListen.Enabled(), !controls);
    EXPECT_EQ(Saved("chkSystemController"), ticked ? "1" : "0");
  }
};

TEST_F(LinkControlTest, TakingControlAsksAndTellsTheStations) {
  Tick(Word::Yes);
  ExpectBox(DialogKind::YesNo, DialogIcon::Exclamation, "Enabling CONTROLLER mode",
            "Do you want to CONTROL the race equipment\rfrom this computer\r\r"
            "Confirm that you really want to do this.");
  ExpectControl(true, true);
  EXPECT_EQ(race.raceEvents, std::vector<bool>{true});
  Click("chkSystemController");
  EXPECT_EQ(platform.shown.size(), 1U);  // giving it up asks nothing
  ExpectControl(false, false);
}

TEST_F(LinkControlTest, NoLeavesTheBoxTicked) {
  Tick(Word::No);
  ExpectControl(false, true);
  EXPECT_TRUE(race.raceEvents.empty());
}

TEST_F(LinkControlTest, ASavedTickIsRestoredOnActivationAndAsksAgain) {
  for (const char* saved : {"0", "2", "no", "1"}) {
    platform.settings.SaveSetting("frmSerialPort", "chkSystemController", saved);
    Answer(Word::Yes);
    Activate();
    EXPECT_EQ(link.IsControllerMode(), std::string(saved) == "1") << saved;
  }
  Activate();  // the box does not change: nothing to ask
  EXPECT_EQ(platform.shown.size(), 1U);
}

TEST_F(LinkControlTest, AStarterOnTheAirWins) {
  Rx(Frame(6, 3));
  EXPECT_TRUE(platform.shown.empty());  // nothing to cancel
  Tick(Word::Yes);
  platform.shown.clear();
  bool handledBeforeBox = false;
  platform.whileOpen = [&](const DialogBox&) {
    handledBeforeBox = race.frames.size() == 3 && link.lblAge[3].Caption() == "0";
    Rx(Frame(6, 3));  // reception goes on behind the box
  };
  Rx(Frame(6, 3) + Frame(6, 3));
  ExpectBox(DialogKind::OkCancel, DialogIcon::Exclamation, "Cancel CONTROLLER mode",
            "CONTROLLER mode is cancelled\rbecause the STARTER was detected");
  EXPECT_TRUE(handledBeforeBox);
  EXPECT_EQ(race.frames.size(), 4U);
  ExpectControl(false, false);
}

TEST_F(LinkControlTest, AStarterHeardWhileTheQuestionIsOpenWinsOverYes) {
  platform.whileOpen = [&](const DialogBox& box) {
    if (box.kind == DialogKind::YesNo) Rx(Frame(6, 3));
  };
  Tick(Word::Yes);
  ExpectControl(false, false);
  EXPECT_TRUE(race.raceEvents.empty());
}

TEST_F(LinkControlTest, NothingIsSentWhileTheLinkIsOffOrOnlyListens) {
  link.chkListen.SetValue(1);
  link.SendMessage(6, 3);
  link.chkListen.SetValue(0);
  state.CommActive = false;
  link.SendMessage(6, 3);
  EXPECT_TRUE(serial.sent.empty());
  EXPECT_FALSE(race.writeLit);
  RunUntil(2001);
  EXPECT_EQ(link.lblStation[0].ForeColor(), kRed);  // polled in vain

  state.CommActive = true;
  link.chkListen.SetValue(1);
  link.chkListen.SetEnabled(false);  // as in controller mode
  link.SendMessage(6, 3);
  EXPECT_EQ(serial.sent.size(), 1U);
}

TEST_F(LinkControlTest, AFrameWithoutControlCarriesOnlyItsAddresses) {
  link.SendMessage(2, 254);
  EXPECT_EQ(serial.sent.back(), Frame(2, 254));
  EXPECT_TRUE(race.writeLit);
  EXPECT_FALSE(race.readLit);
}

TEST_F(LinkControlTest, AControllersFrameCarriesTheRace) {
  Tick(Word::Yes);
  race.laps = {1, 2, 3, 10};
  race.lit = {0, 5, 255, 1};
  race.cuts = {{{1, 0, 0, 0}, {0, 2, 0, 0}, {1, 3, 0, 1}, {0, 0, -1, 0}}};
  link.SendMessage(6, 3);
  Bytes expected = {0x55, 0xAA, 0,                 // sync, check
                    0x01, 0x06, 0x03,              // running, to the pylon box, as the starter
                    0x00, 0x01, 0xD4, 0xC0,        // 120000 ms
                    0x00,                          // turns
                    0x01, 0x0C, 0x4D, 0x00,        // cuts
                    0x00, 0x05, 0x06, 0x00,        // lanes 1 and 3 single, 2 and 3 double
                    0x00, 0x00, 0x00, 0x00, 0x00,  // ages
                    0x00, 0x05, 0xFF, 0x01, 0x05,  // lights, race mode
                    0x01, 0x02, 0x03, 0x0A,        // laps
                    0x00, 0x00, 0x00};
  expected[2] = testing_frames::Check(expected);
  EXPECT_EQ(serial.sent.back(), expected);

  // Without control the bytes stay as they were last sent.
  Click("chkSystemController");
  race.laps = {9, 9, 9, 9};
  link.SendMessage(1, 254);
  EXPECT_EQ(serial.sent.back()[29], 1);
  EXPECT_EQ(serial.sent.back()[3], 1);

  // With it they are made anew, and no old cut stays behind.
  Tick(Word::Yes);
  race.cuts = {};
  link.SendMessage(6, 3);
  EXPECT_EQ(Bytes(serial.sent.back().begin() + 11, serial.sent.back().begin() + 19), Bytes(8, 0));
  EXPECT_EQ(serial.sent.back()[29], 9);
}

TEST_F(LinkControlTest, AddressesOutOfRangeAreErrors) {
  for (const std::int16_t bad : {std::int16_t{-1}, std::int16_t{256}}) {
    EXPECT_THROW(link.SendMessage(bad, 3), OverflowError);
    EXPECT_THROW(link.SendMessage(3, bad), OverflowError);
  }
  EXPECT_TRUE(serial.sent.empty());
}

}  // namespace
}  // namespace quorvane
