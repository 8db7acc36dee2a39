#include <gtest/gtest.h>

#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

class Stations : public testing::Test {
 protected:
  Stations() : rig(true) { rig.Load(); }

  // A race that the starter runs, counted down; its clock is the console clock from here on.
  void CountDown() {
    rig.Starter(0, true);
    for (int ms = 500; ms <= 60000; ms += 500) {
      rig.At(ms);
      rig.Starter(ms, true);
    }
  }
  void Timers(int lane, int laps, int lit = 100) { rig.Receive(Frame(4, 3, 1).Lane(lane, laps, lit)); }

  ConsoleRig rig;
};

TEST_F(Stations, RaceTimeIsTheTimeSinceTheSignalWheneverTheStarterIsFirstHeard) {
  // After another race, whose clock stands elsewhere, as well as after the start of the program.
  std::int64_t now = 100;
  for (const int first : {0, 2000, 31000, 57000, 60000, 62000, 95000, 62000}) {
    SCOPED_TRACE(first);
    rig.At(now);
    rig.Receive(Frame(3, 6, first + 40).With(3, 1).With(28, 6).With(33, 40));
    EXPECT_EQ(rig.judge().lblStatus.Caption(),
              first < 60000 ? std::to_string(60 - first / 1000) : std::to_string(first / 1000 - 60) + ".0");
    const std::int64_t signal = now - first + 60000;
    const std::int64_t lap = std::max(now, signal) + 9000;
    for (; now < lap; now += 500) rig.At(now);
    rig.At(lap);
    Timers(2, 1);
    ASSERT_TRUE(rig.judge().RaceBeingFlown());
    ASSERT_EQ(rig.lane(2).EventCount(), 1);
    EXPECT_EQ(rig.lane(2).Events()[0].EventTime, lap - signal);
    EXPECT_EQ(rig.lane(0).Events().CountLaps(), 0);
    Timers(1, 1);
    EXPECT_EQ(rig.lane(1).Events()[0].EventTime, lap - signal - 2000);  // the stagger of FAI 312
    rig.Starter(static_cast<int>(lap - signal) + 60000, false, 6);
    EXPECT_NE(rig.Value("Race" + std::to_string(rig.race().RaceNumber - 1), "Timestamp"), "-");
    now = lap + 5000;
  }
}

TEST_F(Stations, ACountOfWhichTheRestIsLostStartsNoFalseClock) {
  // The count is held or begun anew while nothing is heard of it. `at`: when the signal really is.
  const struct {
    int heard, at, clock;  // of the last and the next frame that are heard
  } kCases[] = {{55000, 63000, 61000},
                {55000, 85000, 61000},
                {58900, 85000, 60200},
                {55000, 110000, 40000},
                {55000, 180000, 5000}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.at);
    const std::int64_t now = rig.platform.ClockMs();
    const int race = rig.race().RaceNumber;
    rig.Starter(0, true);
    rig.At(now + c.heard);
    rig.Starter(c.heard, true);
    rig.At(now + c.at - 60000 + c.clock);
    rig.Starter(c.clock, true);
    rig.At(now + c.at + 8000);
    Timers(0, 1);
    ASSERT_EQ(rig.lane(0).EventCount(), 1);
    EXPECT_EQ(rig.lane(0).Events()[0].EventTime, 8000);
    rig.Starter(70000, false);
    EXPECT_EQ(rig.race().RaceNumber, race + 1);
  }
}

