#include "programs/countdown.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>

namespace quorvane {
namespace {

const std::vector<std::int16_t>& Sound() {
  static const std::vector<std::int16_t> samples = SynthesizeCountdown();
  return samples;
}

int Loudest(double from, double to) {
  int loudest = 0;
  for (auto i = std::lround(from * kSoundRate); i < std::lround(to * kSoundRate); ++i) {
    loudest = std::max(loudest, std::abs(int{Sound()[static_cast<std::size_t>(i)]}));
  }
  return loudest;
}

TEST(Countdown, IsSixtySecondsLong) {
  std::ostringstream file;
  WriteWave(file, Sound());
  const std::string bytes = file.str();
  ASSERT_EQ(bytes.size(), 44U + 60U * 22050U * 2U);
  const std::string head(
      "RIFF\x14\x60\x28\x00WAVEfmt "
      "\x10\0\0\0\x01\0\x01\0\x22\x56\0\0\x44\xAC\0\0\x02\0\x10\0data\xF0\x5F\x28\x00",
      44);
  EXPECT_EQ(bytes.substr(0, 44), head);
}

TEST(Countdown, SoundsAtItsMarksAndNowhereElse) {
  for (int tenth = 0; tenth < 600; ++tenth) {
    const bool sounding = tenth >= 595 || tenth % (tenth < 500 ? 100 : 10) == 0;
    const bool fading = tenth > 500 && tenth % 10 == 1;  // the beeps are a little longer than a tenth
    const int loudest = Loudest(tenth / 10.0, (tenth + 1) / 10.0);
    if (sounding) {
      EXPECT_GT(loudest, 15000) << tenth;
    } else if (!fading) {
      EXPECT_EQ(loudest, 0) << tenth;
    }
  }
}

TEST(Countdown, BreaksOffAtZeroWithoutAClick) {
  EXPECT_GT(Loudest(59.985, 59.995), 10000);
  EXPECT_LT(std::abs(Sound().back()), 100);
  for (std::size_t i = 1; i < Sound().size(); ++i) {
    ASSERT_LT(std::abs(Sound()[i] - Sound()[i - 1]), 16000) << i;
    ASSERT_LT(std::abs(int{Sound()[i]}), 32000) << i;
  }
}

}  // namespace
}  // namespace quorvane
