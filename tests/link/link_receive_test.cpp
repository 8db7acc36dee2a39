#include "base/run_time_error.h"
#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;
using testing_frames::operator+;

class LinkReceiveTest : public LinkTest {
 protected:
  std::string Senders() const {
    std::string text;
    for (const StationMessage& frame : race.frames) text += std::to_string(frame.From);
    return text;
  }
};

TEST_F(LinkReceiveTest, AFrameReachesTheRaceAndLightsTheLampForMoreThanATenthOfASecond) {
  RunUntil(500);
  Rx(Frame(6, 2, {{34, 80}, {35, 128}}) + Bytes{0x55, 0xAA, 0, 0});
  EXPECT_EQ(Senders(), "2");
  EXPECT_EQ(link.lblVolt[2].Caption(), "9.4");
  EXPECT_EQ(link.lblMessage.Caption(), "");
  EXPECT_FALSE(race.writeLit);
  RunUntil(601);  // the timer fired at exactly 100 ms: not yet
  EXPECT_TRUE(race.readLit);
  RunUntil(701);
  EXPECT_FALSE(race.readLit);
  EXPECT_FALSE(link.tmrIndicators.Enabled());
}

TEST_F(LinkReceiveTest, BytesWithThePortClosedAreGoneAndAHiddenFormHandsOn) {
  Click("optPort(0)");
  Rx(Frame(254, 1));
  Click("optPort(2)");
  EXPECT_EQ(Senders(), "");
  for (const bool hide : {true, false}) {
    door.AllForms().Show(link);
    hide ? Click("cmdHide") : Close();
    EXPECT_FALSE(link.Visible());
    Rx(Frame(254, 1));
    EXPECT_EQ(link.lblAge[1].Caption(), "Off");
  }
  EXPECT_EQ(Senders(), "11");
}

TEST_F(LinkReceiveTest, WhatIsNoGoodFrameIsReportedWithUnpaddedHexAndNotHandled) {
  Rx(Frame(6, 0) + Frame(1, 255));  // a good acknowledgement does not change who was addressed
  race.frames.clear();
  Bytes frame = Frame(254, 1, {{7, 3}}), low = Frame(1, 2), ack = Frame(254, 255);
  frame[2] = 0x4F;  // instead of 254 ^ 1 ^ 3
  low[2] = 0x0F;
  ack[2] ^= 1;
  const struct {
    Bytes bytes;
    const char* message;
  } cases[] = {// An acknowledgement names no sender: it comes from the station that was addressed last.
               {ack, "Pylon 1 -> Laptop, Ecc Error 0x1, 0x0"},
               {frame, "Judges 2 -> Laptop, Ecc Error 0xFC, 0x4F"},
               {low, "Judges 3 -> Judges 2, Ecc Error 0x3, 0xF"},
               {Bytes{0x0A, 0x00} + Bytes(34, 0), "Unexpected 0xA, 0x0"}};
  for (const auto& c : cases) {
    Rx(c.bytes);
    EXPECT_EQ(link.lblMessage.Caption(), c.message);
    Rx(Bytes(36, 0));  // the bytes owed
  }
  EXPECT_EQ(Senders(), "");
}

TEST_F(LinkReceiveTest, AnErrorEndsOnlyTheFrameThatRaisedIt) {
  race.onFrame = [](const StationMessage& frame) {
    if (frame.From == 1) throw OverflowError();
  };
  Rx(Frame(254, 1) + Frame(254, 2));
  Rx(Frame(254, 4));
  EXPECT_EQ(Senders(), "124");
  EXPECT_EQ(link.lblAge[1].Caption(), "Off");
  EXPECT_EQ(link.lblAge[2].Caption(), "0");
}

// A lap is answered with a frame of the console's own, from the timers, before the rest of the frame is
// handled.
TEST_F(LinkReceiveTest, AFrameIsHandledFromItsOwnCopy) {
  race.onFrame = [&](const StationMessage& frame) {
    link.SendMessage(3, 4);
    EXPECT_EQ(frame.From, 2);
    EXPECT_EQ(frame.Lap[0], 7);
  };
  Rx(Frame(254, 2, {{29, 7}, {35, 255}}));
  EXPECT_EQ(serial.sent.back()[5], 4);
  EXPECT_EQ(link.lblVolt[2].Caption(), "18.8");
  EXPECT_EQ(link.lblAge[2].Caption(), "0");
  EXPECT_EQ(link.lblAge[4].Caption(), "Off");
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

}  // namespace
}  // namespace quorvane