TEST_F(Stations, LapsMoveWithAClockThatWasWrong) {
  // `late`: the hold that was not heard, or the time by which a frame came late over the signal.
  const struct {
    int late, first;  // console time of the first lap
    bool stall;
    const char* notice;
  } kCases[] = {
      {3000, 72000, false, "The clock was 3.00 s off the starter's: the laps so far are shortened by it"},
      {-3000, 69000, true, "The clock was 3.00 s off the starter's: the laps so far are lengthened by it"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.late);
    const std::int64_t now = rig.platform.ClockMs();
    const std::string race = "Race" + std::to_string(rig.race().RaceNumber);
    rig.Starter(0, true);
    rig.At(now + 59500);
    rig.Starter(59500, true);
    const int signal = c.stall ? 60000 : 60000 + c.late;
    if (c.stall) {
      rig.At(now + 63500);
      rig.Starter(60500, true);
    }
    rig.At(now + c.first);
    Timers(0, 1);
    rig.Receive(Frame(0, 6, 1).Lane(0, 0, 50));
    for (const int ms : {500, 1000}) {
      rig.At(now + c.first + ms);
      rig.Starter(c.first + ms + 60000 - signal, true);
    }
    EXPECT_EQ(rig.lane(0).Events()[0].EventTime, c.first - signal);
    EXPECT_EQ(rig.lane(0).Events()[1].EventTime, c.first - signal);
    EXPECT_EQ(rig.lane(0).lblLap[0].Caption(), "9.00");
    EXPECT_EQ(rig.judge().lblNotice.Caption(), c.notice);
    // A frame that is late, or one that is damaged, moves nothing any more.
    for (const int clock : {69000, 90000, 69500}) rig.Starter(clock, true);
    rig.At(now + signal + 18000);
    Timers(0, 2);
    EXPECT_EQ(rig.lane(0).Events()[2].EventTime, 18000);
    rig.Starter(78000, false);
    EXPECT_EQ(rig.Value(race + "_Lane1", "Laps").substr(0, 11), "9.00,18.00,");
  }
}

TEST_F(Stations, AHoldThatShowsAfterTheFinishStillMovesTheLapsAndTheResult) {
  rig.Starter(59500, true);
  for (int lap = 1; lap <= 10; ++lap) {
    rig.At(20500 + lap * 9000);  // the signal was 20 s late
    Timers(0, lap);
  }
  rig.At(160500);
  ASSERT_TRUE(rig.race().RaceDone);
  rig.Starter(200000, true);
  EXPECT_EQ(rig.lane(0).lblStatus.Caption(), "First");
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(rig.Value("Race1_Lane1", "Time"), "90.00");
  EXPECT_EQ(rig.Value("Race1_Lane1", "Laps").substr(0, 11), "9.00,18.00,");
}

TEST_F(Stations, ARunningStarterIsJoinedWhenItsSignalIsLaterThanTheLastRace) {
  const struct {
    bool byHand, save;
    int clock;  // of the starter, 30 s after the end of the last race
    bool joins;
  } kCases[] = {{true, true, 90001, false},  {true, true, 89999, true},   {true, false, 90001, false},
                {false, true, 90001, false}, {false, false, 89999, true}, {false, true, 89999, true}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.clock);
    const std::int64_t now = rig.platform.ClockMs();
    if (c.byHand) {
      rig.Click("frmJudge.cmdStart");
    } else {
      rig.Receive(Frame(3, 6, 61000).With(3, 1).With(11, 1));
    }
    if (c.save) {
      rig.At(now + 40000);
      rig.Click("frmJudge.cmdSave");
    } else {
      rig.Answer(Word::No);
      rig.Click("frmJudge.cmdReset");
    }
    rig.At(rig.platform.ClockMs() + 30000);
    rig.Receive(Frame(3, 6, c.clock).With(3, 1).With(11, 1));
    EXPECT_EQ(rig.race().RaceActive, c.joins);
    // A light that burned in the last race is a cut in this one.
    ASSERT_EQ(rig.lane(0).EventCount(), c.joins ? 1 : 0);
    if (c.joins) {
      EXPECT_EQ(rig.lane(0).Events()[0].EventTime, c.clock - 60000);
    }
    rig.Starter(0, false);
    EXPECT_FALSE(rig.race().RaceActive);
  }
}

