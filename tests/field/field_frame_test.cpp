#include <gtest/gtest.h>

#include <algorithm>

#include "field/frame.h"
#include "field/line.h"

namespace quorvane::field {
namespace {

TEST(FieldFrame, MatchesFramesWrittenByHand) {
  Report
      starter;  // running at 65.536 s in mode 2, lane 2: one cut at pylon 1, two at pylon 3; lane 4: one at 2
  starter.from = kStarter;
  starter.to = kPylonBox;
  starter.running = true;
  starter.clock = 65536;
  starter.cuts = {0, 0x31, 0, 0x04};
  starter.buttons = 16;
  starter.mode = 2;
  starter.dif = 6;
  starter.temperature = 0x41;
  starter.voltage = 0xAB;
  Report timers;  // lanes 1 and 3 just lit
  timers.from = kTimers;
  timers.to = kStarter;
  timers.clock = 0x0201FF;
  timers.lit = {250, 0, 25, 0};
  timers.mode = 4;
  timers.lap = {11, 0, 3, 0};
  timers.dif = 5;
  Report acknowledgement;  // carries its delay twice
  acknowledgement.from = kAcknowledgement;
  acknowledgement.to = kTimers;
  acknowledgement.clock = 1000;
  acknowledgement.turns = 0x08;
  acknowledgement.dif = 4;

  struct Case {
    const char* name;
    Report report;
    Frame frame;
  };
  const Case cases[] = {
      {"starter", starter, {0x55, 0xAA, 0xC0, 0x01, 0x06, 0x03, 0x00, 0x01, 0x00, 0x06, 0x00, 0x00,
                            0x31, 0x00, 0x04, 0x00, 0x0A, 0x02, 0x10, 0x00, 0x00, 0x00, 0x00, 0x00,
                            0x00, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x06, 0x41, 0xAB}},
      {"timers", timers, {0x55, 0xAA, 0xE9, 0x00, 0x03, 0x04, 0x00, 0x02, 0x02, 0x04, 0x00, 0x00,
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                          0xFA, 0x00, 0x19, 0x00, 0x04, 0x0B, 0x00, 0x03, 0x00, 0x05, 0x00, 0x00}},
      {"acknowledgement", acknowledgement, {0x55, 0xAA, 0x04, 0x00, 0x04, 0xFF, 0x00, 0x00, 0x03,
                                            0xF0, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04, 0x00, 0x00}},
  };
  for (const Case& c : cases) EXPECT_EQ(Encode(c.report), c.frame) << c.name;
}

TEST(FieldFrame, ListenerFindsPollsInAnyChunkingAndSkipsTheRest) {
  Frame poll{};
  poll[0] = 0x55;
  poll[1] = 0xAA;
  poll[2] = 0xFA;  // 04 xor FE
  poll[4] = 4;
  poll[5] = 254;
  Frame damaged = poll;
  damaged[20] = 1;
  std::vector<std::uint8_t> stream = {0x55, 0x00, 0x55};
  for (const Frame& frame : {poll, damaged, poll}) stream.insert(stream.end(), frame.begin(), frame.end());
  for (const std::size_t size : {1U, 7U, 36U, 200U}) {
    Listener listener;
    std::size_t found = 0;
    for (std::size_t at = 0; at < stream.size(); at += size) {
      const std::size_t count = std::min(size, stream.size() - at);
      for (const Frame& frame : listener.Hear(std::span(stream).subspan(at, count))) {
        EXPECT_EQ(frame, poll);
        ++found;
      }
    }
    EXPECT_EQ(found, 2U) << "chunks of " << size;
  }
}

TEST(FieldLine, PacesFramesAndAppliesItsFaults) {
  struct Case {
    const char* name;
    LineOptions options;
    std::int64_t sent, lost, damaged;
    bool noisy;
  };
  const Case cases[] = {
      {"clean", {}, 50, 0, 0, false},
      {"loss", {.loss = 1}, 0, 50, 0, false},
      {"damage", {.damage = 1}, 50, 0, 50, false},
      {"noise", {.noise = 1}, 50, 0, 0, true},
      {"split", {.split = true}, 50, 0, 0, false},
  };
  Frame frame{};
  frame[0] = 0x55;
  frame[1] = 0xAA;
  for (const Case& c : cases) {
    Line line(c.options, 5);
    std::vector<std::uint8_t> bytes;
    std::int64_t earlier = 0;
    for (int i = 0; i < 50; ++i) {
      const std::int64_t begin = line.free_us();
      const std::int64_t end = line.Take(begin);
      line.Send(frame);
      EXPECT_GE(end - begin, 37500) << c.name;
      EXPECT_TRUE(c.noisy || end - begin == 37500) << c.name;
      for (const Chunk& chunk : line.Deliver(end)) {
        EXPECT_GE(chunk.due_us - earlier, AirTime(chunk.bytes.size()) - 1) << c.name;
        earlier = chunk.due_us;
        bytes.insert(bytes.end(), chunk.bytes.begin(), chunk.bytes.end());
      }
      EXPECT_EQ(line.NextDue(), -1) << c.name;
    }
    EXPECT_EQ(line.counters().sent, c.sent) << c.name;
    EXPECT_EQ(line.counters().lost, c.lost) << c.name;
    EXPECT_EQ(line.counters().damaged, c.damaged) << c.name;
    EXPECT_EQ(line.counters().noise > 0, c.noisy) << c.name;
    EXPECT_EQ(static_cast<std::int64_t>(bytes.size()), 36 * c.sent + line.counters().noise) << c.name;
    if (c.options.damage > 0) {
      for (std::size_t at = 0; at < bytes.size(); at += 36) {
        int changed = 0;
        for (std::size_t i = 0; i < 36; ++i) changed += bytes[at + i] != frame[i];
        EXPECT_EQ(changed, 1);
      }
    }
  }
}

}  // namespace
}  // namespace quorvane::field
