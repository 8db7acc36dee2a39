#include "link/station_message.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

// A frame of the second judge to the console, written out by hand. The check byte was worked out by hand too.
constexpr FrameBytes kKnown = {
    0x55, 0xAA, 0x3D,              // sync, check
    0x01, 0xFE, 0x01,              // running, to the console, from judge 2
    0x00, 0x01, 0xD4, 0xC0,        // 120000 ms
    0x05,                          // turns
    0x01, 0x03, 0x40, 0xC0,        // cuts: single and double in slot 0, single and double in slot 3
    0x80, 0x02, 0x08, 0x10,        // bit sets
    0x01, 0x02, 0x03, 0x04, 0x05,  // ages
    0x0A, 0x0B, 0x0C, 0x0D, 0x04,  // lights, race mode
    0x01, 0x02, 0x03, 0x0A,        // laps
    0x14, 0x50, 0x80};             // delay, temperature, voltage

TEST(StationMessage, KnownFrameReadsFieldByFieldAndIsWrittenTheSame) {
  const StationMessage m = DecodeFrame(kKnown);
  EXPECT_EQ(EncodeFrame(m), kKnown);
  EXPECT_EQ(FrameTime(m), 120000);
  EXPECT_EQ(DebugDump(m),
            "Wig1=0x55, Wig2=0xAA, Ecc=0x3D\r"
            "Strt=0x01, From=0x01, To =0xFE\r"
            "Time=0x00,0x01,0xD4,0xC0 (119.98)\r"
            "Turns=0x05 = ooooo1o1\r"
            "Cuts =0x01,0x03,0x40,0xC0\r"
            "ssNun=0x80 = 1ooooooo\r"
            "ssSgl=0x02 = oooooo1o\r"
            "ssDbl=0x08 = oooo1ooo\r"
            "ssBtn=0x10 = ooo1oooo\r"
            "Age=0x01,0x02,0x03,0x04,0x05\r"
            "Lit=0x0A,0x0B,0x0C,0x0D,0x04\r"
            "Lap=1,2,3,10\r"
            "Dif=0x14, Temp=0x50, Volt=0x80");
  EXPECT_EQ(std::pair(m.Lit[3], m.Mode), std::pair(std::uint8_t{13}, std::uint8_t{4}));
}

TEST(StationMessage, CheckCoversEverythingBehindItselfAndNothingElse) {
  for (std::size_t i = 0; i < kFrameSize; ++i) {
    FrameBytes changed = kKnown;
    changed[i] ^= 0x21;
    EXPECT_EQ(ComputeEcc(changed), i < 3 ? 0x3D : 0x3D ^ 0x21) << i;
  }
}

TEST(StationMessage, TimeIsTheLow24BitsLessTheDelay) {
  StationMessage m;
  m.Time = {0xFF, 0xFF, 0xFF, 0xFF};
  EXPECT_EQ(FrameTime(m), 0xFFFFFF);
  m.Time = {1, 0, 0, 0};
  EXPECT_EQ(FrameTime(m), 0);
  m.Time = {};
  m.Dif = 200;
  EXPECT_NE(DebugDump(m).find("Time=0x00,0x00,0x00,0x00 (-0.20)\r"), std::string::npos);
}

TEST(StationMessage, StationsAreNamedByAddress) {
  const std::pair<int, const char*> cases[] = {
      {0, "Judges 1"}, {3, "Starter"},    {4, "Timers"},     {5, ""},         {6, "Pylon 1"}, {7, "Display"},
      {8, "Stn(8)"},   {200, "Stn(200)"}, {253, "Stn(253)"}, {254, "Laptop"}, {255, "Ack"}};
  for (const auto& [address, name] : cases) EXPECT_EQ(StationName(address), name) << address;
}

}  // namespace
}  // namespace quorvane
