#include <gtest/gtest.h>

#include "tools/field/options.h"

namespace quorvane::field {
namespace {

TEST(FieldOptions, ReadsACommandLine) {
  std::string error;
  const auto line =
      ParseCommandLine({"--mode",  "all",      "--seed", "4294967295", "--count",      "off",
                        "--noise", "0.25",     "--loss", "1",          "--split",      "--link",
                        "f",       "--delay",  "500",    "--quick",    "--controlled", "--starter-at",
                        "9",       "--silent", "DS@0",   "--silent",   "ST@10-20",     "--late",
                        "P2=800",  "--twice",  "PY"},
                       error);
  ASSERT_TRUE(line) << error;
  EXPECT_EQ(line->task, Task::kFly);
  EXPECT_EQ(line->field.mode, 0);
  EXPECT_EQ(line->field.heats, 6);
  EXPECT_EQ(line->field.seed, 4294967295U);
  EXPECT_FALSE(line->field.count);
  EXPECT_EQ(line->field.line.noise, 0.25);
  EXPECT_EQ(line->field.line.loss, 1);
  EXPECT_EQ(line->delay, 500);
  EXPECT_TRUE(line->field.controlled);
  EXPECT_EQ(line->field.starter_at, 9);
  ASSERT_EQ(line->field.silent.size(), 2U);
  EXPECT_GT(line->field.silent[0].to_ms, 1'000'000'000);
  EXPECT_EQ(line->field.silent[1].station, 3);
  EXPECT_EQ(line->field.silent[1].from_ms, 10);
  EXPECT_EQ(line->field.silent[1].to_ms, 20);
  EXPECT_EQ(line->field.late[1], 800);
  EXPECT_TRUE(line->field.twice[6]);
  EXPECT_EQ(ParseCommandLine({}, error)->field.heats, 1);
}

TEST(FieldOptions, RefusesInOneLine) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"--what"}, "unknown argument \"--what\" (--help lists them all)"},
      {{"heat"}, "unknown argument \"heat\" (--help lists them all)"},
      {{"--seed"}, "--seed needs a value"},
      {{"--seed", "-1"}, "--seed takes a number from 0 to 4294967295, not \"-1\""},
      {{"--mode", "7"}, "--mode takes 1 to 6 or \"all\", not \"7\""},
      {{"--heats", "2x"}, "--heats takes a number from 0 to 100000, not \"2x\""},
      {{"--count", "yes"}, "--count takes \"on\" or \"off\", not \"yes\""},
      {{"--noise", "nan"}, "--noise takes a probability from 0 to 1, not \"nan\""},
      {{"--loss", "1.1"}, "--loss takes a probability from 0 to 1, not \"1.1\""},
      {{"--link", ""}, "--link takes a path, not \"\""},
      {{"--hold", "--count", "off"}, "--hold needs the count: it does not go with --count off"},
      {{"--fast", "--heats", "0"}, "--fast needs an end: it does not go with --heats 0"},
      {{"--compare", "a"}, "--compare needs a value"},
      {{"--starter-at", "5"}, "--starter-at goes with --controlled only"},
      {{"--fast", "--controlled"}, "--fast has no console to follow: it does not go with --controlled"},
      {{"--silent", "DS@9-9"},
       "--silent takes a station, \"@\" and one or two times, like DS@5000-9000, not \"DS@9-9\""},
      {{"--silent", "XX@9"},
       "--silent takes a station, \"@\" and one or two times, like DS@5000-9000, not \"XX@9\""},
      {{"--late", "P2"}, "--late takes a station, \"=\" and milliseconds, like P2=800, not \"P2\""},
  };
  for (const auto& [arguments, wanted] : cases) {
    std::string error;
    EXPECT_FALSE(ParseCommandLine(arguments, error));
    EXPECT_EQ(error, wanted);
  }
}

}  // namespace
}  // namespace quorvane::field
