#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;

class LinkPortTest : public LinkTest {
 protected:
  // What the console shows, and the port that is open: the two and the race's colour must agree.
  std::string Comm() {
    EXPECT_EQ(state.CommActive, serial.PortOpen());
    EXPECT_EQ(race.portOpen, state.CommActive);
    EXPECT_EQ(state.CommActive, race.port == "COM" + std::to_string(serial.CommPort()));
    return race.port;
  }
  std::string Why() const { return race.warning; }
  // "None,COM3,[COM5]": the port buttons that can be seen, with the ticked ones.
  std::string Buttons() const {
    std::string text;
    for (const Control* button : link.optPort) {
      const bool ticked = button->Value() == 1;
      if (!button->Visible() && !ticked) continue;
      text += (text.empty() ? "" : ",") + (ticked ? "[" + button->Caption() + "]" : button->Caption());
    }
    return text;
  }
};

class LinkUnloadedTest : public LinkTest {
  void SetUp() override {}
};

TEST_F(LinkUnloadedTest, BeforeAnySelectionThePortIsOff) {
  state.CommActive = true;
  serial.SetCommPort(3);
  link.Form_Load();
  EXPECT_FALSE(state.CommActive);
  EXPECT_EQ(race.port, "COM3 - Off");
  EXPECT_FALSE(race.portOpen);
}

TEST_F(LinkPortTest, StartShowsThePortsThatOpenAndReopensTheSavedOne) {
  serial.ports = {3, 5, 9, 31, 32};
  serial.busy[9] = {5, "Access is denied"};
  EnterLoad();
  EXPECT_EQ(Buttons(), "None,COM3,[COM5],COM31");
  EXPECT_EQ(Comm(), "COM5");
  EXPECT_TRUE(platform.shown.empty());
}

TEST_F(LinkPortTest, ASavedPortThatIsMissingStaysSaved) {
  for (const char* saved : {"7", "-1", "x", "99999999999"}) {
    platform.settings.SaveSetting("frmSerialPort", "CommPort", saved);
    EnterLoad();
    EXPECT_EQ(Buttons(), "[None],COM3,COM5") << saved;
    EXPECT_EQ(Comm(), "No Comm");
    EXPECT_EQ(Saved("CommPort"), saved);
    EXPECT_EQ(Why(), *saved == '7' ? "COM7 is not there" : "");
  }
}

TEST_F(LinkPortTest, ChoosingAPortClosesTheOldOne) {
  Click("optPort(1)");
  EXPECT_EQ(Comm() + " " + Saved("CommPort") + " " + Buttons(), "COM3 3 None,[COM3],COM5");
  Click("optPort(0)");
  EXPECT_EQ(Comm() + " " + Saved("CommPort") + " " + Buttons(), "No Comm -1 [None],COM3,COM5");
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
  EXPECT_EQ(Comm(), "COM3 - Off");
  EXPECT_EQ(Saved("CommPort"), "3");
  serial.busy.clear();
  Click("optPort(1)");  // the guard has fallen
  EXPECT_EQ(Comm(), "COM3");
  // A port that has vanished behind its button: the old one must not come back under its name.
  serial.ports = {3};
  Click("optPort(2)");
  EXPECT_EQ(Comm(), "COM5 - Off");
  EXPECT_EQ(platform.shown.size(), 2U);
}

TEST_F(LinkPortTest, EveryActivationProbesAgain) {
  for (const auto& [port, buttons] : {std::pair{5, "None,[COM5]"}, {3, "[None],COM3"}}) {
    serial.ports = {port};
    Activate();
    EXPECT_EQ(Buttons(), buttons);
    EXPECT_EQ(Comm(), port == 5 ? "COM5" : "No Comm");
    EXPECT_EQ(Saved("CommPort"), "5");
  }
}

TEST_F(LinkPortTest, AnUnpluggedPortIsOffUntilItComesBack) {
  Ports({5, 6});  // another one goes
  EXPECT_EQ(Comm(), "COM5");
  Ports({3});
  EXPECT_EQ(Comm(), "COM5 - Off");
  EXPECT_EQ(Saved("CommPort"), "5");
  Ports({3, 5});
  EXPECT_EQ(Comm(), "COM5");
  Line(1006);  // just opened: not reported
  EXPECT_EQ(link.lblMessage.Caption(), "");

  Ports({3});
  serial.busy[5] = {13, "Permission denied"};
  Ports({3, 5});
  EXPECT_EQ(Comm(), "COM5 - Off");
  EXPECT_EQ(Why(), "COM5: no permission");
  serial.busy.clear();
  RunUntil(1001);  // tried again
  EXPECT_EQ(Comm() + Why(), "COM5");

  Ports({3});
  Activate();
  EXPECT_EQ(Comm(), "No Comm");
  Ports({3, 5});
  EXPECT_EQ(Comm(), "COM5");
  EXPECT_EQ(Buttons(), "None,COM3,[COM5]");
  EXPECT_TRUE(platform.shown.empty());
}

// A saved or chosen port that does not open yet.
TEST_F(LinkPortTest, APortThatIsAwaitedComesUpByItselfAndSaysWhyUntilThen) {
  const struct {
    SerialError error;
    const char* reason;
  } cases[] = {{{16, "Another program is using it."}, "COM5 is in use"},
               {{13, "Permission denied."}, "COM5: no permission"},
               {{17, "A program that has ended left a lock."}, "COM5: stale lock"},
               {{5, "Input/output error"}, "COM5 does not open"}};
  for (const bool chosen : {false, true}) {
    for (const auto& [error, reason] : cases) {
      serial.busy[5] = error;
      if (chosen) {
        Click("optPort(0)");
        Click("optPort(2)");
      } else {
        Activate();
      }
      EXPECT_EQ(Comm(), chosen ? "COM5 - Off" : "No Comm");
      EXPECT_EQ(Why(), reason);
      RunUntil(platform.ClockMs() + 3500);
      EXPECT_EQ(link.lblMessage.Caption(), "COM5 does not open. " + error.description);
      serial.busy.clear();
      RunUntil(platform.ClockMs() + 1001);
      EXPECT_EQ(Comm() + Why() + link.lblMessage.Caption(), "COM5");
      EXPECT_EQ(Buttons(), "None,COM3,[COM5]");
    }
  }
  serial.busy[5] = {16, ""};
  Activate();
  Click("optPort(0)");
  serial.busy.clear();
  RunUntil(platform.ClockMs() + 3000);
  EXPECT_EQ(Comm() + Why(), "No Comm");
}

TEST_F(LinkPortTest, APortChosenMeanwhileStaysChosen) {
  Ports({3});
  Click("optPort(1)");
  Ports({3, 5});
  EXPECT_EQ(Comm(), "COM3");
  Ports({5});
  Click("optPort(0)");
  Ports({3, 5});
  EXPECT_EQ(Comm(), "No Comm");
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
      {1002, "Unexpected error #1002"},
      {1000, "Unexpected error #1000"}};
  for (const auto& [code, text] : cases) {
    Line(code);
    EXPECT_EQ(link.lblMessage.Caption(), text);
  }
  Rx(Bytes(36, 0));               // the bytes owed
  serial.Receive(Frame(254, 1));  // waiting in the port when the error comes
  Line(1004);
  EXPECT_EQ(race.frames.size(), 1U);
}

}  // namespace
}  // namespace quorvane
