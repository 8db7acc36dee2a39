#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

class LinkPortTest : public LinkTest {};

TEST_F(LinkPortTest, BeforeAnySelectionThePortIsOff) {
  state.CommActive = true;
  serial.SetCommPort(3);
  link.Form_Load();
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM3 - Off");
  EXPECT_EQ(race.lblComm.ForeColor(), kRed);
}

TEST_F(LinkPortTest, StartShowsThePortsThatOpenAndReopensTheSavedOne) {
  serial.ports = {3, 5, 9, 31, 32};
  serial.busy[9] = {5, "Access is denied"};
  EnterLoad();
  EXPECT_EQ(PortButtons(), "None,COM3,COM5,COM31");
  EXPECT_EQ(link.optPort[0].Tag(), "-1");
  EXPECT_EQ(link.optPort[2].Tag(), "5");
  EXPECT_EQ(Ticked(), 2);
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(serial.CommPort(), 5);
  EXPECT_EQ(serial.Settings(), "9600,n,8,1");
  EXPECT_TRUE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM5");
  EXPECT_EQ(race.lblComm.ForeColor(), kButtonText);
  EXPECT_EQ(race.lblReadComm.ForeColor(), kButtonFace);
  EXPECT_EQ(race.lblWriteComm.ForeColor(), kButtonFace);
  EXPECT_TRUE(platform.shown.empty());
}

TEST_F(LinkPortTest, ASavedPortThatIsMissingStaysSaved) {
  for (const char* saved : {"7", "-1", "x", "99999999999"}) {
    platform.settings.SaveSetting("frmSerialPort", "CommPort", saved);
    EnterLoad();
    EXPECT_EQ(Ticked(), 0) << saved;
    EXPECT_EQ(CommCaption(), "No Comm");
    EXPECT_EQ(race.lblComm.ForeColor(), kRed);
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_FALSE(state.CommActive);
    EXPECT_EQ(Saved("CommPort"), saved);
  }
}

TEST_F(LinkPortTest, NoneClosesThePort) {
  EnterLoad();
  Click("optPort(0)");
  EXPECT_EQ(Saved("CommPort"), "-1");
  EXPECT_EQ(CommCaption(), "No Comm");
  EXPECT_FALSE(serial.PortOpen());
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(Ticked(), 0);
}

TEST_F(LinkPortTest, ChoosingAnotherPortClosesTheOldOne) {
  EnterLoad();
  Click("optPort(1)");
  EXPECT_EQ(serial.CommPort(), 3);
  EXPECT_EQ(Saved("CommPort"), "3");
  EXPECT_EQ(CommCaption(), "COM3");
  EXPECT_EQ(Ticked(), 1);
}

TEST_F(LinkPortTest, APortThatCannotBeOpenedIsReportedAndMarkedOff) {
  EnterLoad();
  serial.busy[3] = {5, "Access is denied"};
  bool activeMeanwhile = true;
  platform.whileOpen = [&](const DialogBox&) { activeMeanwhile = state.CommActive; };
  Click("optPort(1)");
  ASSERT_EQ(platform.shown.size(), 1U);
  const DialogBox& box = platform.shown[0].box;
  EXPECT_EQ(box.kind, DialogKind::Ok);
  EXPECT_EQ(box.icon, DialogIcon::Critical);
  EXPECT_EQ(box.title, "Open Serial Comm");
  EXPECT_EQ(
      box.text,
      "Can't open COM3.\r\rReason: (5) Access is denied\r\rCheck the connection to the Maxstream modem.\r"
      "( If a race was active when the modem was\r   turned on, it will cause the port to be locked. )");
  EXPECT_FALSE(activeMeanwhile);
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM3 - Off");
  EXPECT_EQ(race.lblComm.ForeColor(), kRed);
  EXPECT_EQ(Saved("CommPort"), "3");

  serial.busy.clear();
  Click("optPort(1)");  // the guard has fallen
  EXPECT_EQ(CommCaption(), "COM3");
}

// The old port must not come back under the new one's name.
TEST_F(LinkPortTest, APortThatVanishedBehindItsButtonDoesNotOpenTheOldOne) {
  EnterLoad();
  serial.ports = {5};
  Click("optPort(1)");
  EXPECT_FALSE(serial.PortOpen());
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM3 - Off");
  EXPECT_EQ(platform.shown.size(), 1U);
}

