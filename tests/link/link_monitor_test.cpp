#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

class LinkMonitorTest : public LinkTest {
 protected:
  void SetUp() override {
    EnterLoad();
    Rx(Frame(254, 1));
    EXPECT_EQ(link.lblMsg.Caption(), "");  // nothing while closed
    Click("cmdMore");
  }
};

TEST_F(LinkMonitorTest, ComesBackAtTheNextStartAsItWasLeft) {
  for (const bool open : {true, false}) {
    EnterLoad();
    EXPECT_EQ(link.fraMore.Visible(), open);
    EXPECT_EQ(link.cmdMore.Caption(), open ? "<" : ">");
    EXPECT_EQ(Saved("More"), open ? ">" : "<");
    Click("cmdMore");
  }
}

TEST_F(LinkMonitorTest, ShowsFramesReceivedAndSentAndEachAcknowledgementOnce) {
  Rx(Frame(254, 1, {{29, 3}}));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Judges 2 -> Laptop)");
  EXPECT_NE(link.lblMsg.Caption().find("From=0x01, To =0xFE"), std::string::npos);
  EXPECT_NE(link.lblMsg.Caption().find("Lap=3,0,0,0"), std::string::npos);
  RunUntil(500);
  link.SendMessage(6, 254);
  EXPECT_NE(link.lblMsg.Caption().find("Ecc=0xF8"), std::string::npos);
  Rx(Frame(254, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Laptop -> Pylon 1) Ack");
  EXPECT_EQ(link.lblAge[6].Tag(), "500");
  for (int i = 0; i < 2000; ++i) Rx(Frame(254, 255));
  EXPECT_EQ(link.fraMore.Caption().substr(0, 32), "Msg (Laptop -> Pylon 1) Ack Ack ");
  EXPECT_LT(link.fraMore.Caption().size(), 4100U);
}

// One that is not for the sender shown last is a frame like others, and leaves alone who was addressed.
TEST_F(LinkMonitorTest, AForeignAcknowledgementIsShownAsAFrame) {
  link.SendMessage(2, 254);
  Rx(Frame(7, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Ack -> Display)");
  Rx(Frame(255, 255));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Ack -> Display) Ack");
  EXPECT_NE(link.lblAge[2].Tag(), "");
  EXPECT_EQ(link.lblAge[7].Tag(), "");
}

TEST_F(LinkMonitorTest, ShowsOnlyTheSelectedStationsTraffic) {
  Click("lblStation(2)");
  Rx(Frame(254, 1));
  EXPECT_EQ(link.lblMsg.Caption(), "");
  Rx(Frame(254, 2));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Judges 3 -> Laptop)");
  Rx(Frame(2, 6));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Pylon 1 -> Judges 3)");
}

TEST_F(LinkMonitorTest, AFrozenPanelKeepsItsFrameWhileTheRowsGoOn) {
  Rx(Frame(254, 1));
  Click("lblMsg");
  EXPECT_TRUE(link.cmdFreeze.Visible());
  Rx(Frame(254, 2));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Judges 2 -> Laptop)");
  EXPECT_EQ(link.lblAge[2].Caption(), "0");
  Click("cmdFreeze");
  Rx(Frame(254, 4));
  EXPECT_EQ(link.fraMore.Caption(), "Msg (Timers -> Laptop)");
  Click("lblMsg");
  Click("lblMsg");
  EXPECT_FALSE(link.cmdFreeze.Visible());
}

}  // namespace
}  // namespace quorvane