TEST_F(Stations, LapsAreCountedOncePerReport) {
  CountDown();
  rig.At(66000);
  Timers(1, 1, 0);  // not lit: no report
  EXPECT_EQ(rig.lane(1).Laps(), 0);
  Timers(1, 1);
  Timers(1, 1);
  EXPECT_EQ(rig.lane(1).Laps(), 1);
  EXPECT_EQ(rig.lane(1).Events()[0].EventTime, 6000);
  Timers(1, 2);  // locked out
  EXPECT_EQ(rig.lane(1).Laps(), 1);
  rig.At(66801);
  Timers(1, 2);
  EXPECT_EQ(rig.lane(1).Laps(), 2);
  rig.Receive(Frame(255, 4, 1).Lane(2, 1, 50));  // an acknowledgement carries laps too
  EXPECT_EQ(rig.lane(2).Laps(), 1);
  rig.Receive(Frame(4, 254, 1).Lane(3, 1, 50));  // addressed to the console: not dispatched
  EXPECT_EQ(rig.lane(3).Laps(), 0);
}

TEST_F(Stations, AFullLogCostsNoOtherLaneItsEntries) {
  CountDown();
  rig.At(66000);
  while (rig.lane(0).EventCount() < LaneLog::kSlots) rig.lane(0).DoTurn(4, 66000, 1);
  rig.At(66010);
  rig.Receive(Frame(4, 3, 1).Lane(0, 1, 50).Lane(1, 1, 50));
  EXPECT_EQ(rig.lane(1).Laps(), 1);
  rig.Receive(Frame(0, 6, 1).Lane(0, 0, 50).Lane(1, 0, 50));
  EXPECT_EQ(rig.lane(1).EventCount(), 2);
  rig.Receive(Frame(3, 6, 66010).With(3, 1).With(11, 0x01).With(12, 0x01));
  EXPECT_EQ(rig.lane(1).EventCount(), 3);
  EXPECT_EQ(rig.lane(0).EventCount(), LaneLog::kSlots);
  EXPECT_EQ(rig.judge().lblNotice.Caption(), "Lane 1 takes no more entries: its log is full");
}

TEST_F(Stations, CutsAreWhatChangedInTheStartersByte) {
  CountDown();
  rig.At(66000);
  rig.Receive(Frame(3, 6, 66000).With(3, 1).With(12, 0x01));
  ASSERT_EQ(rig.lane(1).EventCount(), 1);
  EXPECT_EQ(rig.lane(1).Events()[0].SourceName, "P1");
  rig.At(66500);
  rig.Receive(Frame(3, 6, 66500).With(3, 1).With(12, 0x05));
  ASSERT_EQ(rig.lane(1).EventCount(), 2);
  EXPECT_EQ(rig.lane(1).Events()[1].SourceName, "P2");
  EXPECT_EQ(rig.lane(1).lblStatus.Caption(), "DBL CUT");
  rig.At(67000);
  rig.Receive(Frame(3, 6, 67000).With(3, 1).With(12, 0x04));
  EXPECT_EQ(rig.lane(1).Events()[0].Kind, "-C");
  EXPECT_EQ(rig.lane(1).CutCount(), 1);
}

TEST_F(Stations, AFrameWhoseCutsAreNotLookedAtHidesNone) {
  rig.Starter(0, true);
  rig.At(59000);
  rig.Receive(Frame(3, 6, 59000).With(3, 1).With(11, 0x01));  // before the signal there are no cuts
  const struct { int to, buttons, cuts; } kFrames[] = {{6, 0, 0x01}, {254, 0, 0x05}, {6, 16, 0x05}};
  rig.At(66000);
  for (const auto& f : kFrames) {
    rig.Receive(Frame(3, f.to, 66000).With(3, 1).With(18, f.buttons).With(11, 0x01).With(12, f.cuts));
  }
  EXPECT_EQ(rig.lane(1).EventCount(), 1);
  rig.At(66500);
  rig.Receive(Frame(3, 6, 66500).With(3, 1).With(11, 0x01).With(12, 0x05));
  EXPECT_EQ(rig.lane(0).EventCount(), 0);
  ASSERT_EQ(rig.lane(1).EventCount(), 2);
  EXPECT_EQ(rig.lane(1).Events()[1].EventTime, 6500);
}

