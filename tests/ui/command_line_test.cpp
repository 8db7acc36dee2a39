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
  const CommandLine print = ParseCommandLine({"--print", "7,2-4", "day.ini", "-o", "x.pdf", "--print=9"});
  EXPECT_EQ(print.error, "");
  EXPECT_EQ(print.print.races, (std::vector<int>{7, 2, 3, 4, 9}));
  EXPECT_TRUE(ParseCommandLine({"--print", "all", "day.ini", "--output=x.pdf"}).print.all);
}

TEST(CommandLineTest, RefusesWithOneLine) {
  const std::vector<std::vector<std::string>> wrong = {
      {"--port"},
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
      {"--demo"},
      {"--print", "1", "day.ini"},
      {"--print", "1", "-o", "x.pdf"},
      {"day.ini", "-o", "x.pdf"},
      {"--print", "0", "day.ini", "-o", "x.pdf"},
      {"--print", "4-2", "day.ini", "-o", "x.pdf"},
      {"--print", "1,", "day.ini", "-o", "x.pdf"},
      {"--print", "1-32767", "day.ini", "-o", "x.pdf"},
      {"--print", "99999", "day.ini", "-o", "x.pdf"},
      {"--print", "1", "a.ini", "-o", "x.pdf", "--paper", "A5"}};
  for (const auto& arguments : wrong) {
    const CommandLine line = ParseCommandLine(arguments);
    EXPECT_NE(line.error, "") << arguments.front();
    EXPECT_EQ(line.error.find('\n'), std::string::npos);
  }
}

}  // namespace
}  // namespace quorvane
