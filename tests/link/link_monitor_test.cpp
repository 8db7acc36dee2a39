#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

class LinkMonitorTest : public LinkTest {
 protected:
  void Open() {
    EnterLoad();
    Click("cmdMore");
  }
};

TEST_F(LinkMonitorTest, TheDetailPanelComesBackAsItWasLeft) {
  EnterLoad();
  EXPECT_FALSE(link.fraMore.Visible());
  EXPECT_EQ(link.cmdMore.Caption(), ">");
  Click("cmdMore");
  EXPECT_TRUE(link.fraMore.Visible());
  EXPECT_EQ(link.cmdMore.Caption(), "<");
  EXPECT_EQ(Saved("More"), ">");
  EnterLoad();  // the next start
  EXPECT_TRUE(link.fraMore.Visible());
  EXPECT_EQ(Saved("More"), ">");
  Click("cmdMore");
  EXPECT_EQ(Saved("More"), "<");
  EnterLoad();
  EXPECT_FALSE(link.fraMore.Visible());
}

TEST_F(LinkMonitorTest, ShowsFramesReceivedAndSent) {
  Open();
  Rx(Frame(254, 1, {{29, 3}}));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Judges 2 -> Laptop)");
  EXPECT_EQ(link.lblMsg.Caption(), link.DebugDump());
  EXPECT_NE(link.lblMsg.Caption().find("Lap=3,0,0,0"), std::string::npos);
  link.SendMessage(6, 254);
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Laptop -> Pylon 1)");
  EXPECT_NE(link.lblMsg.Caption().find("Ecc=0xF8"), std::string::npos);
}

TEST_F(LinkMonitorTest, ShowsNothingWhileClosed) {
  EnterLoad();
  Rx(Frame(254, 1));
  EXPECT_EQ(link.lblMsg.Caption(), "");
}

TEST_F(LinkMonitorTest, EachAcknowledgementIsAddedOnceAndMarksItsStation) {
  Open();
  RunUntil(500);
  Enter(EventKind::Timer, "frmSerialPort.tmrAging");  // polls station 0
  Rx(Frame(254, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Laptop -> Judges 1) Ack");
  EXPECT_EQ(link.lblAge[0].Tag(), "500");
  EXPECT_EQ(link.lblStation[0].ForeColor(), kButtonText);
  Rx(Frame(254, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Laptop -> Judges 1) Ack Ack");
}

// One that is not for the sender shown last is a frame like others, and leaves alone who was addressed.
TEST_F(LinkMonitorTest, AForeignAcknowledgementIsShownAsAFrame) {
  Open();
  link.SendMessage(2, 254);
  Rx(Frame(7, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Ack -> Display)");
  Rx(Frame(255, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Ack -> Display) Ack");
  EXPECT_NE(link.lblAge[2].Tag(), "");
  EXPECT_EQ(link.lblAge[7].Tag(), "");
}

TEST_F(LinkMonitorTest, EndlessAcknowledgementsDoNotGrowTheCaptionForEver) {
  Open();
  for (int i = 0; i < 2000; ++i) Rx(Frame(0, 255));
  EXPECT_LT(link.fraMore.Caption().size(), 4100U);
}

TEST_F(LinkMonitorTest, ShowsOnlyTheSelectedStationsTraffic) {
  Open();
  Click("lblStation(2)");
  Rx(Frame(254, 1));
  EXPECT_EQ(link.lblMsg.Caption(), "");
  Rx(Frame(254, 2));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Judges 3 -> Laptop)");
  Rx(Frame(2, 6));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Pylon 1 -> Judges 3)");
}

TEST_F(LinkMonitorTest, AFrozenPanelKeepsItsFrameWhileTheRowsGoOn) {
  Open();
  Rx(Frame(254, 1));
  const std::string kept = link.lblMsg.Caption();
  Click("lblMsg");
  EXPECT_TRUE(link.cmdFreeze.Visible());
  Rx(Frame(254, 2));
  EXPECT_EQ(link.lblMsg.Caption(), kept);
  EXPECT_EQ(link.lblAge[2].Caption(), "0");
  Click("cmdFreeze");
  EXPECT_FALSE(link.cmdFreeze.Visible());
  Rx(Frame(254, 4));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Timers -> Laptop)");
  Click("lblMsg");
  Click("lblMsg");
  EXPECT_FALSE(link.cmdFreeze.Visible());
}

TEST_F(LinkMonitorTest, ClosingTheWindowOnlyHidesIt) {
  EnterLoad();
  Enter(EventKind::Close, "frmSerialPort");
  EXPECT_FALSE(link.Visible());
  EXPECT_TRUE(serial.PortOpen());
  Rx(Frame(254, 1));
  EXPECT_EQ(race.frames.size(), 1U);
}

}  // namespace
}  // namespace quorvane