TEST_F(Stations, HoldHoldsOnlyInItsSixSeconds) {
  const struct {
    int clock;
    bool holds;
  } kCases[] = {{53999, false}, {54000, true}, {59999, true}, {60000, false}};
  rig.Starter(40000, true);
  for (const auto& c : kCases) {
    rig.Receive(Frame(3, 6, c.clock).With(3, 1).With(18, 16));
    EXPECT_EQ(rig.race().RaceHolding, c.holds) << c.clock;
    EXPECT_EQ(rig.judge().lblRaceMode.Caption(), "Hold");
    EXPECT_EQ(rig.judge().lblStatus.Caption() == "Holding", c.holds) << c.clock;
  }
}

TEST_F(Stations, AStarterThatStartsAnewLosesNoRaceThatHasBeenFlown) {
  struct Case {
    int running;  // the last clock of the old race
    bool lap;
    int clock;  // of the frame after it
    bool runs;
    bool saved;
    bool flown;  // a race is, after that
  };
  const Case kCases[] = {
      {64000, false, 0, false, false, false},     {65001, false, 0, false, true, false},
      {65000, false, 65000, false, false, false}, {65000, false, 65001, false, true, false},
      {64000, true, 0, false, true, false},       {70000, false, 500, true, true, true},
      {64000, true, 500, true, true, true},       {40000, false, 500, true, false, true},
      {95000, false, 61000, true, true, true},    {60400, false, 59400, true, false, true},
      {60400, false, 59399, true, false, true},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(std::to_string(c.running) + " then " + std::to_string(c.clock));
    const std::string race = "Race" + std::to_string(rig.race().RaceNumber);
    const std::int64_t now = rig.platform.ClockMs();
    rig.Starter(0, true);
    rig.Type("frmJudge.txtComments", "windy");
    rig.At(now + c.running);
    rig.Starter(c.running, true);
    if (c.lap) rig.At(now + 66000), Timers(0, 1);
    rig.Starter(c.clock, c.runs);
    EXPECT_EQ(rig.Value(race, "Timestamp") != "-", c.saved);
    EXPECT_EQ(rig.judge().RaceBeingFlown(), c.flown);
    EXPECT_EQ(rig.judge().txtComments.Text(), c.saved ? "No comments" : "windy");
    EXPECT_EQ(rig.judge().cmdStart.Enabled(), !c.flown);
    if (c.flown) {
      EXPECT_EQ(rig.program.clock().RaceTime(), c.clock);
    }
    rig.At(rig.platform.ClockMs() + 500);
    rig.Starter(c.runs ? c.clock + 500 : 0, false);
  }
}

TEST_F(Stations, ACountLeavesARaceThatIsFlownByHandAlone) {
  for (const bool count : {false, true}) {
    SCOPED_TRACE(count);
    const std::int64_t now = rig.platform.ClockMs();
    const std::string race = "Race" + std::to_string(rig.race().RaceNumber);
    if (count) rig.Click("frmJudge.chkSixtySecondCount");
    rig.Click("frmJudge.cmdStart");
    if (count) {  // before the signal its clock is the starter's
      rig.At(now + 1000);
      rig.Starter(31000, true);
      EXPECT_EQ(rig.program.clock().RaceTime(), 31000);
    }
    const std::int64_t signal = now + (count ? 30000 : 0);
    rig.At(signal + 8000);
    for (int ms = 10000; ms < 12000; ms += 500) {
      rig.At(signal + ms);
      rig.Starter(ms, true, 5);
    }
    EXPECT_EQ(rig.judge().lblNotice.Caption(),
              "The starter is counting. The race started by hand keeps its own clock");
    EXPECT_TRUE(rig.judge().lblNotice.Visible());
    EXPECT_EQ(rig.race().RaceMode, 2);
    Timers(0, 1);
    EXPECT_EQ(rig.lane(0).Events()[0].EventTime, 11500);
    rig.At(signal + 42000);
    ASSERT_TRUE(rig.race().RaceDone);
    rig.Starter(42000, true);  // the count goes on: it is that of the next race
    EXPECT_NE(rig.Value(race, "Timestamp"), "-");
    EXPECT_FALSE(rig.judge().lblNotice.Visible());
    EXPECT_TRUE(rig.judge().RaceBeingFlown());
    EXPECT_EQ(rig.program.clock().RaceTime(), 42000);
    rig.Starter(42500, false);
  }
}

