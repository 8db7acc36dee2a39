#include "lane/lane_log.h"

#include <gtest/gtest.h>

#include <sstream>

#include "common/run_time_error.h"

namespace quorvane {
namespace {

// "3L C0 P T4" is three laps, a cut from station 0, one from the panel and a turn from station 4, ten seconds
// apart. Counts are those of a lane that logs every lap.
LaneLog LogOf(const std::string& text) {
  LaneLog log;
  int laps = 0;
  std::istringstream tokens(text);
  for (std::string token; tokens >> token;) {
    const int time = 10000 * (log.EventCount() + 1);
    if (token.back() == 'L') {
      const int number = token.size() > 1 ? std::stoi(token) : 1;
      for (int i = 0; i < number; ++i) log.AddEvent({"L", 10000 * (log.EventCount() + 1), 4, ++laps});
    } else if (token[0] == 'P') {
      log.AddEvent({"C", time, kPanelSource, laps});
    } else {
      log.AddEvent({token.substr(0, 1), time, std::stoi(token.substr(1)), laps});
    }
  }
  return log;
}

std::string Kinds(const LaneLog& log) {
  std::string kinds;
  for (int i = 0; i < log.EventCount(); ++i) {
    kinds += (i > 0 ? " " : "") + log[i].Kind + std::to_string(log[i].Count);
  }
  return kinds;
}

TEST(LaneLog, NamesTheSource) {
  struct {
    int source;
    int missedPylon;
    const char* name;
  } const kCases[] = {{0, 0, "P1"},   {2, 0, "P3"},    {3, 1, "ST"},    {4, 0, "TM"},
                      {5, 0, "??"},   {6, 0, "PY"},    {7, 0, "?"},     {253, 2, "?"},
                      {254, 0, "ME"}, {254, 1, "MP1"}, {254, 3, "MP3"}, {255, 0, "?"}};
  for (const auto& c : kCases) {
    LaneLog log;
    log.AddEvent({"C", 1, c.source, 0, c.missedPylon});
    EXPECT_EQ(log[0].SourceName, c.name) << c.source;
  }
}

TEST(LaneLog, AnEntryThatCannotBeMadeChangesNothing) {
  LaneLog log = LogOf("50L P 50L");
  const LaneEvent last = log[100];
  EXPECT_THROW(log.AddEvent({"L", 1, 4, 1}), SubscriptError);
  EXPECT_THROW(log.InsertEvent(0, {"L", 1, 4, 1}), SubscriptError);
  EXPECT_EQ(log.EventCount(), 101);
  EXPECT_EQ(log[100], last);

  LaneLog two = LogOf("2L");
  EXPECT_THROW(two.InsertEvent(0, {"L", 1, 4, 256}), OverflowError);
  EXPECT_THROW(two.InsertEvent(0, {"L", 1, -1, 1}), OverflowError);
  EXPECT_THROW(two.InsertEvent(3, {"L", 1, 4, 1}), SubscriptError);
  EXPECT_EQ(Kinds(two), "L1 L2");
}

TEST(LaneLog, AnInsertedEntryMovesTheLaterOnesUp) {
  LaneLog log = LogOf("3L");
  log.InsertEvent(1, {"C", 5, 1, 1});
  log.InsertEvent(4, {"T", 6, 4, 3});
  EXPECT_EQ(Kinds(log), "L1 C1 L2 L3 T3");
  EXPECT_EQ(log[1].FirstReported, 5);
  EXPECT_EQ(log[2].EventTime, 20000);
}

TEST(LaneLog, CountsTheLatestLap) {
  EXPECT_EQ(LaneLog().CountLaps(), 0);
  EXPECT_EQ(LogOf("T4 P").CountLaps(), 0);
  EXPECT_EQ(LogOf("2L C0 T4").CountLaps(), 2);
}

struct ReportCase {
  const char* what;
  const char* log;
  CutReport report;  // at 100.000 s unless it says otherwise
  const char* after;
};

TEST(EnterCutReport, BringsTheSourceToWhatItReports) {
  const ReportCase kCases[] = {
      {"first", "L", {1, 0, 100000, 1, 1, 0}, "L1 C1"},
      {"repeated", "L C0", {1, 0, 100000, 1, 1, 1}, "L1 C1"},
      {"double", "L", {2, 0, 100000, 1, 1, 0}, "L1 C1 C1"},
      {"one of two withdrawn: the later", "C0 L C0", {1, 0, 100000, 1, 1, 2}, "C0 L1 -C1"},
      {"all withdrawn", "C0 L C0", {0, 0, 100000, 1, 1, 2}, "-C0 L1 -C1"},
      {"others' cuts stay", "C0 C1 P", {0, 1, 100000, 0, 0, 3}, "C0 -C0 C0"},
      {"before the latest lap", "3L T4", {1, 2, 100000, 3, 2, 0}, "L1 L2 C2 L3 T3"},
      {"two before the latest lap", "2L", {2, 2, 100000, 2, 1, 0}, "L1 C1 C1 L2"},
      {"panel wants two and has none", "C0", {2, 254, 100000, 0, 0, 1}, "C0 C0 C0"},
  };
  for (const ReportCase& c : kCases) {
    LaneLog log = LogOf(c.log);
    EnterCutReport(log, c.report);
    EXPECT_EQ(Kinds(log), c.after) << c.what;
  }
}

TEST(EnterCutReport, ReinstatesACutWithdrawnLessThanASecondAgo) {
  struct {
    const char* what;
    std::int32_t time;
    int source;
    int cutsOnLane;
    const char* after;
  } const kCases[] = {{"in time", 50999, 0, 0, "C0"},
                      {"too late", 51000, 0, 0, "-C0 C0"},
                      {"another judge", 50500, 1, 0, "-C0 C0"},
                      {"the lane has a cut already", 50500, 0, 1, "-C0 C0"}};
  for (const auto& c : kCases) {
    LaneLog log = LogOf("C0");
    log.Withdraw(0, 50000);
    EnterCutReport(log, {1, c.source, c.time, 0, 0, c.cutsOnLane});
    EXPECT_EQ(Kinds(log), c.after) << c.what;
    EXPECT_EQ(log[0].EventTime, 50000) << c.what;
    EXPECT_EQ(log[0].FirstReported, 10000) << c.what;
  }
}

TEST(EnterCutReport, RefusesAsAWhole) {
  LaneLog log = LogOf("50L C0 49L");
  EXPECT_THROW(EnterCutReport(log, {3, 1, 1, 9, 9, 1}), SubscriptError);
  EXPECT_THROW(EnterCutReport(log, {1, 256, 1, 9, 9, 1}), OverflowError);
  EXPECT_EQ(log.EventCount(), 100);
  EnterCutReport(log, {1, 1, 1, 9, 9, 1});
  EXPECT_EQ(log.EventCount(), 101);
  EnterCutReport(log, {0, 1, 1, 9, 9, 2});
  EXPECT_EQ(log[100].Kind, "-C");
}

struct RecountCase {
  const char* what;
  const char* log;
  bool fai;
  int laps;
  int target;
  int cuts;
  int cutsBeforeFinish;
  std::int32_t finalTime;
};

TEST(RecountLaps, FindsLapsCutsAndResult) {
  const RecountCase kCases[] = {
      {"empty", "", false, 0, 10, 0, 0, kNoFinalTime},
      {"ten laps", "10L", false, 10, 10, 0, 0, 100000},
      {"a lap more", "11L", false, 11, 10, 0, 0, 100000},
      {"a cut costs a lap", "9L P 2L", false, 11, 11, 1, 1, 120000},
      {"which is still owed", "9L P L", false, 10, 11, 1, 1, kNoFinalTime},
      {"two cost no more", "P 9L P 2L", false, 11, 11, 2, 2, 130000},
      {"a cut after the finish", "10L P", false, 10, 10, 1, 0, 100000},
      {"a cut after the eleventh", "P 11L P", false, 11, 11, 2, 1, 120000},
      {"one cut, FAI", "9L P L", true, 10, 10, 1, 1, 110000},
      {"two cuts, FAI", "4L P 5L P L", true, 10, 10, 2, 2, 200000},
      {"second after the finish, FAI", "P 10L P", true, 10, 10, 2, 1, 110000},
  };
  for (const RecountCase& c : kCases) {
    const LaneLog log = LogOf(c.log);
    const LapRecount r = RecountLaps(log, c.fai);
    EXPECT_EQ(r.laps, c.laps) << c.what;
    EXPECT_EQ(r.lapTarget, c.target) << c.what;
    EXPECT_EQ(r.cutCount, c.cuts) << c.what;
    EXPECT_EQ(r.cutsBeforeFinish, c.cutsBeforeFinish) << c.what;
    EXPECT_EQ(r.finalTime, c.finalTime) << c.what;
    // The other recount must come to the same, or the result would change when the race is finalized.
    const CutRecount cuts = RecountCuts(log, c.fai);
    EXPECT_EQ(cuts.laps, c.laps) << c.what;
    EXPECT_EQ(cuts.lapTarget, c.target) << c.what;
    EXPECT_EQ(cuts.cutCount, c.cuts) << c.what;
    EXPECT_EQ(cuts.cutsBeforeFinish, c.cutsBeforeFinish) << c.what;
  }
}

TEST(RecountLaps, TalliesEachCutForItsPylon) {
  LaneLog log = LogOf("C0 C1 C2 C3 P C4 C2");
  EXPECT_EQ(RecountLaps(log, false).pylonCuts, (PylonTally{1, 1, 2, 3}));
  LaneEvent named = log[0];
  named.SourceName = "2";
  log.Restore(0, named);
  EXPECT_EQ(RecountLaps(log, false).pylonCuts, (PylonTally{0, 1, 3, 3}));
  named.SourceName = "4";
  log.Restore(0, named);
  EXPECT_EQ(RecountLaps(log, false).pylonCuts, (PylonTally{1, 1, 2, 3}));
}

TEST(RecountCuts, TalliesAllCutsForTheFirstEntrysPylon) {
  EXPECT_EQ(RecountCuts(LogOf("C1 C0 P C2"), false).pylonCuts, (PylonTally{0, 4, 0, 0}));
  EXPECT_EQ(RecountCuts(LogOf("L C1 C0"), false).pylonCuts, (PylonTally{0, 0, 0, 2}));
}

TEST(RecountCuts, PlacesTheMarksInOrder) {
  const CutRecount r = RecountCuts(LogOf("T4 T4 L T4 C1 9L T4 P"), true);
  ASSERT_EQ(r.marks.size(), 5U);
  EXPECT_EQ(r.turns, 3);
  const char* const kCaptions[] = {"T  10.00", "T  40.00", "C P2 50.00", "T  150.00", "C ME 160.00"};
  const char* const kTags[] = {"T TM 10.00", "T TM 40.00", "C P2 50.00", "T TM 150.00", "C ME 160.00"};
  const int kColumns[] = {0, 1, 1, 10, 10};
  const bool kGrey[] = {false, false, false, false, true};
  for (std::size_t i = 0; i < r.marks.size(); ++i) {
    EXPECT_EQ(r.marks[i].index, static_cast<int>(i));
    EXPECT_EQ(r.marks[i].caption, kCaptions[i]);
    EXPECT_EQ(r.marks[i].tag, kTags[i]);
    EXPECT_EQ(r.marks[i].column, kColumns[i]) << i;
    EXPECT_EQ(r.marks[i].grey, kGrey[i]) << i;
  }
  EXPECT_TRUE(RecountCuts(LogOf("11L T4"), false).marks[0].grey);
}

TEST(RecountCuts, AFullStripStepsBackAndShowsNoMoreMarks) {
  LaneLog log = LogOf("11L");
  for (int i = 0; i < 60; ++i) log.AddEvent({"C", 1000 * i, 0, 11});
  const CutRecount r = RecountCuts(log, false);
  EXPECT_LE(r.cutCount, 29);
  EXPECT_GE(r.cutCount, 28);
  for (const CutMark& mark : r.marks) EXPECT_LE(mark.index, kLastCutMark);
  EXPECT_EQ(RecountLaps(log, false).cutCount, 60);
}

}  // namespace
}  // namespace quorvane
