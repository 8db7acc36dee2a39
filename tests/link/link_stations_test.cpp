#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

class LinkStationsTest : public LinkTest {
 protected:
  std::string Polled() const {  // the addressees of what was sent, all from the console
    std::string text;
    for (const Bytes& frame : serial.sent) text += frame[5] == 254 ? std::to_string(frame[4]) : "?";
    return text;
  }
};

TEST_F(LinkStationsTest, RawBytesAreShownAsVoltsAndDegrees) {
  const struct {
    int volt, temp;
    const char *volts, *degrees;
  } cases[] = {{128, 60, "9.4", "-0.9"},
               {13, 80, "", "89.2"},
               {0, 255, "", "878.0"},
               {255, 61, "18.8", "3.6"},
               {14, 0, "1.0", "-271.3"}};
  for (const auto& c : cases) {
    Rx(Frame(254, 3, {{34, c.temp}, {35, c.volt}}));
    EXPECT_EQ(link.lblVolt[3].Caption(), c.volts) << c.volt;
    EXPECT_EQ(link.lblTemp[3].Caption(), c.degrees) << c.temp;
    EXPECT_EQ(link.lblVolt[3].ForeColor(), kButtonText) << "far below the starter's 12.0 V too";
  }
  for (const int from : {8, 16, 254, 255}) Rx(Frame(1, from, {{35, 255}}));
  for (const int row : {0, 1, 2, 4, 5, 6, 7}) EXPECT_EQ(link.lblAge[row].Tag(), "") << row;
}

TEST_F(LinkStationsTest, AgesCountUpInSecondsAndEndInOff) {
  state.RaceActive = true;
  EXPECT_EQ(link.lblStation[7].Caption(), "Display");
  EXPECT_EQ(link.lblStation[5].Caption(), "");
  platform.SetClock(123);
  Rx(Frame(254, 1, {{34, 80}, {35, 128}}));
  EXPECT_EQ(link.lblAge[1].Caption(), "0");
  EXPECT_EQ(link.lblAge[1].Tag(), "123");
  RunUntil(2001);
  EXPECT_EQ(link.lblAge[1].Caption(), "1.877");
  EXPECT_EQ(link.lblAge[1].ForeColor(), kButtonText);
  EXPECT_EQ(link.lblAge[0].Caption(), "Off");  // never heard
  EXPECT_EQ(link.lblAge[0].ForeColor(), kRed);
  for (const bool over : {false, true}) {
    platform.SetClock(over ? 30124 : 30123);
    door.Enter({EventKind::Timer, "frmSerialPort.tmrAging"});
    EXPECT_EQ(link.lblAge[1].Caption(), over ? "Off" : "30");
    EXPECT_EQ(link.lblVolt[1].Caption(), over ? "" : "9.4");
    EXPECT_EQ(link.lblTemp[1].Caption(), over ? "" : "89.2");
  }
  EXPECT_EQ(link.lblAge[1].ForeColor(), kRed);
}

TEST_F(LinkStationsTest, StationsArePolledInTurnBetweenRacesAndRedUntilTheyAnswer) {
  RunUntil(4001);
  EXPECT_EQ(link.lblStation[1].ForeColor(), kRed);
  EXPECT_EQ(link.lblStation[2].ForeColor(), kButtonText);
  Rx(Frame(254, 1));
  EXPECT_EQ(link.lblStation[0].ForeColor(), kRed);
  EXPECT_EQ(link.lblStation[1].ForeColor(), kButtonText);
  RunUntil(18001);
  EXPECT_EQ(Polled(), "012345670");
  state.RaceActive = true;
  RunUntil(30001);
  EXPECT_EQ(serial.sent.size(), 9U);
}

TEST_F(LinkStationsTest, ASelectedStationAloneIsPolled) {
  RunUntil(4001);
  Click("lblStation(6)");
  EXPECT_TRUE(link.cmdStation.Visible());
  EXPECT_EQ(link.cmdStation.Caption(), "Pylon 1");
  EXPECT_EQ(link.cmdStation.Tag(), "6");
  EXPECT_EQ(link.cmdStation.Anchor(), &link.lblStation[6]);
  RunUntil(8001);
  EXPECT_EQ(Polled(), "0166");
  EXPECT_EQ(link.lblStation[2].ForeColor(), kRed);  // its turn, though it is not asked
  Click("cmdStation");
  EXPECT_FALSE(link.cmdStation.Visible());
  RunUntil(12001);
  EXPECT_EQ(Polled(), "016623");
}

}  // namespace
}  // namespace quorvane
