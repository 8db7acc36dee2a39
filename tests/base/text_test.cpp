#include "base/text.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/checked.h"
#include "base/stations.h"

namespace quorvane {
namespace {

TEST(Text, LeadingNumberStopsWhereTheNumberEnds) {
  for (const char* text : {"", "abc", "-", ".", "nan", "inf", "0x10", "--1", "1e-999"})
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  for (const char* text : {"1e", "1e+", "1,5", "+1.", " \t1x"}) EXPECT_EQ(LeadingNumber(text), 1) << text;
  EXPECT_EQ(LeadingNumber("46347.375, 11/21/2026"), 46347.375);
  EXPECT_EQ(LeadingNumber("-.5e3"), -500);
  EXPECT_EQ(LeadingNumber("-1e999"), -HUGE_VAL);
}

TEST(Text, WholeNumbersRoundHalvesToEvenAndRefuseWhatDoesNotFit) {
  const std::pair<const char*, int> kCases[] = {{"2.5", 2}, {"3.5", 4}, {"-2.5", -2}, {"32767.4", 32767}};
  for (const auto& [text, value] : kCases) EXPECT_EQ(LeadingInteger(text), value) << text;
  for (const char* text : {"32768", "-32769"}) EXPECT_THROW(LeadingInteger(text), OverflowError);
  EXPECT_THROW(LeadingLong("1e999"), OverflowError);
  EXPECT_THROW(AddLong(2147483647, 1), OverflowError);
  EXPECT_THROW(SubtractLong(-2147483647 - 1, 1), OverflowError);
}

TEST(Text, FixedFormatsRoundTheExactDecimalHalvesAwayFromZero) {
  const struct {
    std::int64_t numerator, denominator;
    int decimals;
    const char* text;
  } kCases[] = {{1005, 1000, 2, "1.01"}, {1004, 1000, 2, "1.00"}, {-1005, 1000, 2, "-1.01"},
                {-4, 1000, 2, "0.00"},   {49, 1000, 1, "0.0"},    {50, 1000, 1, "0.1"},
                {995, 1000, 2, "1.00"},  {7, 2, 0, "4"},          {1881 * 128, 25500, 1, "9.4"}};
  for (const auto& c : kCases) EXPECT_EQ(FormatRatio(c.numerator, c.denominator, c.decimals), c.text);
}

TEST(Text, RaceTimesReadAsTheBoardShowsThem) {
  EXPECT_EQ(FormatTenths(-60), "-0.1");
  const std::pair<int, const char*> kSeconds[] = {{0, "nt"}, {-5, "nt"}, {1, "0.00"}, {75505, "75.51"}};
  for (const auto& [ms, shown] : kSeconds) EXPECT_EQ(FormatSeconds(ms), shown);
  const std::pair<const char*, const char*> kMinutes[] = {
      {"69.99", "1:09.99"}, {"60.00", "60.00"},    {"60.01", "1:00.01"},    {"nt", "nt"},
      {"DNF", "DNF"},       {"120.00", "2:00.00"}, {"119.9996", "1:00.00"}, {"600.1", "10:00.10"}};
  for (const auto& [text, shown] : kMinutes) EXPECT_EQ(FormatMinutes(text), shown) << text;
}

TEST(Text, SplitKeepsEmptyFieldsAndJsonIsEscaped) {
  EXPECT_TRUE(Split("", ',').empty());
  EXPECT_EQ(Split(",a,b,", ','), (std::vector<std::string>{"", "a", "b", ""}));
  EXPECT_EQ(JsonString("a\"\\\r\x1F\xE9"), "\"a\\\"\\\\\\r\\u001F\xE9\"");
}

TEST(Text, EachCharacterTakesAsManyBytesAsUtf8Gives) {
  std::string text;
  for (const char32_t code : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) AppendUtf8(text, code);
  EXPECT_EQ(text, "\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF");
}

}  // namespace
}  // namespace quorvane
