// The station rows, the polling, the counters, and stations that fall silent.

#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

class LinkStationsTest : public LinkTest {
 protected:
  std::string Polled() const {  // the addressees of what was sent, all from the console
    std::string text;
    for (const Bytes& frame : serial.sent) text += frame[5] == 254 ? std::to_string(frame[4]) : "?";
    return text;
  }
  std::string Silent() const {  // the rows that are marked, and what the race shows
    std::string text;
    for (int i = 0; i < 8; ++i) text += link.lblSilent[i].Visible() ? std::to_string(i) : "";
    return text + (race.warning.empty() ? "" : " " + race.warning);
  }
  static Bytes From(std::initializer_list<int> stations) {
    Bytes bytes;
    for (const int station : stations) bytes = bytes + Frame(254, station);
    return bytes;
  }
};

TEST_F(LinkStationsTest, RawBytesAreShownAsVoltsAndDegrees) {
  const struct {
    std::uint8_t volt, temp;
    const char* shown;
  } cases[] = {{128, 60, "9.4 -0.9"},
               {13, 80, " 89.2"},
               {0, 255, " 878.0"},
               {255, 61, "18.8 3.6"},
               {14, 0, "1.0 -271.3"}};
  for (const auto& c : cases) {
    Rx(Frame(254, 3, {.temperature = c.temp, .voltage = c.volt}));
    EXPECT_EQ(link.lblVolt[3].Caption() + " " + link.lblTemp[3].Caption(), c.shown);
    EXPECT_EQ(link.lblVolt[3].ForeColor(), kButtonText) << "far below the starter's 12.0 V too";
  }
  for (const int from : {8, 16, 254, 255}) Rx(Frame(1, from, {.voltage = 255}));
  for (const int row : {0, 1, 2, 4, 5, 6, 7}) EXPECT_EQ(link.lblAge[row].Tag(), "") << row;
}

TEST_F(LinkStationsTest, AgesCountUpInSecondsAndEndInOff) {
  state.RaceActive = true;
  EXPECT_EQ(link.lblStation[7].Caption() + link.lblStation[5].Caption(), "Display");
  platform.SetClock(123);
  Rx(Frame(254, 1, {.temperature = 80, .voltage = 128}));
  EXPECT_EQ(link.lblAge[1].Caption() + " " + link.lblAge[1].Tag(), "0 123");
  RunUntil(2001);
  EXPECT_EQ(link.lblAge[1].Caption() + link.lblAge[0].Caption(), "1.877Off");
  EXPECT_EQ(link.lblAge[0].ForeColor(), kRed);  // never heard
  for (const bool over : {false, true}) {
    platform.SetClock(over ? 30124 : 30123);
    door.Enter({EventKind::Timer, "frmSerialPort.tmrAging"});
    EXPECT_EQ(link.lblAge[1].ForeColor(), over ? kRed : kButtonText);
    EXPECT_EQ(link.lblAge[1].Caption() + link.lblVolt[1].Caption() + link.lblTemp[1].Caption(),
              over ? "Off" : "309.489.2");
  }
}

TEST_F(LinkStationsTest, StationsArePolledInTurnBetweenRacesAndRedUntilTheyAnswer) {
  RunUntil(4001);
  Rx(Frame(254, 1));
  for (const int station : {0, 1, 2}) {
    EXPECT_EQ(link.lblStation[station].ForeColor(), station == 0 ? kRed : kButtonText);
  }
  RunUntil(18001);
  EXPECT_EQ(Polled(), "012345670");
  Click("lblStation(6)");  // it alone
  EXPECT_EQ(link.cmdStation.Caption() + link.cmdStation.Tag(), "Pylon 16");
  EXPECT_EQ(link.cmdStation.Anchor(), &link.lblStation[6]);
  Rx(Frame(254, 1));
  RunUntil(22001);
  EXPECT_EQ(Polled(), "01234567066");
  EXPECT_EQ(link.lblStation[1].ForeColor(), kRed);  // its turn, though it is not asked
  Click("cmdStation");
  EXPECT_FALSE(link.cmdStation.Visible());
  RunUntil(26001);
  EXPECT_EQ(Polled(), "0123456706612");
  state.RaceActive = true;
  RunUntil(40001);
  EXPECT_EQ(serial.sent.size(), 13U);
}

TEST(LinkCounters, SilenceIsTheLongestGapOrTheOneThatLasts) {
  LinkCounters counters;
  EXPECT_EQ(counters.LongestSilence(2, 9000), 0);
  for (const std::int64_t ms : {1000, 5000, 6000}) counters.Good(2, ms);
  EXPECT_EQ(counters.LongestSilence(2, 6500), 4000);
  counters.Heard(2, 13000);
  EXPECT_EQ(counters.LongestSilence(2, 13000), 7000);
  EXPECT_FALSE(counters.IsSilent(2, 18000, 0));
  EXPECT_TRUE(counters.IsSilent(2, 18001, 0));
  EXPECT_FALSE(counters.IsSilent(2, 19000, 14000));  // the race began later
  EXPECT_TRUE(counters.IsSilent(3, 14001, 9000));    // never heard
}

