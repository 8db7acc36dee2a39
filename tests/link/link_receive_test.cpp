#include "common/run_time_error.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;
using testing_frames::operator+;

class LinkReceiveTest : public LinkTest {
 protected:
  LinkReceiveTest() { EnterLoad(); }

  std::string Senders() const {
    std::string text;
    for (const StationMessage& frame : race.frames) text += std::to_string(frame.From) + " ";
    return text;
  }
};

TEST_F(LinkReceiveTest, AFrameReachesTheRaceAndLightsTheLamp) {
  RunUntil(1234);
  const Bytes frame = Frame(6, 2, {{34, 80}, {35, 128}});
  Rx(frame + Bytes{0x55, 0xAA, 0, 0});
  ASSERT_EQ(race.frames.size(), 1U);
  EXPECT_EQ(race.frames[0], link.CurrentMessage());
  EXPECT_EQ(race.frames[0].To, 6);
  EXPECT_EQ(race.lblReadComm.BackColor(), kGreen);
  EXPECT_EQ(race.lblReadComm.Tag(), "1234");
  EXPECT_EQ(race.lblWriteComm.BackColor(), kButtonFace);
  EXPECT_TRUE(link.tmrIndicators.Enabled());
  EXPECT_EQ(link.lblVolt[2].Caption(), "9.4");
  EXPECT_EQ(link.lblMessage.Caption(), "");
}

TEST_F(LinkReceiveTest, BytesWithThePortClosedAreGone) {
  Click("optPort(0)");
  Rx(Frame(254, 1));
  Click("optPort(2)");
  EXPECT_TRUE(race.frames.empty());
}

TEST_F(LinkReceiveTest, ADamagedFrameIsReportedAndKeptButNotHandled) {
  Bytes frame = Frame(254, 1, {{7, 3}});
  frame[2] = 0x4F;  // instead of 254 ^ 1 ^ 3
  Rx(frame);
  EXPECT_EQ(link.lblMessage.Caption(), "Judges 2 -> Laptop, Ecc Error 0xFC, 0x4F");
  EXPECT_EQ(link.CurrentMessage().From, 1);
  EXPECT_TRUE(race.frames.empty());
  EXPECT_EQ(race.lblReadComm.BackColor(), kButtonFace);
}

TEST_F(LinkReceiveTest, HexadecimalInReportsIsNotPadded) {
  Bytes frame = Frame(1, 2);
  frame[2] = 0x0F;
  Rx(frame);
  EXPECT_EQ(link.lblMessage.Caption(), "Judges 3 -> Judges 2, Ecc Error 0x3, 0xF");
  Rx(Bytes(36, 0));
  Rx(Bytes{0x0A, 0x00} + Bytes(34, 0));
  EXPECT_EQ(link.lblMessage.Caption(), "Unexpected 0xA, 0x0");
}

// An acknowledgement names no sender: it comes from the station that was addressed last.
TEST_F(LinkReceiveTest, ADamagedAcknowledgementIsReportedForTheStationLastAddressed) {
  Rx(Frame(6, 0) + Frame(1, 255));  // a good acknowledgement does not change who was addressed
  Bytes ack = Frame(254, 255);
  ack[2] ^= 1;
  Rx(ack);
  EXPECT_EQ(link.lblMessage.Caption(), "Pylon 1 -> Laptop, Ecc Error 0x1, 0x0");
  EXPECT_EQ(link.CurrentMessage().From, 6);
}

TEST_F(LinkReceiveTest, AnErrorEndsOnlyTheFrameThatRaisedIt) {
  race.onFrame = [](const StationMessage& frame) {
    if (frame.From == 1) throw OverflowError();
  };
  Rx(Frame(254, 1) + Frame(254, 2));
  EXPECT_EQ(Senders(), "1 2 ");
  EXPECT_EQ(link.lblAge[1].Caption(), "Off");
  EXPECT_EQ(link.lblAge[2].Caption(), "0");
  Rx(Frame(254, 4));
  EXPECT_EQ(Senders(), "1 2 4 ");
}

// A lap is answered with a frame of the console's own, from the timers, before the rest of the frame is
// handled.
TEST_F(LinkReceiveTest, AFrameIsHandledFromItsOwnCopy) {
  link.chkListen.SetValue(0);
  race.onFrame = [&](const StationMessage& frame) {
    link.SendMessage(3, 4);
    EXPECT_EQ(frame.From, 2);
    EXPECT_EQ(frame.Lap[0], 7);
  };
  Rx(Frame(254, 2, {{29, 7}, {35, 255}}));
  EXPECT_EQ(serial.sent.size(), 1U);
  EXPECT_EQ(link.CurrentMessage().From, 4);
  EXPECT_EQ(link.lblVolt[2].Caption(), "18.8");
  EXPECT_EQ(link.lblAge[2].Caption(), "0");
  EXPECT_EQ(link.lblAge[4].Caption(), "Off");
}

// A box inside the handling of a frame: the bytes that come meanwhile wait for it, and keep their order.
TEST_F(LinkReceiveTest, BytesBehindABoxAreReadByTheOuterLoop) {
  race.onFrame = [&](const StationMessage& frame) {
    if (frame.From != 1) return;
    door.Ask({DialogKind::Ok, "", ""});
    EXPECT_EQ(Senders(), "1 ");
  };
  platform.whileOpen = [&](const DialogBox&) { Rx(Frame(254, 2)); };
  Rx(Frame(254, 1) + Frame(254, 0));
  EXPECT_EQ(Senders(), "1 0 2 ");
}

TEST_F(LinkReceiveTest, AHiddenFormShowsNothingButHandsOn) {
  Click("cmdHide");
  EXPECT_FALSE(link.Visible());
  Rx(Frame(254, 1));
  EXPECT_EQ(Senders(), "1 ");
  EXPECT_EQ(link.lblAge[1].Caption(), "Off");
}

TEST_F(LinkReceiveTest, TheMessageLineIsClearedEvenUnderSteadyNoise) {
  for (int ms = 0; ms < 2000; ms += 100) {
    RunUntil(ms);
    Rx(Bytes(72, 9));
  }
  EXPECT_EQ(link.lblMessage.Caption(), "Unexpected 0x9, 0x9");
  RunUntil(2001);
  EXPECT_EQ(link.lblMessage.Caption(), "");
  EXPECT_EQ(serial.sent.size(), 1U);  // and the polling went on
}

TEST_F(LinkReceiveTest, LampsGoDarkAfterMoreThanATenthOfASecond) {
  RunUntil(500);
  Rx(Frame(254, 1));
  RunUntil(601);  // the timer fired at exactly 100 ms: not yet
  EXPECT_EQ(race.lblReadComm.BackColor(), kGreen);
  RunUntil(701);
  EXPECT_EQ(race.lblReadComm.BackColor(), kButtonFace);
  EXPECT_FALSE(link.tmrIndicators.Enabled());
}

TEST_F(LinkReceiveTest, TheFramesStoreHasSeventeenPlaces) {
  link.LastStationMessage(16).From = 16;
  EXPECT_EQ(link.LastStationMessage(16).From, 16);
  EXPECT_THROW(link.LastStationMessage(17), SubscriptError);
  EXPECT_THROW(link.LastStationMessage(-1), SubscriptError);
}

}  // namespace
}  // namespace quorvane
