#include "records/profile_file.h"

#include <gtest/gtest.h>

#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// Name, file, section, key and value, which is left out where there is none.
TEST(ProfileFile, ReadsWhatStandsInAnyFileAndKeepsItsBytes) {
  for (const auto& row : Rows("records/reads.json")) {
    const ProfileFile file(row[1]);
    EXPECT_EQ(file.Read(row[2], row[3]), row.size() > 4 ? std::optional(row[4]) : std::nullopt) << row[0];
    EXPECT_EQ(file.Serialize(), row[1]) << row[0];
  }
}

// Name, the file before, section, key, value and the file after.
TEST(ProfileFile, AWriteChangesTheBytesOfItsValueOnly) {
  for (const auto& row : Rows("records/writes.json")) {
    ProfileFile file(row[1]);
    EXPECT_EQ(file.Write(row[2], row[3], row[4]), row[1] != row[5]) << row[0];
    EXPECT_EQ(file.Serialize(), row[5]) << row[0];
  }
}

}  // namespace
}  // namespace quorvane
