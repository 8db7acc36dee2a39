#include "programs/field_options.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace quorvane::field {
namespace {

TEST(FieldOptions, ReadsACommandLine) {
  const auto parsed = ParseCommandLine(Split(
      "--mode all --seed 4294967295 --count off --noise 0.25 --loss 1 --split --link f --delay 500 --quick "
      "--controlled --starter-at 9 --silent DS@0 --silent ST@10-20 --late P2=800 --twice PY",
      ' '));
  const auto* line = std::get_if<CommandLine>(&parsed);
  ASSERT_NE(line, nullptr) << std::get<Ending>(parsed).text;
  EXPECT_EQ(line->task, Task::kFly);
  EXPECT_EQ(line->field.mode, 0);
  EXPECT_EQ(line->field.heats, 6);
  EXPECT_EQ(line->field.seed, 4294967295U);
  EXPECT_FALSE(line->field.count);
  EXPECT_EQ(line->delay, 500);
  EXPECT_EQ(line->field.starter_at, 9);
  ASSERT_EQ(line->field.silent.size(), 2U);
  EXPECT_GT(line->field.silent[0].to_ms, 1'000'000'000);
  const Silence& silence = line->field.silent[1];
  EXPECT_EQ(std::tuple(int{silence.station}, silence.from_ms, silence.to_ms), std::tuple(3, 10, 20));
  EXPECT_EQ(line->field.late[1], 800);
  EXPECT_TRUE(line->field.twice[6]);
  EXPECT_EQ(std::get<CommandLine>(ParseCommandLine({})).field.heats, 1);
}

TEST(FieldOptions, RefusesInOneLine) {
  for (const char* arguments :
       {"--what", "heat", "--seed", "--seed -1", "--mode 7", "--heats 2x", "--count maybe", "--noise nan",
        "--loss 1.1", "--link ", "--hold --count off", "--fast --heats 0", "--compare a", "--starter-at 5",
        "--fast --controlled", "--silent DS@9-9", "--silent XX@9", "--late P2", "--late P2=x"}) {
    const auto parsed = ParseCommandLine(Split(arguments, ' '));
    const auto* ending = std::get_if<Ending>(&parsed);
    ASSERT_NE(ending, nullptr) << arguments;
    EXPECT_EQ(ending->status, 2);
    EXPECT_EQ(ending->text.find('\n'), ending->text.size() - 1) << ending->text;
  }
}

}  // namespace
}  // namespace quorvane::field
