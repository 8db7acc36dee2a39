#include "field/field.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quorvane::field {
namespace {

TEST(Field, AFrameWrittenByHandIsTheSame) {
  // Running at 65.536 s in mode 2; lane 2: one cut at pylon 1, two at pylon 3; lane 4: one at pylon 2.
  const Report starter{.from = kStarter,
                       .to = kPylonBox,
                       .running = true,
                       .clock = 65536,
                       .turns = 9,
                       .cuts = {0, 0x31, 0, 0x04},
                       .buttons = 16,
                       .lit = {250, 0, 25, 0},
                       .mode = 2,
                       .lap = {11, 0, 3, 0},
                       .dif = 6,
                       .temperature = 0x41,
                       .voltage = 0xAB};
  const Frame frame = {0x55, 0xAA, 0x22, 0x01, 0x06, 0x03, 0x00, 0x01, 0x00, 0x06, 0x09, 0x00,
                       0x31, 0x00, 0x04, 0x00, 0x0A, 0x02, 0x10, 0x00, 0x00, 0x00, 0x00, 0x00,
                       0xFA, 0x00, 0x19, 0x00, 0x02, 0x0B, 0x00, 0x03, 0x00, 0x06, 0x41, 0xAB};
  EXPECT_EQ(Encode(starter), frame);
  EXPECT_EQ(Encode(Decode(frame)), frame);
}

TEST(Field, EqualFinalsKeepTheLowerLaneFirst) {
  std::vector<LaneResult> lanes(3);
  lanes[0].expected = lanes[2].expected = {9, 18, 27, 36, 45, 54, 63, 72, 81, 90};
  RankLanes(lanes);
  EXPECT_EQ(lanes[0].place + " " + lanes[1].place + " " + lanes[2].place, "First  Second");
}

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
  race.cuts = {0, 0x44, 0, 0};  // one at pylon 2, one by hand
  say(21000, race);
  race.cuts = {0, 0x04, 0, 0};  // which is withdrawn
  say(21500, race);
  say(22000, {.from = kTimers, .to = kDisplay});
  say(23000, {.from = kStarter, .to = kPylonBox, .mode = 2});
  const auto results = field.TakeResults();
  ASSERT_EQ(results.size(), 1U);
  const std::string told = ToJson(results[0]) + ToJson(field.Heard(), {});
  for (const char* piece :
       {R"({"lane":1,"target":10,"laps":[9020],"lights":[250],"cuts":[],"cutBits":0,)",
        R"({"lane":2,"target":11,"laps":[],"lights":[],"cuts":[{"pylon":2,"time":11000}],"cutBits":4,)",
        R"("race":{"from":10000,"to":23000,"clock":[59999,71000],"drift":499},)",
        R"({"station":6,"frames":5,"running":false,"clock":0,"mode":2,"laps":[0,0,0,0],"cuts":[0,0,0,0],)",
        R"({"station":7,"frames":2,"running":true,"clock":69020,"mode":2,"laps":[1,0,0,0],"cuts":[0,0,0,0],)",
        R"("control":{"frames":6,"odd":1,"first":10000,"last":23000,"starter":null})"}) {
    EXPECT_NE(told.find(piece), std::string::npos) << piece << "\n" << told;
  }
}

TEST(Field, IdlesUntilBegunAndAnswersPollsInAnyChunking) {
  Field field({.late = {0, 0, 500}, .twice = {false, false, false, false, true}});
  std::string answers;
  for (std::int64_t ms = 0; ms < 10000; ms += 100) {
    for (const Chunk& chunk : field.AdvanceTo(ms)) {
      EXPECT_EQ(chunk.bytes[3], 0);
      if (chunk.bytes[4] == kConsole) answers += fmt::format("{} after {}, ", chunk.bytes[5], ms % 1000);
    }
    // Nobody has address 5 or 8; a damaged poll is none, and a whole one behind it is heard all the same.
    const Frame poll = Encode({.from = kConsole, .to = static_cast<std::uint8_t>(ms / 1000)});
    std::vector<std::uint8_t> bytes(40, 0x55);
    bytes.insert(bytes.end(), poll.begin(), poll.end());
    const auto tenth = static_cast<std::size_t>(ms % 1000 / 100);
    field.Receive(std::span(bytes).subspan(tenth * 8, tenth == 9 ? 4 : 8), ms);
  }
  EXPECT_EQ(answers,
            "0 after 0, 1 after 0, 2 after 500, 3 after 0, 4 after 0, 4 after 0, 6 after 0, 7 after 0, ");
  EXPECT_EQ(field.Heard().polls, 10);
}

}  // namespace
}  // namespace quorvane::field
