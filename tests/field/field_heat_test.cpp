#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "field/field.h"
#include "tests/support/plain_console.h"

namespace quorvane::field {
namespace {

struct Flown {
  std::vector<Chunk> chunks;
  std::vector<HeatResult> results;
};

Flown FlyAll(const FieldOptions& options) {
  Flown flown;
  Field field(options);
  field.BeginHeats(0);
  while (!field.Done()) {
    for (Chunk& chunk : field.AdvanceTo(field.NextDue())) flown.chunks.push_back(std::move(chunk));
    for (HeatResult& result : field.TakeResults()) flown.results.push_back(std::move(result));
  }
  return flown;
}

// What the field's JSON and a plain account of the frames do not agree on, one sentence a line.
std::string Disagreement(const FieldOptions& options, bool lossy) {
  const Flown flown = FlyAll(options);
  PlainConsole console;
  for (const Chunk& chunk : flown.chunks) console.Receive(chunk);
  std::stringstream json;
  for (const HeatResult& result : flown.results) json << ToJson(result) << '\n';
  std::string text;
  const auto told = ReadHeats(json, text);
  if (!told) return text;
  for (const std::string& line : CompareHeats(*told, console.heats(), {.tolerance = 3, .lossy = lossy})) {
    text += line + '\n';
  }
  if (console.laps_outside_races() > 0) text += "laps outside races\n";
  if (console.resets() > 0) text += "a race was reset\n";
  return text;
}

TEST(FieldHeat, AConsoleOnAGoodLineShowsWhatIsExpected) {
  struct Case {
    const char* name;
    FieldOptions options;
  };
  const Case cases[] = {
      {"count", {.heats = 12, .mode = 0, .seed = 3}},
      {"no count", {.heats = 12, .mode = 0, .seed = 4, .count = false}},
      {"hold", {.heats = 6, .mode = 0, .seed = 5, .hold = true}},
      {"quick", {.heats = 60, .mode = 0, .seed = 6, .count = false, .quick = true}},
      {"pieces", {.heats = 6, .mode = 0, .seed = 7, .line = {.split = true}}},
      {"judges off", {.heats = 6, .mode = 0, .seed = 8, .silent = {{0, 200000}, {1, 0, 400000}}}},
  };
  for (const Case& c : cases) EXPECT_EQ(Disagreement(c.options, false), "") << c.name;
}

TEST(FieldHeat, OnABadLineLapsAreLateButNeverInventedOrLost) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    const FieldOptions options{.heats = 6,
                               .mode = 0,
                               .seed = seed,
                               .count = seed % 2 == 0,
                               .quick = seed % 3 == 0,
                               .line = {.noise = 0.08, .loss = 0.1, .damage = 0.08, .split = true}};
    EXPECT_EQ(Disagreement(options, true), "") << "heats of number " << seed;
  }
}

TEST(FieldHeat, TheSameNumberGivesTheSameCourse) {
  FieldOptions options{
      .seed = 42, .count = false, .quick = true, .line = {.noise = 0.1, .loss = 0.1, .split = true}};
  const Flown first = FlyAll(options);
  const Flown second = FlyAll(options);
  ASSERT_EQ(first.chunks.size(), second.chunks.size());
  for (std::size_t i = 0; i < first.chunks.size(); ++i) {
    EXPECT_EQ(first.chunks[i].due_us, second.chunks[i].due_us);
    EXPECT_EQ(first.chunks[i].bytes, second.chunks[i].bytes);
  }
  EXPECT_EQ(ToJson(first.results.at(0)), ToJson(second.results.at(0)));
  // A fixed figure: the heat must also be the same on every system.
  EXPECT_EQ(PlanHeat(1, 1, 2, true).lanes[0].laps.at(9), 41770);
  options.seed = 43;
  EXPECT_NE(ToJson(first.results.at(0)), ToJson(FlyAll(options).results.at(0)));
}

TEST(FieldHeat, PlansFollowTheRules) {
  std::map<std::string, int> seen;
  for (int heat = 1; heat <= 600; ++heat) {
    const int mode = (heat - 1) % 6 + 1;
    const bool quick = heat % 2 == 0;
    const HeatPlan plan = PlanHeat(9, heat, mode, quick);
    int finishing = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      const LanePlan& lane = plan.lanes[i];
      EXPECT_EQ(lane.flies, mode < 4 || i < 3);
      if (!lane.flies) continue;
      EXPECT_EQ(lane.target, mode < 4 && !lane.cuts.empty() ? 11 : 10);
      int before = quick ? 5400 - 3700 : 8000 - 6500;
      for (const int lap : lane.laps) {
        EXPECT_GE(lap - before, quick ? 3700 : 6500);
        EXPECT_LE(lap - before, 13000);
        before = lap;
      }
      finishing += lane.Finishes();
      seen[std::to_string(lane.cuts.size()) + (lane.Finishes() ? " finishes" : " stops")] += 1;
    }
    EXPECT_GE(finishing, 2);
  }
  for (const char* kind : {"0 finishes", "1 finishes", "0 stops", "1 stops", "2 stops"})
    EXPECT_GT(seen[kind], 10);
}

