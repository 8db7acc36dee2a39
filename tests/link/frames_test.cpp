// The frame and its texts, and how frames are cut out of a stream.

#include <gtest/gtest.h>

#include "tests/link/link_fixture.h"
#include "tests/support/naive_receiver.h"

namespace quorvane {
namespace {

// A frame of the second judge to the console, written out by hand. The check byte was worked out by hand too.
constexpr FrameBytes kKnown = {
    0x55, 0xAA, 0x42,              // sync, check
    0x01, 0xFE, 0x01,              // running, to the console, from judge 2
    0x7F, 0x01, 0xD4, 0xC0,        // 120000 ms, of which the highest byte is nobody's
    0x05,                          // turns
    0x01, 0x03, 0x40, 0xC0,        // cuts: single and double in slot 0, single and double in slot 3
    0x80, 0x02, 0x08, 0x10,        // bit sets
    0x01, 0x02, 0x03, 0x04, 0x05,  // ages
    0x0A, 0x0B, 0x0C, 0x0D, 0x04,  // lights, race mode
    0x01, 0x02, 0x03, 0x0A,        // laps
    0x14, 0x50, 0x80};             // delay, temperature, voltage

TEST(StationMessage, AKnownFrameReadsFieldByField) {
  const StationMessage m = DecodeFrame(kKnown);
  EXPECT_EQ(ComputeEcc(m), m.Ecc);
  EXPECT_EQ(DebugDump(m),
            "Wig1=0x55, Wig2=0xAA, Ecc=0x42\r"
            "Strt=0x01, From=0x01, To =0xFE\r"
            "Time=0x7F,0x01,0xD4,0xC0 (119.98)\r"
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
  std::string names;
  for (const int address : {0, 4, 5, 7, 8, 253, 254, 255}) names += StationName(address) + ",";
  EXPECT_EQ(names, "Judges 1,Timers,,Display,Stn(8),Stn(253),Laptop,Ack,");
}

TEST(StationMessage, ACutByteHasASlotForEachCount) {
  StationMessage m;
  m.ssDbl = 1;  // of the race before
  m.Cuts[3] = 0xFF;
  SetCuts(m, 0, {0, 1, 2, 1});
  SetCuts(m, 1, {0, 2, 0, 9});
  SetCuts(m, 2, {2, 0, 1, 0});
  SetCuts(m, 3, {1});
  EXPECT_EQ(m.Cuts, (std::array<std::uint8_t, 4>{0x74, 0xCC, 0x13, 1}));
  EXPECT_EQ(std::pair(m.ssSgl, m.ssDbl), (std::pair<std::uint8_t, std::uint8_t>(0b1101, 0b0111)));
}

TEST(FrameReceiver, FindsAndLosesFramesLikeThis) {
  const Bytes one = Frame(254, 4, {.lap = {3}}), two = Frame(3, 0, {.clock = 7});
  Bytes damaged = one, reversed = one;
  damaged[20] ^= 0x10;
  std::swap(reversed[0], reversed[1]);
  Bytes inside = damaged;
  inside[30] = 0x55;
  const auto text = [](const std::string& what, const Bytes& frame) {
    std::uint8_t check = 0;
    for (std::size_t i = 3; i < 36; ++i) check ^= frame[i];
    return what + " " + HexText(frame) + (what == "good" ? "" : fmt::format(" {:02X}", check));
  };
  const struct {
    const char* what;
    Bytes bytes;
    std::vector<std::string> found;
    int count;  // of the bytes that wait, or with a minus of those that will be dropped
  } cases[] = {{"no whole frame", {one.begin(), one.end() - 1}, {}, 35},
               {"frames back to back", one + two + Bytes{0x55}, {text("good", one), text("good", two)}, 1},
               {"a damaged frame takes the next one with it",
                damaged + two + one,
                {text("damaged", damaged), text("good", one)},
                0},
               {"36 bytes are dropped from the 55 inside it", inside, {text("damaged", inside)}, -30},
               {"noise takes the frame behind it",
                Bytes{1, 2, 3} + one + two,
                {"unexpected 01 02", text("good", two)},
                0},
               {"sync bytes the wrong way round", reversed, {"unexpected AA 55"}, -1}};
  for (const auto& c : cases) {
    FrameReceiver receiver;
    std::vector<std::string> found;
    receiver.Receive(c.bytes,
                     [&](Found what, const auto& frame) { found.push_back(FoundText(what, frame)); });
    EXPECT_EQ(found, c.found) << c.what;
    EXPECT_EQ(receiver.RxCount(), c.count) << c.what;
  }
}

}  // namespace
}  // namespace quorvane