TEST(LinkCounters, TheRateIsThatOfTheLastWholeSeconds) {
  LinkCounters counters;
  const auto rate = [&](std::int64_t now) {
    const std::string text = counters.Text(0, now);
    return text.substr(0, text.find('\r'));
  };
  EXPECT_EQ(rate(0), "Good frames: 0, 0.0 per second");
  for (int ms = 0; ms < 4000; ms += 100) counters.Good(1, ms);
  for (int i = 0; i < 1000; ++i) counters.Good(1, 4500);  // the running second does not count yet
  EXPECT_EQ(rate(4999), "Good frames: 1040, 10.0 per second");
  EXPECT_EQ(rate(13000), "Good frames: 1040, 101.0 per second");
  EXPECT_EQ(rate(15000), "Good frames: 1040, 0.0 per second");
}

TEST_F(LinkStationsTest, EveryByteIsCountedOnceAndCopiedAsText) {
  Bytes damaged = Frame(254, 1);
  damaged[2] ^= 1;
  RunUntil(1500);
  Rx(Frame(254, 1) + damaged + Frame(254, 2) + Bytes(37, 9));  // of which one waits
  for (const int code : {1006, 1004, 1001, 1004}) Line(code);
  RunUntil(4000);
  Click("cmdMore");
  Click("cmdCopyCounters");
  EXPECT_EQ(platform.copied,
            "Good frames: 1, 0.3 per second\nDamaged frames: 1\nBytes skipped: 109\n"
            "Line errors: 1 break, 2 framing, 1 overrun\nFrames sent: 1\n"
            "Station: frames, longest silence\nJudges 1: 0\nJudges 2: 1, 2.5 s\nJudges 3: 0\nStarter: 0\n"
            "Timers: 0\nStation 5: 0\nPylon 1: 0\nDisplay: 0\n");
}

// In a race some stations do nothing but acknowledge the frames of others, or the console's.
TEST_F(LinkStationsTest, AnAcknowledgementIsASignOfLifeOfWhoeverWasAddressed) {
  Rx(From({0, 1, 2, 3, 5, 7}));
  state.RaceActive = true;
  for (int ms = 4000; ms <= 12000; ms += 4000) {
    RunUntil(ms);
    link.SendMessage(6, 254);
    Rx(Frame(254, 255));              // the pylon box to the console, with the detail panel closed
    Rx(Frame(3, 4) + Frame(4, 255));  // the starter to the timers
    Rx(Frame(2, 255));                // nobody knows who
    Rx(From({0, 1, 2}));
  }
  EXPECT_EQ(Silent(), "57 Silent: 5 DS");
  EXPECT_EQ(link.Counters().FramesFrom(6), 0);
  EXPECT_EQ(link.lblAge[6].Caption() + link.lblAge[3].Caption() + link.lblAge[7].Caption(), "0010");
  Rx(From({5}));
  EXPECT_EQ(Silent(), "7 Silent: Display");
  state.RaceActive = false;  // between races silence is usual
  RunUntil(13001);
  EXPECT_EQ(Silent(), "");
}

TEST_F(LinkStationsTest, TheWorseTheRadioTheClearerTheWarning) {
  Rx(From({0, 1, 2, 3, 4, 6}));
  RunUntil(8000);
  state.RaceActive = true;
  RunUntil(11001);  // seen by the link, which counts from then on
  EXPECT_EQ(Silent(), "");
  const auto after6s = [&](std::initializer_list<int> heard) {
    RunFor(3000);
    Rx(From(heard));
    RunFor(3000);
    return Silent();
  };
  EXPECT_EQ(after6s({0, 1, 2, 3, 4, 6}), "7 Never heard: Display");
  EXPECT_EQ(after6s({0, 1, 2}), "3467 Silent: ST TM PY, never: DS");
  EXPECT_EQ(after6s({}), "0123467 RADIO SILENT");
  state.RaceDone = true;  // "DNF" in every lane: what was silent before the finish stays named
  EXPECT_EQ(after6s({0, 1, 2}), "3467 Silent: ST TM PY, never: DS");
  EXPECT_EQ(after6s({}), "3467 Silent: ST TM PY, never: DS");
  state.RaceActive = false;
  EXPECT_EQ(after6s({}), "");
  Click("optPort(0)");  // flown without a radio
  state.RaceDone = false;
  state.RaceActive = true;
  EXPECT_EQ(after6s({}), "");
}

}  // namespace
}  // namespace quorvane
