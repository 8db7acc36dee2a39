#include "field/field.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace quorvane::field {
namespace {

TEST(Field, TellsWhatTheStationsSawOfARaceThatTheConsoleRuns) {
  Field field({.controlled = true, .silent = {{.station = kDisplay, .from_ms = 20000}}});
  const auto say = [&](std::int64_t ms, const Report& report) {
    field.AdvanceTo(ms);
    field.Receive(Encode(report), ms);
  };
  Report race{.from = kStarter, .to = kPylonBox, .running = true, .clock = 59999, .mode = 2};
  Report laps{.from = kTimers, .to = kStarter, .running = true, .mode = 2};
  say(10000, race);
  laps.clock = 69020;
  laps.lap = {1, 0, 0, 0};
  laps.lit = {250, 0, 0, 0};
  say(19000, laps);
  race.clock = 71000;
  race.cuts = {0, 0x4C, 0, 0};  // two at pylon 2, one by hand
  say(21000, race);
  race.cuts = {0, 0x0C, 0, 0};  // which is withdrawn
  say(21500, race);
  say(22000, {.from = kTimers, .to = kDisplay});
  say(23000, {.from = kStarter, .to = kPylonBox, .mode = 2});
  const auto results = field.TakeResults();
  ASSERT_EQ(results.size(), 1U);
  const std::string told = ToJson(results[0]) + ToJson(field.Heard(), {});
  for (
      const char* piece :
      {R"({"lane":1,"target":10,"laps":[9020],"lights":[250],"cuts":[],"cutBits":0,)",
       R"({"lane":2,"target":11,"laps":[],"lights":[],"cuts":[{"pylon":2,"time":11000},{"pylon":2,"time":11000}],"cutBits":12,)",
       R"("race":{"from":10000,"to":23000,"clock":[59999,71000],"drift":499},)",
       R"({"station":6,"frames":5,"running":false,"clock":0,"mode":2,"laps":[0,0,0,0],"cuts":[0,0,0,0],)",
       R"({"station":7,"frames":2,"running":true,"clock":69020,"mode":2,"laps":[1,0,0,0],"cuts":[0,0,0,0],)",
       R"("control":{"frames":6,"odd":1,"first":10000,"last":23000,"starter":null})"}) {
    EXPECT_NE(told.find(piece), std::string::npos) << piece << "\n" << told;
  }
}

// The starter of the first heat has forgotten it a minute into the course; the same heat is flown again.
TEST(Field, AStarterThatRestartsFliesItsHeatAgainAndPausesBetweenHeats) {
  FieldOptions options{.heats = 2, .count = false, .quick = true};
  const auto fly = [](const FieldOptions& o, std::vector<std::int64_t>& starts) {
    Field field(o);
    field.BeginHeats(0);
    std::string told;
    std::deque<std::uint8_t> heard;
    for (bool running = false; !field.Done();) {
      const std::int64_t now = field.NextDue();
      for (const Chunk& chunk : field.AdvanceTo(now)) {
        for (const Frame& frame : Listen(heard, chunk.bytes)) {
          if (frame[5] != kStarter) continue;
          const bool runs = Decode(frame).running;
          if (runs && !running) starts.push_back(now);
          running = runs;
        }
      }
      for (const HeatResult& result : field.TakeResults()) {
        for (const LaneResult& lane : result.lanes) told += fmt::format(" {}:{}", result.heat, lane.flown);
      }
    }
    return told;
  };
  std::vector<std::int64_t> usual;
  std::vector<std::int64_t> restarted;
  const std::string told = fly(options, usual);
  options.restart = 80000;
  options.pause = 9000;
  EXPECT_EQ(fly(options, restarted), told);
  ASSERT_EQ(usual.size(), 2U);
  ASSERT_EQ(restarted.size(), 3U);
  EXPECT_NEAR(static_cast<double>(restarted[1] - restarted[0]), 20000 + 3000 + 9000 + 3000, 200);
  EXPECT_NEAR(static_cast<double>(restarted[2] - restarted[1]),
              static_cast<double>(usual[1] - usual[0]) + 9000, 200);
}

}  // namespace
}  // namespace quorvane::field