TEST_F(Stations, AFinishedRaceIsSavedByTheNextCountButNotByAFrameHeldUp) {
  for (const auto& [clock, saved] : {std::pair{59400, false}, {59399, true}}) {
    rig.Click("frmJudge.cmdStart");
    rig.At(rig.platform.ClockMs() + 6000);
    Timers(0, 1);
    rig.At(rig.platform.ClockMs() + 40000);
    ASSERT_TRUE(rig.race().RaceDone);
    const std::string race = "Race" + std::to_string(rig.race().RaceNumber);
    rig.Starter(60400, true);
    rig.Starter(clock, true);
    EXPECT_EQ(rig.Value(race, "Timestamp") != "-", saved) << clock;
    rig.Starter(0, false);
  }
  for (const auto& [late, saved] : {std::pair{20000, false}, {60001, true}}) {
    const std::int64_t now = rig.platform.ClockMs();
    const std::string race = "Race" + std::to_string(rig.race().RaceNumber);
    rig.Starter(59000, true);
    rig.At(now + 2000);
    rig.Starter(61000, true);
    rig.At(now + 70000);
    ASSERT_TRUE(rig.race().RaceDone);
    rig.Starter(129000 - late, true);
    EXPECT_EQ(rig.Value(race, "Timestamp") != "-", saved) << late;
    rig.Starter(70000, false);
  }
}

TEST_F(Stations, ALateLapIsNotThatOfTheNextRace) {
  rig.Click("frmJudge.cmdStart");
  rig.At(40000);
  rig.Receive(Frame(6, 3, 1));
  rig.Click("frmJudge.cmdSave");
  rig.At(70000);
  Timers(0, 1);
  rig.lane(1).DoLap(70000, 4000);
  EXPECT_EQ(rig.lane(0).EventCount(), 0);
  for (const Control* cell : rig.lane(1).lblLap) EXPECT_NE(cell->Caption(), "DNF");
  EXPECT_NE(rig.lane(1).lblStatus.Caption(), "DNF");
}

TEST_F(Stations, AnIdlingStarterAsksOnceAboutARaceStartedByHand) {
  rig.Click("frmJudge.cmdStart");
  const std::size_t boxes = rig.platform.shown.size();
  rig.At(5000);
  rig.Answer(Word::Cancel);
  rig.Starter(20000, false);
  EXPECT_EQ(rig.platform.shown.size(), boxes + 1);
  EXPECT_EQ(rig.LastBox(), "Reset Race");
  rig.Starter(20500, false);
  rig.Starter(70000, false);
  EXPECT_EQ(rig.platform.shown.size(), boxes + 1);
  EXPECT_TRUE(rig.judge().RaceBeingFlown());
  rig.Starter(21000, true);  // it runs after all, and stops
  rig.Answer(Word::No);
  rig.Starter(21500, false);
  EXPECT_EQ(rig.platform.shown.size(), boxes + 2);
  EXPECT_FALSE(rig.race().RaceActive);
}

TEST_F(Stations, AnIdlingStarterLeavesAFinishedRaceByHandToTheOperator) {
  for (const bool flown : {false, true}) {  // not: the start was a mistake
    const std::int64_t now = rig.platform.ClockMs();
    rig.Click("frmJudge.cmdStart");
    rig.At(now + 6000);
    if (flown) Timers(0, 1);
    rig.At(now + 40000);
    ASSERT_TRUE(rig.race().RaceDone);
    for (const int clock : {20000, 70000}) rig.Starter(clock, false);
    EXPECT_EQ(rig.race().RaceNumber, 1);
    EXPECT_TRUE(rig.judge().cmdSave.Enabled());
    rig.Starter(500, true);  // but a new count saves it
    EXPECT_EQ(rig.Value("Race1", "Timestamp") != "-", flown);
    EXPECT_TRUE(rig.judge().RaceBeingFlown());
    rig.Starter(600, false);
  }
}

