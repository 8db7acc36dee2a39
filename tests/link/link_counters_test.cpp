#include "link/link_counters.h"

#include "tests/link/link_fixture.h"

namespace quorvane {
namespace {

using testing_frames::Frame;
using testing_frames::operator+;

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
  const auto hasRate = [&](std::int64_t now, const std::string& rate) {
    return counters.Text(0, now).find(", " + rate + " per second\r") != std::string::npos;
  };
  EXPECT_TRUE(hasRate(0, "0.0"));
  for (int ms = 0; ms < 4000; ms += 100) counters.Good(1, ms);
  for (int i = 0; i < 1000; ++i) counters.Good(1, 4500);  // the running second does not count yet
  EXPECT_TRUE(hasRate(4999, "10.0"));
  EXPECT_TRUE(hasRate(13000, "101.0"));
  EXPECT_TRUE(hasRate(15000, "0.0"));
}

class LinkCountersTest : public LinkTest {
 protected:
  std::string Silent() const {  // the rows that are marked, and what the race shows
    std::string text;
    for (int i = 0; i < 8; ++i) text += link.lblSilent[i].Visible() ? std::to_string(i) : "";
    return text + (race.warning.empty() ? "" : " " + race.warning);
  }
};

TEST_F(LinkCountersTest, EveryByteIsCountedOnceAndCopiedAsText) {
  Bytes damaged = Frame(254, 1);
  damaged[2] ^= 1;
  Click("cmdMore");
  RunUntil(1500);
  Rx(Frame(254, 1) + damaged + Frame(254, 2) + Bytes(37, 9));  // of which one waits
  for (const int code : {1006, 1004, 1001, 1004}) Line(code);
  RunUntil(4000);
  Click("cmdCopyCounters");
  EXPECT_EQ(platform.copied,
            "Good frames: 1, 0.3 per second\nDamaged frames: 1\nBytes skipped: 109\n"
            "Line errors: 1 break, 2 framing, 1 overrun\nFrames sent: 1\n"
            "Station: frames, longest silence\nJudges 1: 0\nJudges 2: 1, 2.5 s\nJudges 3: 0\nStarter: 0\n"
            "Timers: 0\nStation 5: 0\nPylon 1: 0\nDisplay: 0\n");
  Click("cmdCopyMsg");
  EXPECT_EQ(platform.copied.substr(0, 25), "Msg (Laptop -> Judges 1)\n");
  EXPECT_NE(platform.copied.find("\nLap=0,0,0,0\n"), std::string::npos);
}

// In a race some stations do nothing but acknowledge the frames of others, or the console's.
TEST_F(LinkCountersTest, AnAcknowledgementIsASignOfLifeOfWhoeverWasAddressed) {
  Rx(Frame(254, 0) + Frame(254, 1) + Frame(254, 2) + Frame(254, 3) + Frame(254, 5) + Frame(254, 7));
  state.RaceActive = true;
  for (int ms = 4000; ms <= 12000; ms += 4000) {
    RunUntil(ms);
    link.SendMessage(6, 254);
    Rx(Frame(254, 255));              // the pylon box to the console, with the detail panel closed
    Rx(Frame(3, 4) + Frame(4, 255));  // the starter to the timers
    Rx(Frame(2, 255));                // nobody knows who
    Rx(Frame(254, 0) + Frame(254, 1) + Frame(254, 2));
  }
  EXPECT_EQ(Silent(), "57 Silent: 5 DS");
  EXPECT_EQ(link.Counters().FramesFrom(6), 0);
  EXPECT_EQ(link.lblAge[6].Caption() + link.lblAge[3].Caption() + link.lblAge[7].Caption(), "0010");
  Rx(Frame(254, 5));
  EXPECT_EQ(Silent(), "7 Silent: Display");
  state.RaceActive = false;  // between races silence is usual
  RunUntil(13001);
  EXPECT_EQ(Silent(), "");
}

TEST_F(LinkCountersTest, TheWorseTheRadioTheClearerTheWarning) {
  Rx(Frame(254, 0) + Frame(254, 1) + Frame(254, 2) + Frame(254, 3) + Frame(254, 4) + Frame(254, 6));
  state.RaceActive = true;
  RunUntil(2001);  // seen by the link
  const auto after6s = [&](const Bytes& heard) {
    const std::int64_t now = platform.ClockMs();
    RunUntil(now + 3000);
    Rx(heard);
    RunUntil(now + 6000);
    return Silent();
  };
  const Bytes judges = Frame(254, 0) + Frame(254, 1) + Frame(254, 2);
  EXPECT_EQ(after6s(judges + Frame(254, 3) + Frame(254, 4) + Frame(254, 6)), "7 Never heard: Display");
  EXPECT_EQ(after6s(judges), "3467 Silent: ST TM PY, never: DS");
  EXPECT_EQ(after6s({}), "0123467 RADIO SILENT");
  state.RaceDone = true;  // "DNF" in every lane: what was silent before the finish stays named
  EXPECT_EQ(after6s(judges), "3467 Silent: ST TM PY, never: DS");
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
