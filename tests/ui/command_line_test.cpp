#include "ui/command_line.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace quorvane {
namespace {

// Throws for a command line that ends the program.
CommandLine Parse(const std::vector<std::string>& arguments) {
  return std::get<CommandLine>(ParseCommandLine(arguments));
}

TEST(CommandLineTest, TakesEverythingInAnyOrder) {
  const CommandLine line = Parse({"--port", "5=/dev/ttyUSB0", "day.ini", "--settings=my.ini", "--port=7=a=b",
                                  "--demo", "out", "--heats", "3"});
  EXPECT_EQ(line.project, "day.ini");
  EXPECT_EQ(line.settings, "my.ini");
  EXPECT_EQ(line.ports, (std::map<int, std::string>{{5, "/dev/ttyUSB0"}, {7, "a=b"}}));
  EXPECT_EQ(line.demo, "out");
  EXPECT_EQ(line.heats, 3);
  EXPECT_EQ(Parse({"--", "--help"}).project, "--help");
  EXPECT_EQ(Parse({}).project, "");
  const CommandLine print =
      Parse({"--print", "7,2-4", "day.ini", "-o", "x.pdf", "--print=9", "--paper", "a4"});
  EXPECT_EQ(print.print.races, (std::vector<int>{7, 2, 3, 4, 9}));
  EXPECT_EQ(Parse({"--print", "1-5000", "day.ini", "-o", "x.pdf"}).print.races.size(), 5000U);
  EXPECT_TRUE(Parse({"--print", "all", "day.ini", "--output=x.pdf"}).print.all);
}

TEST(CommandLineTest, RefusesWithOneLine) {
  for (const std::string wrong : {"--port",
                                  "--port 5",
                                  "--port 0=/dev/x",
                                  "--port 32=/dev/x",
                                  "--port 5=",
                                  "--port =x",
                                  "--port 5x=/dev/x",
                                  "--port 5=a --port 5=b",
                                  "--settings",
                                  "--settings= day.ini",
                                  "--heats 0",
                                  "--heats two",
                                  "--heats 1000",
                                  "a.ini b.ini",
                                  "--nonsense",
                                  "-x",
                                  " ",
                                  "--heats=",
                                  "--demo",
                                  "--print 1 day.ini",
                                  "--print 1 -o x.pdf",
                                  "--print 1 day.ini -o=x.pdf",
                                  "day.ini -o x.pdf",
                                  "--print 0 day.ini -o x.pdf",
                                  "--print 4-2 day.ini -o x.pdf",
                                  "--print 1, day.ini -o x.pdf",
                                  "--print= day.ini -o x.pdf",
                                  "--print 1-5001 day.ini -o x.pdf",
                                  "--print 99999 day.ini -o x.pdf",
                                  "--print 1 a.ini -o x.pdf --paper A5",
                                  "--print 1 a.ini -o x.pdf --demo d"}) {
    const auto parsed = ParseCommandLine(Split(wrong, ' '));
    const auto* ending = std::get_if<Ending>(&parsed);
    ASSERT_NE(ending, nullptr) << wrong;
    EXPECT_EQ(ending->status, 2);
    EXPECT_EQ(ending->text.find('\n'), ending->text.size() - 1) << ending->text;
  }
}

}  // namespace
}  // namespace quorvane
