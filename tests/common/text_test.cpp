#include "common/text.h"

#include <gtest/gtest.h>

#include <cmath>

#include "common/bits.h"
#include "common/checked.h"
#include "common/time_text.h"

namespace quorvane {
namespace {

TEST(Text, LeadingNumberStopsWhereTheNumberEnds) {
  const struct {
    const char* text;
    double value;
  } kCases[] = {
      {"", 0},
      {"abc", 0},
      {"12 (h=4, r=3)", 12},
      {"2 (index to refly", 2},
      {" \t-7.5x", -7.5},
      {"+3", 3},
      {".5", 0.5},
      {"5.", 5},
      {"1e3", 1000},
      {"1e", 1},
      {"1e+", 1},
      {"-", 0},
      {".", 0},
      {"True", 0},
      {"nan", 0},
      {"inf", 0},
      {"0x10", 0},
      {"1,5", 1},
      {"62.35", 62.35},
      {"46347.375, 11/21/2026", 46347.375},
      {"--1", 0},
      {"1e-999", 0},
      {"4.5     ", 4.5},
  };
  for (const auto& c : kCases) EXPECT_EQ(LeadingNumber(c.text), c.value) << c.text;
  EXPECT_EQ(LeadingNumber("1e999"), HUGE_VAL);
  EXPECT_EQ(LeadingNumber("-1e999"), -HUGE_VAL);
}

TEST(Text, WholeNumbersRoundHalvesToEvenAndRefuseWhatDoesNotFit) {
  EXPECT_EQ(LeadingInteger("2.5"), 2);
  EXPECT_EQ(LeadingInteger("3.5"), 4);
  EXPECT_EQ(LeadingInteger("-2.5"), -2);
  EXPECT_EQ(LeadingInteger("32767.4"), 32767);
  EXPECT_THROW(LeadingInteger("32768"), OverflowError);
  EXPECT_THROW(LeadingInteger("-32769"), OverflowError);
  EXPECT_THROW(LeadingLong("1e999"), OverflowError);
  EXPECT_THROW(AddLong(2147483647, 1), OverflowError);
  EXPECT_THROW(SubtractLong(-2147483647 - 1, 1), OverflowError);
}

TEST(Text, FixedFormatsRoundTheExactDecimalHalvesAwayFromZero) {
  const struct {
    std::int64_t numerator, denominator;
    int decimals;
    const char* text;
  } kCases[] = {
      {1005, 1000, 2, "1.01"},       {1004, 1000, 2, "1.00"}, {-1005, 1000, 2, "-1.01"},
      {-4, 1000, 2, "0.00"},         {49, 1000, 1, "0.0"},    {50, 1000, 1, "0.1"},
      {999999, 1000, 2, "1000.00"},  {995, 1000, 2, "1.00"},  {7, 2, 0, "4"},
      {1881 * 128, 25500, 1, "9.4"},
  };
  for (const auto& c : kCases) EXPECT_EQ(FormatRatio(c.numerator, c.denominator, c.decimals), c.text);
}

TEST(Text, RaceTimesReadAsTheBoardShowsThem) {
  EXPECT_EQ(FormatSeconds(0), "nt");
  EXPECT_EQ(FormatSeconds(-5), "nt");
  EXPECT_EQ(FormatSeconds(1), "0.00");
  EXPECT_EQ(FormatSeconds(75505), "75.51");
  EXPECT_EQ(FormatTenths(-60), "-0.1");
  const struct {
    const char* text;
    const char* shown;
  } kCases[] = {{"65.30", "1:05.30"},  {"60.00", "60.00"},      {"60.01", "1:00.01"},
                {"nt", "nt"},          {"DNF", "DNF"},          {"75.50", "1:15.50"},
                {"120.00", "2:00.00"}, {"119.9996", "1:00.00"}, {"600.1", "10:00.10"}};
  for (const auto& c : kCases) EXPECT_EQ(FormatMinutes(c.text), c.shown) << c.text;
}

TEST(Text, BytesAsHexAndBits) {
  EXPECT_EQ(Hex2(0), "00");
  EXPECT_EQ(Hex2(10), "0A");
  EXPECT_EQ(Hex2(255), "FF");
  EXPECT_EQ(Hex(3), "3");
  EXPECT_EQ(Hex(0x4F), "4F");
  EXPECT_EQ(BitString(5), "ooooo1o1");
  EXPECT_EQ(BitString(0x80), "1ooooooo");
}

TEST(Text, SplitKeepsEmptyFields) {
  EXPECT_TRUE(Split("", ',').empty());
  EXPECT_EQ(Split(",,", ',').size(), 3U);
  EXPECT_EQ(Split("a,b,", ','), (std::vector<std::string>{"a", "b", ""}));
  EXPECT_EQ(JsonString("a\"\\\r\x01"), "\"a\\\"\\\\\\r\\u0001\"");
}

}  // namespace
}  // namespace quorvane
