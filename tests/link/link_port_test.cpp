#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

class LinkPortTest : public LinkTest {
 protected:
  // "COM5 5 None,COM3,[COM5] ": what the console shows, the saved port, the port buttons that can be seen
  // with the ticked ones, and why the port is not open. The port, the race and the colour must agree.
  std::string Shown() {
    EXPECT_EQ(state.CommActive, serial.PortOpen());
    EXPECT_EQ(race.portOpen, state.CommActive);
    EXPECT_EQ(state.CommActive, race.port == "COM" + std::to_string(serial.CommPort()));
    std::string buttons;
    for (const Control* button : link.optPort) {
      const bool ticked = button->Value() == 1;
      if (!button->Visible() && !ticked) continue;
      buttons += (buttons.empty() ? "" : ",") + (ticked ? "[" + button->Caption() + "]" : button->Caption());
    }
    return race.port + " " + Saved("CommPort") + " " + buttons + " " + race.warning;
  }
};

class LinkUnloadedTest : public LinkTest {
  void SetUp() override {}
};

TEST_F(LinkUnloadedTest, BeforeAnySelectionThePortIsOff) {
  state.CommActive = race.portOpen = true;
  serial.SetCommPort(3);
  link.Form_Load();
  EXPECT_FALSE(state.CommActive || race.portOpen);
  EXPECT_EQ(race.port, "COM3 - Off");
}

TEST_F(LinkPortTest, EveryActivationShowsThePortsThatOpenAndOpensTheSavedOne) {
  serial.ports = {3, 5, 9, 31, 32};
  serial.busy[9] = {5, "Access is denied"};
  Activate();
  EXPECT_EQ(Shown(), "COM5 5 None,COM3,[COM5],COM31 ");
  serial.ports = {3, 5};
  for (const char* saved : {"7", "-1", "x", "99999999999"}) {  // one that is missing stays saved
    platform.settings.SaveSetting("frmSerialPort", "CommPort", saved);
    Activate();
    EXPECT_EQ(Shown(), std::string("No Comm ") + saved + " [None],COM3,COM5 " +
                           (*saved == '7' ? "COM7 is not there" : ""));
  }
  EXPECT_TRUE(platform.shown.empty());
}

TEST_F(LinkPortTest, ChoosingAPortClosesTheOldOne) {
  Click("optPort(1)");
  EXPECT_EQ(Shown(), "COM3 3 None,[COM3],COM5 ");
  Click("optPort(0)");
  EXPECT_EQ(Shown(), "No Comm -1 [None],COM3,COM5 ");
}

TEST_F(LinkPortTest, APortThatCannotBeOpenedIsReportedAndMarkedOff) {
  serial.busy[3] = {5, "Access is denied"};
  bool activeMeanwhile = true;
  platform.whileOpen = [&](const DialogBox&) { activeMeanwhile = state.CommActive; };
  Click("optPort(1)");
  ExpectBox(
      DialogKind::Ok, DialogIcon::Critical, "Open Serial Comm",
      "Can't open COM3.\r\rReason: (5) Access is denied\r\rCheck the connection to the Maxstream modem.\r"
      "( If a race was active when the modem was\r   turned on, it will cause the port to be locked. )");
  EXPECT_FALSE(activeMeanwhile);
  EXPECT_EQ(Shown(), "COM3 - Off 3 None,[COM3],COM5 COM3 does not open");
  serial.busy.clear();
  Click("optPort(1)");  // the guard has fallen
  EXPECT_EQ(Shown(), "COM3 3 None,[COM3],COM5 ");
  // A port that has vanished behind its button: the old one must not come back under its name.
  serial.ports = {3};
  Click("optPort(2)");
  EXPECT_EQ(Shown(), "COM5 - Off 5 None,COM3,[COM5] COM5 is not there");
}

TEST_F(LinkPortTest, AnUnpluggedPortIsOffUntilItComesBack) {
  Ports({5, 6});  // another one goes
  EXPECT_EQ(race.port, "COM5");
  Ports({3});
  EXPECT_EQ(Shown(), "COM5 - Off 5 None,COM3,[COM5] COM5 is not there");
  EXPECT_EQ(link.lblMessage.Caption(), "COM5 is not there. It opens when it is plugged in.");
  Ports({3, 5});
  EXPECT_EQ(Shown(), "COM5 5 None,COM3,[COM5] ");
  Line(1006);  // just opened: not reported
  EXPECT_EQ(link.lblMessage.Caption(), "");

  Ports({3});
  Activate();
  EXPECT_EQ(Shown(), "No Comm 5 [None],COM3 COM5 is not there");
  Ports({3, 5});
  EXPECT_EQ(Shown(), "COM5 5 None,COM3,[COM5] ");
  Ports({3});
  Click("optPort(1)");  // another one is chosen meanwhile, or none
  Ports({3, 5});
  EXPECT_EQ(race.port, "COM3");
  Ports({5});
  Click("optPort(0)");
  Ports({3, 5});
  EXPECT_EQ(race.port, "No Comm");
  EXPECT_TRUE(platform.shown.empty());
}

// A saved or chosen port that does not open yet.
TEST_F(LinkPortTest, APortThatIsAwaitedComesUpByItselfAndSaysWhyUntilThen) {
  const std::pair<SerialError, std::string> cases[] = {
      {{16, "Another program is using it."}, "COM5 is in use"},
      {{13, "Permission denied."}, "COM5: no permission"},
      {{17, "A program that has ended left a lock."}, "COM5: stale lock"},
      {{5, "Input/output error"}, "COM5 does not open"}};
  for (const bool chosen : {false, true}) {
    for (const auto& [error, reason] : cases) {
      serial.busy[5] = error;
      if (chosen) Click("optPort(0)");
      chosen ? Click("optPort(2)") : Activate();
      EXPECT_EQ(Shown(), (chosen ? "COM5 - Off 5 None,COM3,[COM5] " : "No Comm 5 [None],COM3 ") + reason);
      RunFor(3500);
      EXPECT_EQ(link.lblMessage.Caption(), "COM5 does not open. " + error.description);
      serial.busy.clear();
      RunFor(1001);
      EXPECT_EQ(Shown() + link.lblMessage.Caption(), "COM5 5 None,COM3,[COM5] ");
    }
  }
  serial.busy[5] = {16, ""};
  Activate();
  Click("optPort(0)");
  serial.busy.clear();
  RunFor(3000);
  EXPECT_EQ(race.port + race.warning, "No Comm");
}

TEST_F(LinkPortTest, LineErrorsAreReportedInWordsAndDoNotStopReception) {
  Rx(Bytes(35, 0));
  for (const int code : {1006, 1008}) {  // held back until a frame's worth has been read
    Line(code);
    EXPECT_EQ(link.lblMessage.Caption(), "") << code;
  }
  Line(1009);
  EXPECT_NE(link.lblMessage.Caption(), "");
  Rx({0});
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
      {1002, "Unexpected error #1002"}};
  for (const auto& [code, text] : cases) {
    Line(code);
    EXPECT_EQ(link.lblMessage.Caption(), text);
  }
  Rx(Bytes(36, 0));               // the bytes owed
  serial.Receive(Frame(254, 1));  // waiting in the port when the error comes
  Line(1004);
  EXPECT_EQ(race.senders, "1 ");
}

}  // namespace
}  // namespace quorvane