TEST_F(Stations, SendersLanesAndModesOutOfRangeChangeNothing) {
  CountDown();
  rig.At(66000);
  for (int from = 0; from < 256; ++from) {
    for (const int to : {0, 6, 254, 255}) {
      rig.Receive(Frame(from, to, 0xFFFFFF).With(3, 255).With(28, 255).With(33, 255).With(18, 255));
    }
  }
  EXPECT_EQ(rig.program.door().ErrorsContained(), 0);
  EXPECT_EQ(rig.race().RaceMode, 2);
  EXPECT_EQ(rig.race().RaceNumber, 1);
  rig.Starter(67000, true, 255);
  EXPECT_EQ(rig.race().RaceMode, 6);
}

TEST_F(Stations, AnEntryAfterTheFinishDoesNotReopenTheRace) {
  for (const bool operatorResets : {true, false}) {
    SCOPED_TRACE(operatorResets);
    const std::string race = "Race" + std::to_string(rig.race().RaceNumber);
    const std::int64_t start = rig.platform.ClockMs();
    if (operatorResets) {
      rig.Starter(0, true);
    } else {
      rig.Click("frmJudge.cmdStart");
    }
    rig.At(start + 95000);
    ASSERT_TRUE(rig.race().RaceDone);
    rig.lane(1).cmdLap_Click();
    ASSERT_EQ(rig.lane(1).EventCount(), 1);
    const std::size_t boxes = rig.platform.shown.size();
    if (operatorResets) {
      rig.Click("frmJudge.cmdReset");
    } else {
      rig.Starter(62000, true);  // it has been running too, and stops
      rig.Starter(100, false);
    }
    EXPECT_EQ(rig.platform.shown.size(), boxes);
    EXPECT_EQ(rig.Value(race + "_Lane2", "NumEvents"), "1");
  }
}

TEST_F(Stations, AnAnswerToTheStartersQuestionLeavesTheNextRaceAlone) {
  rig.Click("frmJudge.cmdStart");
  rig.At(5000);
  rig.platform.whileOpen = [&](const DialogBox&) {
    rig.Starter(61000, true);  // takes the race over, ends it and starts the next one
    rig.Starter(70000, false);
    rig.Starter(500, true);
  };
  rig.Answer(Word::No);
  rig.Starter(20000, false);
  rig.platform.whileOpen = {};
  EXPECT_EQ(rig.race().RaceNumber, 2);
  EXPECT_TRUE(rig.judge().RaceBeingFlown());
}

TEST_F(Stations, AFinishedRaceIsSavedUnderItsOwnModeWhenTheNextCountBegins) {
  CountDown();
  rig.At(95000);
  ASSERT_TRUE(rig.race().RaceDone);
  rig.Starter(500, true, 4);
  EXPECT_EQ(rig.Value("Race1", "RaceMode"), "2, AMA 1324");
  EXPECT_EQ(rig.race().RaceMode, 4);
  EXPECT_EQ(rig.race().RaceNumber, 2);
  EXPECT_EQ(rig.lane(1).TimeBase(), -1000 - 60000);
}

TEST_F(Stations, AHoldLeavesNothingOverARaceByHand) {
  rig.Receive(Frame(3, 6, 55000).With(18, 16));  // the starter falls silent in hold
  EXPECT_EQ(rig.judge().lblRaceMode.Caption(), "Hold");
  EXPECT_EQ(rig.judge().lblStatus.Caption(), "Holding");
  rig.Click("frmJudge.cmdStart");
  EXPECT_EQ(rig.judge().lblRaceMode.Caption(), "AMA 1324");
  rig.At(2000);
  EXPECT_EQ(rig.judge().lblStatus.BackColor(), kWhite);
  rig.Answer(Word::Cancel);
  rig.Receive(Frame(3, 6, 20000).With(18, 16));  // it idles, its hold button pressed
  rig.At(2200);
  EXPECT_FALSE(rig.race().RaceHolding);
  EXPECT_EQ(rig.judge().lblStatus.BackColor(), kWhite);
}

}  // namespace
}  // namespace quorvane
