#include "programs/countdown.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>

namespace quorvane {
namespace {

TEST(Countdown, SoundsAtItsMarksAndNowhereElseAndBreaksOffAtZeroWithoutAClick) {
  const std::vector<std::int16_t> sound = SynthesizeCountdown();
  for (std::size_t tenth = 0; tenth < 600; ++tenth) {
    const bool sounding = tenth >= 595 || tenth % (tenth < 500 ? 100 : 10) == 0;
    const bool fading = tenth > 500 && tenth % 10 == 1;  // the beeps are a little longer than a tenth
    int loudest = 0;
    for (std::size_t i = tenth * kSoundRate / 10; i < (tenth + 1) * kSoundRate / 10; ++i) {
      loudest = std::max(loudest, std::abs(int{sound.at(i)}));
      ASSERT_TRUE(i == 0 || std::abs(sound[i] - sound[i - 1]) < 16000) << i;
    }
    EXPECT_LT(loudest, sounding || fading ? 32000 : 1) << tenth;
    EXPECT_GT(loudest, sounding ? 15000 : -1) << tenth;
  }
  EXPECT_LT(std::abs(sound.back()), 100);

  std::ostringstream file;
  WriteWave(file, sound);
  const std::string bytes = file.str();
  ASSERT_EQ(bytes.size(), 44U + 60U * 22050U * 2U);
  const std::string head(
      "RIFF\x14\x60\x28\x00WAVEfmt "
      "\x10\0\0\0\x01\0\x01\0\x22\x56\0\0\x44\xAC\0\0\x02\0\x10\0data\xF0\x5F\x28\x00",
      44);
  EXPECT_EQ(bytes.substr(0, 44), head);
}

}  // namespace
}  // namespace quorvane
