#include "link/link_counters.h"

#include "common/run_time_error.h"
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
  EXPECT_EQ(counters.LongestSilence(2, 12000), 6000);
  counters.Heard(2, 13000);
  EXPECT_EQ(counters.LongestSilence(2, 13000), 7000);
  EXPECT_EQ(counters.FramesFrom(2), 3);
}

TEST(LinkCounters, AStationIsSilentOnlyAfterMoreThanFiveSecondsAndOnceHeard) {
  LinkCounters counters;
  counters.Good(2, 1000);
  EXPECT_FALSE(counters.IsSilent(2, 6000, 0));
  EXPECT_TRUE(counters.IsSilent(2, 6001, 0));
  EXPECT_FALSE(counters.IsSilent(2, 9000, 4000));  // the race began later
  EXPECT_TRUE(counters.IsSilent(2, 9001, 4000));
  EXPECT_FALSE(counters.IsSilent(3, 99000, 0));
}

TEST(LinkCounters, TheRateIsThatOfTheLastWholeSeconds) {
  LinkCounters counters;
  const auto rate = [&](std::int64_t now) {
    const std::string text = counters.Text(0, now);
    const std::string label = "Frames per second: ";
    const std::size_t at = text.find(label) + label.size();
    return text.substr(at, text.find('\r', at) - at);
  };
  EXPECT_EQ(rate(0), "0.0");
  for (int ms = 0; ms < 4000; ms += 100) counters.Good(1, ms);
  EXPECT_EQ(rate(4000), "10.0");
  for (int i = 0; i < 1000; ++i) counters.Good(1, 4500);  // the running second does not count yet
  EXPECT_EQ(rate(4999), "10.0");
  EXPECT_EQ(rate(13000), "101.0");
  EXPECT_EQ(rate(15000), "0.0");
}

class LinkCountersTest : public LinkTest {
 protected:
  LinkCountersTest() { EnterLoad(); }
  std::vector<int> Silent() const {
    std::vector<int> rows;
    for (int i = 0; i < 8; ++i) {
      if (link.lblSilent[i].Visible()) rows.push_back(i);
    }
    return rows;
  }
};

TEST_F(LinkCountersTest, EveryByteIsCountedOnce) {
  Bytes damaged = Frame(254, 1);
  damaged[2] ^= 1;
  Rx(Frame(254, 1) + damaged + Frame(254, 2) + Frame(254, 4) + Bytes{0x55, 0xAA});
  link.SendMessage(6, 254);
  EXPECT_EQ(link.Counters().GoodFrames(), 2);
  EXPECT_EQ(link.Counters().DamagedFrames(), 1);
  EXPECT_EQ(link.Counters().FramesSent(), 1);
  EXPECT_EQ(link.Counters().BytesSkipped(2), 72);
}

TEST_F(LinkCountersTest, CountersAndMessageAreCopiedAsText) {
  Click("cmdMore");
  RunUntil(1500);
  Rx(Frame(254, 1) + Bytes(37, 9));
  RunUntil(4000);
  Click("cmdCopyCounters");
  EXPECT_EQ(platform.copied,
            "Good frames: 1\nFrames per second: 0.3\nDamaged frames: 0\nBytes skipped: 37\nFrames sent: 1\n"
            "Station: frames, longest silence\nJudges 1: 0\nJudges 2: 1, 2.5 s\nJudges 3: 0\nStarter: 0\n"
            "Timers: 0\nStation 5: 0\nPylon 1: 0\nDisplay: 0\n");
  Click("cmdCopyMsg");
  EXPECT_EQ(platform.copied.substr(0, 25), "Msg (Laptop -> Judges 1)\n");
  EXPECT_NE(platform.copied.find("\nLap=0,0,0,0\n"), std::string::npos);
}

TEST_F(LinkCountersTest, AStationThatFallsSilentDuringARaceIsMarkedUntilItSpeaks) {
  Rx(Frame(254, 1) + Frame(254, 2));
  RunUntil(20000);
  EXPECT_TRUE(Silent().empty());  // between races silence is usual

  state.RaceActive = true;
  Rx(Frame(254, 3));  // the race is seen at 20000
  RunUntil(25001);
  EXPECT_TRUE(Silent().empty());
  Rx(Frame(254, 1));
  RunUntil(25501);
  EXPECT_EQ(Silent(), (std::vector<int>{2, 3}));
  EXPECT_TRUE(race.lblSilent.Visible());
  EXPECT_EQ(race.lblSilent.Caption(), "Silent: Judges 3, Starter");
  EXPECT_EQ(link.lblStation[2].Caption(), "Judges 3");

  Rx(Frame(254, 3));
  EXPECT_EQ(Silent(), std::vector<int>{2});
  EXPECT_EQ(race.lblSilent.Caption(), "Silent: Judges 3");

  state.RaceActive = false;
  RunUntil(26001);
  EXPECT_TRUE(Silent().empty());
  EXPECT_FALSE(race.lblSilent.Visible());
  EXPECT_FALSE(link.tmrSilence.Enabled());
}

// In a race some stations do nothing but acknowledge the frames of others, or the console's.
TEST_F(LinkCountersTest, AnAcknowledgementIsASignOfLifeOfWhoeverWasAddressed) {
  Rx(Frame(254, 3) + Frame(254, 5) + Frame(254, 6) + Frame(254, 7));
  state.RaceActive = true;
  for (int ms = 4000; ms <= 12000; ms += 4000) {
    RunUntil(ms);
    link.SendMessage(6, 254);
    Rx(Frame(254, 255));              // the pylon box to the console
    Rx(Frame(3, 4) + Frame(4, 255));  // the starter to the timers
    Rx(Frame(2, 255));                // nobody knows who
  }
  EXPECT_EQ(Silent(), (std::vector<int>{5, 7}));
  EXPECT_EQ(race.lblSilent.Caption(), "Silent: Station 5, Display");
  EXPECT_EQ(link.Counters().LongestSilence(6, 12000), 4000);
  EXPECT_EQ(link.Counters().FramesFrom(6), 1);
}

}  // namespace
}  // namespace quorvane
