// Races and contests read from a project file that may say anything.

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "records/project.h"
#include "results/results_words.h"
#include "tests/results/results_book.h"

namespace quorvane {
namespace {

// "3 REFLY 2; 3 reflown by Refly 2": the flights in the order of the contest.
std::string Flights(const ContestRecord& contest) {
  std::string text;
  for (const RaceRecord& race : contest.races) {
    text += (text.empty() ? "" : "; ") + std::to_string(race.number);
    if (race.refly != 0) text += " REFLY " + std::to_string(race.refly);
    if (!race.stands) text += " " + RepeatedNote(race);
  }
  return text;
}

TEST(Reading, EveryRaceIsFoundWhateverHolesThereAre) {
  Book book;
  for (const int race : {1, 2, 700, 32767}) book.Flight("Race" + std::to_string(race), race);
  book.Flight("Race0", 1).Flight("Race32768", 1).Flight("Race-1", 1);
  book.Set("Race5", "Timestamp", "0").Set("Race6", "Timestamp", "-3").Set("Race7", "Timestamp", "never");
  EXPECT_EQ(Flights(book.Contest()), "1; 2; 700; 32767");
}

TEST(Reading, AReflyStandsInThePlaceOfTheRaceItRepeats) {
  const std::tuple<std::string, int, std::string> cases[] = {
      {"", 0, "3"},
      {"1 (index to refly entry for this race", 1, "3 REFLY 1; 3 reflown by Refly 1"},
      {"2", 2, "3 REFLY 2; 3 reflown by Refly 2; 3 REFLY 1 reflown by Refly 2"},
      {"9", 0, "3"},  // not there
      {"", 1, "3; 3 REFLY 1 does not count"},
      {"x", 0, "3"},
      {"1e300", 0, "3"},
      {"-1", 0, "3"},
  };
  for (const auto& [reflyId, reflysRun, flights] : cases) {
    Book book;
    book.Flight("Race3", 3).Set("Race3", "ReflyID", reflyId);
    book.Set("Current", "NumberReflys", std::to_string(reflysRun));
    for (int i = 1; i <= reflysRun; ++i) book.Flight("Refly" + std::to_string(i), 3);
    EXPECT_EQ(Flights(book.Contest()), flights) << reflyId;
    EXPECT_EQ(ReadRace(book.Source(), 3).refly, book.Contest().races[0].refly) << reflyId;
  }
}

TEST(Reading, RoundAndHeatAreThoseOfTheFlight) {
  Book book;
  book.Set("Current", "HeatsPerRound", "4");
  for (const auto& [text, round, heat] : {std::tuple{"6 (h=3, r=9)", 9, 3},
                                          {"6 (h=3", 2, 2},
                                          {"", 2, 2},
                                          {"h=0, r=1", 2, 2},
                                          {"h=99999, r=1", 2, 2}}) {
    book.Flight("Race6", 6).Set("Race6", "CurrentRace", text);
    const RaceRecord race = ReadRace(book.Source(), 6);
    EXPECT_EQ(race.round, round) << text;
    EXPECT_EQ(race.heat, heat) << text;
  }
  const RaceRecord blank = ReadRace(book.Source(), 7);
  EXPECT_FALSE(blank.hasRun);
  EXPECT_EQ(blank.round, 2);
  EXPECT_EQ(blank.heat, 3);
}

TEST(Reading, TheDateIsTheOneThatWasSaved) {
  for (const LocalDateTime& when : {LocalDateTime{2024, 2, 29, 23, 59, 59}, {2100, 3, 1, 12, 34, 56}}) {
    Book book;
    book.Flight("Race1", 1).Set("Race1", "Timestamp", TimestampText(when));
    EXPECT_EQ(ReadRace(book.Source(), 1).when, when) << TimestampText(when);
  }
  for (const char* serial : {"1e300", "2958466"}) {
    Book book;
    book.Flight("Race1", 1).Set("Race1", "Timestamp", serial);
    EXPECT_EQ(IsoDate(ReadRace(book.Source(), 1).when, ' '), "9999-12-31 23:59:59") << serial;
  }
}

TEST(Reading, ALanesResultIsReplayedFromItsLog) {
  const std::vector<std::string> ten = Laps(10, 7000);
  const std::tuple<int, std::vector<std::string>, std::int32_t, int, std::size_t, std::string> cases[] = {
      // Mode, log, final time, lap target, laps flown, number and split of the fastest.
      {2, ten, 70000, 10, 10, "1 7000"},
      {2, With({Cut(0, 1, 3000)}, Laps(11, 7000)), 77000, 11, 11, "1 7000"},
      {2, With({Cut(0, 1, 3000)}, ten), 1000000, 11, 10, "1 7000"},
      {2, With({Cut(0, 1, 3000), Cut(0, 2, 4000)}, Laps(11, 7000)), 1000000, 11, 11, "1 7000"},
      {2, With(ten, {Cut(10, 1, 71000), Lap(11, 71500)}), 70000, 10, 10, "1 7000"},
      {4, With({Cut(0, 1, 3000)}, ten), 70000, 10, 10, "1 7000"},  // FAI
      {4, With({Cut(0, 1, 3000), Cut(0, 1, 4000)}, ten), 1000000, 10, 10, "1 7000"},
      {2, With({"0,0,-C,P1,3500,3000"}, ten), 70000, 10, 10, "1 7000"},            // withdrawn
      {2, {Lap(1, 9000), Lap(2, 9000), Lap(3, 15000)}, 1000000, 10, 2, "2 6000"},  // a novice's free lap
      {2, {Lap(2, 15000), Lap(1, 9000)}, 1000000, 10, 2, "2 6000"},
      {2, {Lap(1, 9000), Lap(3, 21000)}, 1000000, 10, 2, "1 9000"},
      {2, {Lap(1, 9000), Lap(2, -2000000000)}, 1000000, 10, 2, "1 9000"},
      {2, {"L", "", "1,4,L,TM,x", "300,4,L,TM,5,0", "1,4,L,TM,99999999999,0"}, 1000000, 10, 0, ""},
  };
  for (const auto& [mode, events, final, target, laps, fastest] : cases) {
    SCOPED_TRACE(testing::PrintToString(events));
    Book book;
    book.Flight("Race1", 1, mode).Lane("Race1", 2, events);
    const LaneRecord lane = ReadRace(book.Source(), 1).lanes[1];
    EXPECT_EQ(lane.final, final);
    EXPECT_EQ(lane.lapTarget, target);
    EXPECT_EQ(FlownLaps(lane).size(), laps);
    const auto best = FastestLap(lane);
    EXPECT_EQ(best ? std::to_string(best->number) + " " + std::to_string(*best->split) : "", fastest);
  }
}

TEST(Reading, LanesThatDoNotFlyAreNotThere) {
  for (const auto& [mode, lanes] :
       {std::pair{"1, RaceHorse", 4}, {"4, FAI 123", 3}, {"6", 3}, {"7", 4}, {"", 4}}) {
    Book book;
    book.Flight("Race1", 1).Set("Race1", "RaceMode", mode);
    const auto told = ReadRace(book.Source(), 1).lanes;
    EXPECT_EQ(std::ranges::count_if(told, &LaneRecord::flies), lanes) << mode;
  }
}

TEST(Summary, CountsOnlyWhatStands) {
  Book book;
  book.Flight("Race1", 1)
      .Set("Race1", "ReflyID", "1")
      .Flight("Refly1", 1)
      .Flight("Race2", 2)
      .Flight("Race3", 3);
  book.Lane("Race1", 1, With({Cut(0, 1, 3000)}, Laps(11, 5000)));
  book.Lane("Refly1", 1, Laps(10, 7000)).Lane("Refly1", 2, {Lap(1, 9000), Lap(2, 15500), Cut(2, 1, 16000)});
  book.Lane("Race2", 1, Laps(10, 7000));
  const ContestSummary summary = SummaryOf(book.Contest());
  EXPECT_EQ(summary.racesFlown, 3);
  EXPECT_EQ(summary.cuts, 1);
  EXPECT_EQ(BestText(*summary.fastestHeat, true), "1:10.00 (race 1 REFLY, lane 1)");
  EXPECT_EQ(BestText(*summary.fastestLap, true), "6.50 (race 1 REFLY, lane 2, lap 2)");
  EXPECT_EQ(summary.lanes[0].racesFlown, 2);
  EXPECT_EQ(summary.lanes[1].racesFlown, 1);
  EXPECT_FALSE(summary.lanes[1].fastestHeat);
  EXPECT_FALSE(summary.lanes[2].fastestLap);
}

}  // namespace
}  // namespace quorvane
