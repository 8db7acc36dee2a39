#include "field/compare.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/scratch_folder.h"
#include "tests/support/test_data.h"

namespace quorvane::field {
namespace {

// Why the file cannot be read; empty when it can.
std::string Fault(const std::string& file) try {
  ReadHeats(file);
  return "";
} catch (const std::runtime_error& fault) {
  return fault.what();
}

const std::string kFlown = FileBytes(TestData() + "/field/flown.jsonl");
const std::string kShown = FileBytes(TestData() + "/field/shown.jsonl");

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