TEST(FieldHeat, RepeatsEachLapAndLightsItFallingForTwoSeconds) {
  const Flown flown = FlyAll({.seed = 1, .count = false});
  std::map<int, std::vector<int>> lights;  // by lap of lane 1
  std::int64_t free_us = 0;
  for (const Chunk& chunk : flown.chunks) {
    EXPECT_GE(chunk.due_us - free_us, 37500);
    free_us = chunk.due_us;
    ASSERT_EQ(chunk.bytes.size(), 36U);
    if (chunk.bytes[5] == 4 && chunk.bytes[24] > 0) lights[chunk.bytes[29]].push_back(chunk.bytes[24]);
  }
  ASSERT_EQ(lights.size(), flown.results.at(0).lanes.at(0).flown.size());
  for (const auto& [lap, values] : lights) {
    EXPECT_GE(values.size(), 8U) << "lap " << lap;
    EXPECT_GE(values.front(), 230) << "lap " << lap;
    const auto reminders = std::find(values.begin(), values.end(), 25);
    EXPECT_TRUE(std::is_sorted(values.begin(), reminders, std::greater<>())) << "lap " << lap;
    EXPECT_GE(values.end() - reminders, 3) << "lap " << lap;
  }
}

TEST(FieldHeat, ExpectedResultsFollowLapsAndCuts) {
  const std::vector<int> ten = {9, 18, 27, 36, 45, 54, 63, 72, 81, 90};
  std::vector<int> eleven = ten;
  eleven.push_back(99);
  const CutResult cut{.pylon = 2, .flown = 20, .expected = 21};
  struct Case {
    const char* name;
    int target;
    std::vector<int> laps;
    std::size_t cuts;
    int final_time;
  };
  const Case cases[] = {
      {"no cut", 10, ten, 0, 90},
      {"AMA, one cut", 11, eleven, 1, 99},
      {"AMA, one cut and the last lap owed", 11, ten, 1, kNoResult},
      {"FAI, one cut", 10, ten, 1, 90},
      {"FAI, double cut", 10, ten, 2, kNoResult},
      {"given up", 10, {9, 18}, 0, kNoResult},
  };
  for (const Case& c : cases) {
    std::vector<LaneResult> lanes(1);
    lanes[0].target = c.target;
    lanes[0].expected = c.laps;
    lanes[0].cuts.assign(c.cuts, cut);
    RankLanes(lanes);
    EXPECT_EQ(lanes[0].final_time, c.final_time) << c.name;
    EXPECT_EQ(lanes[0].place, c.final_time < kNoResult ? "First" : "") << c.name;
  }
  std::vector<LaneResult> tie(3);
  tie[0].expected = tie[2].expected = ten;
  RankLanes(tie);
  EXPECT_EQ(tie[0].place + " " + tie[1].place + " " + tie[2].place, "First  Second");
}

TEST(FieldHeat, IdlesUntilBegunAndAnswersPolls) {
  Field field({});
  int answers = 0;
  for (std::int64_t ms = 0; ms < 20000; ms += 100) {
    for (const Chunk& chunk : field.AdvanceTo(ms)) {
      EXPECT_EQ(chunk.bytes[3], 0);
      if (chunk.bytes[4] != 254) continue;
      EXPECT_LE(ms - answers * 1000, 200);
      EXPECT_EQ(chunk.bytes[5], answers < 5 ? answers : answers + 1);  // nobody has address 5
      ++answers;
    }
    const auto station = static_cast<std::uint8_t>(ms / 1000);
    if (ms % 1000 == 0 && station < 9) {
      const int to = station < 8 ? station < 5 ? station : station == 7 ? 5 : station + 1 : 200;
      std::vector<std::uint8_t> poll(36);
      poll[0] = 0x55;
      poll[1] = 0xAA;
      poll[4] = static_cast<std::uint8_t>(to);
      poll[5] = 254;
      poll[2] = poll[4] ^ poll[5];
      field.Receive(poll, ms);
    }
  }
  EXPECT_EQ(answers, 7);
}

}  // namespace
}  // namespace quorvane::field
