#include "base/text.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "base/checked.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// Function, argument and result; "overflow" where the result does not fit.
TEST(Text, FunctionsGiveWhatTheirTableSays) {
  const std::map<std::string, std::function<std::string(const std::string&)>> kFunctions = {
      {"LeadingNumber", [](const auto& text) { return fmt::format("{}", LeadingNumber(text)); }},
      {"LeadingInteger", [](const auto& text) { return fmt::format("{}", LeadingInteger(text)); }},
      {"LeadingLong", [](const auto& text) { return fmt::format("{}", LeadingLong(text)); }},
      {"AddLong 1", [](const auto& text) { return fmt::format("{}", AddLong(LeadingLong(text), 1)); }},
      {"SubtractLong 1",
       [](const auto& text) { return fmt::format("{}", SubtractLong(LeadingLong(text), 1)); }},
      {"FormatRatio",
       [](const auto& text) {
         const std::vector<std::string> parts = Split(text, '/');
         return FormatRatio(LeadingLong(parts[0]), LeadingLong(parts[1]), LeadingLong(parts[2]));
       }},
      {"FormatTenths", [](const auto& ms) { return FormatTenths(LeadingLong(ms)); }},
      {"FormatSeconds", [](const auto& ms) { return FormatSeconds(LeadingLong(ms)); }},
      {"FormatMinutes", FormatMinutes},
      {"Split", [](const auto& text) { return fmt::format("{}", Split(text, ',')); }},
      {"JsonString", [](const auto& text) { return JsonString(text); }},
      {"AppendUtf8", [](const auto& code) {
         std::string text;
         AppendUtf8(text, static_cast<char32_t>(LeadingLong(code)));
         return text;
       }}};
  for (const auto& row : Rows("base/texts.json")) {
    std::string result;
    try {
      result = kFunctions.at(row[0])(row[1]);
    } catch (const OverflowError&) {
      result = "overflow";
    }
    EXPECT_EQ(result, row[2]) << row[0] << " of " << row[1];
  }
}

}  // namespace
}  // namespace quorvane
