#include "link/frame_receiver.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "tests/link/frames.h"
#include "tests/support/recording_sink.h"

namespace quorvane {
namespace {

using testing_frames::Bytes;
using testing_frames::Frame;
using testing_frames::operator+;

std::string Text(const Bytes& frame) {
  return NaiveReceiver::Hex(frame.data(), 36);
}

TEST(FrameReceiver, FindsAndLosesFramesLikeThis) {
  const Bytes one = Frame(254, 4, {{29, 3}}), two = Frame(3, 0, {{9, 7}});
  Bytes damaged = one, inside, reversed = one;
  damaged[20] ^= 0x10;
  inside = damaged;
  inside[30] = 0x55;
  std::swap(reversed[0], reversed[1]);
  const std::string good1 = "good " + Text(one), good2 = "good " + Text(two);
  const auto bad = [](const Bytes& frame) {
    const std::uint8_t check = testing_frames::Check(frame);
    return "damaged " + Text(frame) + " " + NaiveReceiver::Hex(&check, 1);
  };
  const struct {
    const char* what;
    Bytes bytes;
    std::vector<std::string> found;
    int count;  // of the bytes that wait, or with a minus of those that will be dropped
  } cases[] = {
      {"no whole frame", {one.begin(), one.end() - 1}, {}, 35},
      {"frames back to back", one + two + Bytes{0x55}, {good1, good2}, 1},
      {"a damaged frame takes the next one with it", damaged + two + one, {bad(damaged), good1}, 0},
      {"36 bytes are dropped from the 55 inside it", inside, {bad(inside)}, -30},
      {"noise takes the frame behind it", Bytes{1, 2, 3} + one + two, {"unexpected 01 02", good2}, 0},
      {"sync bytes the wrong way round", reversed, {"unexpected AA 55"}, -1}};
  for (const auto& c : cases) {
    FrameReceiver receiver;
    RecordingSink sink;
    receiver.Receive(c.bytes, sink);
    EXPECT_EQ(sink.found, c.found) << c.what;
    EXPECT_EQ(receiver.RxCount(), c.count) << c.what;
  }
}

// Frames, noise, cut frames and single bits turned over: what a bad radio delivers.
TEST(FrameReceiver, FindsInAnyChunkingWhatThePlainAlgorithmFinds) {
  const unsigned streams = std::getenv("QUORVANE_LONG") != nullptr ? 10000 : 200;
  for (unsigned seed = 0; seed < streams; ++seed) {
    std::mt19937 random(seed);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    FrameReceiver receiver;
    RecordingSink sink;
    NaiveReceiver naive;
    for (int i = 0; i < 100; ++i) {
      if (below(50) == 0) {
        receiver.PortOpened();
        naive.PortOpened();
      }
      Bytes bytes(36);
      for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
      bytes[0] = 0x55;
      bytes[1] = 0xAA;
      bytes[2] = testing_frames::Check(bytes);
      const std::size_t fault = below(8);
      if (fault == 0) bytes[below(36)] ^= static_cast<std::uint8_t>(1U << below(8));
      if (fault == 1) bytes.resize(below(36));
      if (fault == 2) bytes.insert(bytes.begin(), below(40), below(2) == 0 ? 0x55 : 0xAA);
      for (const std::uint8_t byte : bytes) naive.Byte(byte);
      for (std::span<const std::uint8_t> rest(bytes); !rest.empty();) {
        const std::size_t size = 1 + below(rest.size());
        receiver.Receive(rest.first(size), sink);
        rest = rest.subspan(size);
      }
      ASSERT_EQ(receiver.RxCount(), naive.Count()) << "seed " << seed;
    }
    ASSERT_EQ(sink.found, naive.Found()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace quorvane
