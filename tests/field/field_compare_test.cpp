#include "field/compare.h"
#include "tests/support/test_data.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quorvane::field {
namespace {

// Why the file cannot be read; empty when it can.
std::string Fault(const std::string& file) try {
  ReadHeats(file);
  return "";
} catch (const std::runtime_error& fault) {
  return fault.what();
}

const char* const kFlown =
    R"({"heat":1,"lanes":[)"
    R"({"lane":1,"expected":[8000,16000],"cuts":[],"turns":[1,2],"final":16000,"place":"First"},)"
    R"({"lane":2,"expected":[8500],"cuts":[{"pylon":2,"time":9000}],"turns":[1],"final":1000000,"place":""}]})";
const std::string kShown =
    R"({"heat":1,"lanes":[)"
    R"({"lane":1,"laps":[7940,16060],"cuts":[],"turns":2,"final":16060,"place":"First"},)"
    R"({"lane":2,"laps":[8500],"cuts":[{"pylon":2}],"final":1000000,"place":"DNF"},)"
    R"({"lane":4,"laps":[],"cuts":[],"turns":0,"final":1000000,"place":"DNF"}]})";

// What is shown, what it becomes, whether frames are lost, and the differences.
TEST(FieldCompare, NamesEachDifference) {
  for (const auto& row : Rows("field/differences.json")) {
    const std::string shown = std::string(kShown).replace(kShown.find(row[0]), row[0].size(), row[1]);
    std::string told;
    for (const std::string& line :
         CompareHeats(ReadHeats(kFlown), ReadHeats(shown), {.tolerance = 60, .lossy = row[2] == "lossy"})) {
      told += line + "\n";
    }
    EXPECT_EQ(told, row[3]) << row[1];
  }
}

TEST(FieldCompare, SaysWhyAFileCannotBeRead) {
  for (const auto& row : Rows("field/faults.json")) EXPECT_EQ(Fault(row[0]), row[1]);
  for (std::size_t i = 0; i < kShown.size(); ++i) {  // whatever stands there: it is read or refused
    for (const char c : {'\0', '"', '\\', '{', ']', '9', '\xFF'}) {
      const std::string fault = Fault(std::string(kShown).replace(i, 1, 1, c));
      EXPECT_TRUE(fault.empty() || fault.starts_with("line 1: ")) << fault;
    }
  }
}

}  // namespace
}  // namespace quorvane::field