TEST_F(LinkPortTest, EveryActivationProbesAgain) {
  EnterLoad();
  serial.ports = {5};
  Activate();
  EXPECT_EQ(PortButtons(), "None,COM5");
  EXPECT_EQ(Ticked(), 1);
  EXPECT_EQ(CommCaption(), "COM5");
  serial.ports = {3};
  Activate();
  EXPECT_EQ(PortButtons(), "None,COM3");
  EXPECT_EQ(Ticked(), 0);
  EXPECT_EQ(Saved("CommPort"), "5");
}

TEST_F(LinkPortTest, AnUnpluggedPortIsOffUntilItComesBack) {
  EnterLoad();
  Ports({3});
  EXPECT_FALSE(serial.PortOpen());
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM5 - Off");
  EXPECT_EQ(race.lblComm.ForeColor(), kRed);
  EXPECT_EQ(Saved("CommPort"), "5");

  Ports({3, 5});
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(serial.CommPort(), 5);
  EXPECT_TRUE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM5");
  EXPECT_EQ(race.lblComm.ForeColor(), kButtonText);
  Line(1006);  // just opened: not reported
  EXPECT_EQ(link.lblMessage.Caption(), "");
  EXPECT_TRUE(platform.shown.empty());
}

TEST_F(LinkPortTest, OtherPortsComeAndGoWithoutTouchingTheOpenOne) {
  EnterLoad();
  Ports({5, 6});
  EXPECT_TRUE(serial.PortOpen());
  EXPECT_EQ(CommCaption(), "COM5");
}

TEST_F(LinkPortTest, AReturnedPortThatStillRefusesIsTriedAgain) {
  EnterLoad();
  Ports({3});
  serial.busy[5] = {13, "Permission denied"};
  Ports({3, 5});
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM5 - Off");
  serial.busy.clear();
  RunUntil(2001);
  EXPECT_TRUE(state.CommActive);
  EXPECT_EQ(CommCaption(), "COM5");
  EXPECT_TRUE(platform.shown.empty());
}

TEST_F(LinkPortTest, APortChosenMeanwhileStaysChosen) {
  EnterLoad();
  Ports({3});
  Click("optPort(1)");
  Ports({3, 5});
  EXPECT_EQ(serial.CommPort(), 3);
  EXPECT_EQ(CommCaption(), "COM3");
  Ports({5});
  Click("optPort(0)");
  Ports({3, 5});
  EXPECT_EQ(CommCaption(), "No Comm");
}

TEST_F(LinkPortTest, APortUnpluggedDuringAnActivationComesBackToo) {
  EnterLoad();
  Ports({3});
  Activate();
  EXPECT_EQ(CommCaption(), "No Comm");
  Ports({3, 5});
  EXPECT_EQ(CommCaption(), "COM5");
  EXPECT_EQ(PortButtons(), "None,COM3,COM5");
  EXPECT_EQ(Ticked(), 2);
}

TEST_F(LinkPortTest, LineErrorsAreReportedInWords) {
  EnterLoad();
  Rx(Frame(254, 1));  // no longer just opened
  const std::pair<int, const char*> cases[] = {
      {1001, "A Break signal was received"},
      {1004, "Framing Error. The hardware detected a framing error."},
      {1006,
       "Port Overrun. A character was not read from the hardware before the next character arrived and was "
       "lost."},
      {1008, "Receive Buffer Overflow. There is no room in the receive buffer."},
      {1009, "Parity Error. The hardware detected a parity error."},
      {1010, "Transmit Buffer Full. The transmit buffer was full while trying to queue a character."},
      {1011, "Unexpected error retrieving Device Control Block (DCB) for the port."},
      {1002, "Unexpected error #1002"},
      {1000, "Unexpected error #1000"}};
  for (const auto& [code, text] : cases) {
    Line(code);
    EXPECT_EQ(link.lblMessage.Caption(), text);
  }
}

TEST_F(LinkPortTest, OverrunAndOverflowAreHeldBackUntilAFramesWorthHasBeenRead) {
  EnterLoad();
  Rx(Bytes(35, 0));
  for (const int code : {1006, 1008}) {
    Line(code);
    EXPECT_EQ(link.lblMessage.Caption(), "") << code;
  }
  Line(1009);
  EXPECT_NE(link.lblMessage.Caption(), "");
  Rx({0});
  Line(1006);
  EXPECT_EQ(link.lblMessage.Caption().substr(0, 12), "Port Overrun");
}

TEST_F(LinkPortTest, ALineErrorDoesNotStopReception) {
  EnterLoad();
  serial.Receive(Frame(254, 1));  // waiting in the port when the error comes
  Line(1004);
  EXPECT_EQ(race.frames.size(), 1U);
}

}  // namespace
}  // namespace quorvane
