#include "ui/command_line.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(CommandLineTest, TakesEverythingInAnyOrder) {
  const CommandLine line = ParseCommandLine({"--port", "5=/dev/ttyUSB0", "day.ini", "--settings=my.ini",
                                             "--port=7=a=b", "--demo", "out", "--heats", "3"});
  EXPECT_EQ(line.error, "");
  EXPECT_EQ(line.project, "day.ini");
  EXPECT_EQ(line.settings, "my.ini");
  EXPECT_EQ(line.ports, (std::map<int, std::string>{{5, "/dev/ttyUSB0"}, {7, "a=b"}}));
  EXPECT_EQ(line.demo, "out");
  EXPECT_EQ(line.heats, 3);
  EXPECT_EQ(ParseCommandLine({"--", "--help"}).project, "--help");
  EXPECT_TRUE(ParseCommandLine({"--help"}).help);
  EXPECT_TRUE(ParseCommandLine({"--version"}).version);
  EXPECT_EQ(ParseCommandLine({}).error, "");
}

TEST(CommandLineTest, RefusesWithOneLine) {
  const std::vector<std::vector<std::string>> wrong = {{"--port"},
                                                       {"--port", "5"},
                                                       {"--port", "0=/dev/x"},
                                                       {"--port", "32=/dev/x"},
                                                       {"--port", "5="},
                                                       {"--port", "=x"},
                                                       {"--port", "5x=/dev/x"},
                                                       {"--port", "5=a", "--port", "5=b"},
                                                       {"--settings"},
                                                       {"--settings="},
                                                       {"--heats", "0"},
                                                       {"--heats", "two"},
                                                       {"--heats", "1000"},
                                                       {"a.ini", "b.ini"},
                                                       {"--nonsense"},
                                                       {"-x"},
                                                       {""},
                                                       {"--helpx"},
                                                       {"--heats="},
                                                       {"--demo"}};
  for (const auto& arguments : wrong) {
    const CommandLine line = ParseCommandLine(arguments);
    EXPECT_NE(line.error, "") << arguments.front();
    EXPECT_EQ(line.error.find('\n'), std::string::npos);
  }
}

}  // namespace
}  // namespace quorvane
