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

std::string Good(const Bytes& frame) {
  return "good " + NaiveReceiver::Hex(frame.data(), 36);
}

Bytes Damaged(Bytes frame) {
  frame[20] ^= 0x10;
  return frame;
}

Bytes First(Bytes bytes, std::size_t count) {
  bytes.resize(count);
  return bytes;
}

class FrameReceiverTest : public testing::Test {
 protected:
  std::vector<std::string> Receive(const Bytes& bytes) {
    sink_.found.clear();
    receiver_.Receive(bytes, sink_);
    return sink_.found;
  }

  const Bytes one_ = Frame(254, 4, {{29, 3}});
  const Bytes two_ = Frame(3, 0, {{9, 7}});
  RecordingSink sink_;
  FrameReceiver receiver_;
};

TEST_F(FrameReceiverTest, TakesAWholeFrameAndNothingLess) {
  EXPECT_TRUE(Receive(First(one_, 35)).empty());
  EXPECT_EQ(receiver_.RxCount(), 35);
  EXPECT_EQ(Receive({one_[35]}), std::vector{Good(one_)});
  EXPECT_EQ(receiver_.RxCount(), 0);
}

TEST_F(FrameReceiverTest, FramesBackToBackComeInOrderAndTheRestStays) {
  EXPECT_EQ(Receive(one_ + two_ + First(one_, 4)), (std::vector{Good(one_), Good(two_)}));
  EXPECT_EQ(receiver_.RxCount(), 4);
}

TEST_F(FrameReceiverTest, ADamagedFrameTakesTheNextOneWithIt) {
  const std::vector<std::string> found = Receive(Damaged(one_) + two_ + one_);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].substr(0, 7), "damaged");
  EXPECT_EQ(found[1], Good(one_));
}

TEST_F(FrameReceiverTest, BytesOwedAreDroppedAsTheyArrive) {
  Receive(Damaged(one_) + First(two_, 10));
  EXPECT_EQ(receiver_.RxCount(), -26);
  Receive(Bytes(26, 0x77));
  EXPECT_EQ(receiver_.RxCount(), 0);
  EXPECT_EQ(Receive(two_), std::vector{Good(two_)});
}

// The damaged frame holds a 0x55 itself: the 36 bytes that are discarded start there.
TEST_F(FrameReceiverTest, DiscardsFromThe55InsideADamagedFrame) {
  Bytes damaged = Damaged(one_);
  damaged[30] = 0x55;
  Receive(damaged);
  EXPECT_EQ(receiver_.RxCount(), -30);
  EXPECT_EQ(Receive(Bytes(30, 0) + two_), std::vector{Good(two_)});
}

TEST_F(FrameReceiverTest, NoiseTakesTheFrameBehindItWithIt) {
  EXPECT_EQ(Receive(Bytes{1, 2, 3} + one_ + two_),
            (std::vector<std::string>{"unexpected 01 02", Good(two_)}));
}

TEST_F(FrameReceiverTest, SyncBytesTheWrongWayRoundAreNoFrame) {
  Bytes reversed = one_;
  std::swap(reversed[0], reversed[1]);
  EXPECT_EQ(Receive(reversed), std::vector<std::string>{"unexpected AA 55"});
}

TEST_F(FrameReceiverTest, AFreshPortMayStartInTheMiddleOfAFrameUntold) {
  receiver_.PortOpened();
  EXPECT_TRUE(Receive(Bytes(36, 9)).empty());
  EXPECT_FALSE(receiver_.PortJustOpened());
  EXPECT_TRUE(Receive(Bytes(36, 0)).empty());  // owed
  EXPECT_EQ(Receive(Bytes(36, 9)), std::vector<std::string>{"unexpected 09 09"});
}

TEST_F(FrameReceiverTest, AFreshPortStillReportsADamagedFrame) {
  receiver_.PortOpened();
  EXPECT_EQ(Receive(Damaged(one_)).size(), 1U);
}

// A stream of frames, noise, cut frames and single bits turned over: what a bad radio delivers.
class RandomStream {
 public:
  explicit RandomStream(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  Bytes Next() {
    Bytes bytes(36);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(Below(256));
    bytes[0] = 0x55;
    bytes[1] = 0xAA;
    bytes[2] = testing_frames::Check(bytes);
    switch (Below(8)) {
      case 0:
        bytes[Below(36)] ^= static_cast<std::uint8_t>(1U << Below(8));
        break;
      case 1:
        bytes.resize(Below(36));
        break;
      case 2:
        bytes.insert(bytes.begin(), Below(40), Below(2) == 0 ? 0x55 : 0xAA);
        break;
      default:
        break;
    }
    return bytes;
  }

 private:
  std::mt19937 random_;
};

TEST(FrameReceiverRandom, AnyChunkingFindsWhatThePlainAlgorithmFinds) {
  const int streams = std::getenv("QUORVANE_LONG") != nullptr ? 10000 : 200;
  for (int seed = 0; seed < streams; ++seed) {
    RandomStream stream(static_cast<unsigned>(seed));
    FrameReceiver receiver;
    RecordingSink sink;
    NaiveReceiver naive;
    for (int i = 0; i < 100; ++i) {
      if (stream.Below(50) == 0) {
        receiver.PortOpened();
        naive.PortOpened();
      }
      Bytes bytes = stream.Next();
      for (const std::uint8_t byte : bytes) naive.Byte(byte);
      while (!bytes.empty()) {
        const std::size_t size = 1 + stream.Below(bytes.size());
        receiver.Receive(std::span(bytes).first(size), sink);
        bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
      }
      ASSERT_EQ(receiver.RxCount(), naive.Count()) << "seed " << seed;
    }
    ASSERT_EQ(sink.found, naive.Found()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace quorvane
