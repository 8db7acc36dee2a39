#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "field/compare.h"

namespace quorvane::field {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<ToldHeat> Read(const std::string& text) {
  std::istringstream in(text);
  std::string error;
  const auto heats = ReadHeats(in, error);
  EXPECT_TRUE(heats) << error;
  return heats.value_or(std::vector<ToldHeat>());
}

const char* const kFlown =
    R"({"heat":1,"lanes":[)"
    R"({"lane":1,"expected":[8000,16000],"cuts":[],"turns":[1,2],"final":16000,"place":"First"},)"
    R"({"lane":2,"expected":[8500],"cuts":[{"pylon":2,"time":9000}],"turns":[1],"final":1000000,"place":""}]})";

TEST(FieldCompare, NamesEachDifference) {
  struct Case {
    const char* name;
    std::string lanes;
    bool lossy;
    std::vector<std::string> differences;
  };
  const std::string lane1 =
      R"({"lane":1,"laps":[8010,16060],"cuts":[],"turns":2,"final":16060,"place":"First"})";
  const std::string lane2 = R"({"lane":2,"laps":[8500],"cuts":[{"pylon":2}],"final":1000000,"place":"DNF"})";
  const std::string idle4 = R"({"lane":4,"laps":[],"cuts":[],"turns":0,"final":1000000,"place":"DNF"})";
  const Case cases[] = {
      {"equal", lane1 + "," + lane2 + "," + idle4, false, {}},
      {"lane missing", lane1, false, {"heat 1 lane 2: flown, but not shown"}},
      {"lap late",
       R"({"lane":1,"laps":[8061,16000],"cuts":[],"final":16000,"place":"First"},)" + lane2,
       false,
       {"heat 1 lane 1: lap 1 at 8000 flown, at 8061 shown"}},
      {"late on a bad line",
       R"({"lane":1,"laps":[9000,17000],"cuts":[],"final":17000,"place":"First"},)" + lane2,
       true,
       {}},
      {"early on a bad line",
       R"({"lane":1,"laps":[7900,17000],"cuts":[],"final":17000,"place":"First"},)" + lane2,
       true,
       {"heat 1 lane 1: lap 1 at 8000 flown, at 7900 shown"}},
      {"lap invented",
       R"({"lane":1,"laps":[8000,16000,17000],"cuts":[],"final":16000,"place":"First"},)" + lane2,
       true,
       {"heat 1 lane 1: 2 laps flown, 3 shown"}},
      {"lap lacking without a result",
       lane1 + R"(,{"lane":2,"laps":[],"cuts":[{"pylon":2}],"final":1000000,"place":""})",
       true,
       {}},
      {"lap lacking with a result",
       R"({"lane":1,"laps":[8000],"cuts":[],"final":1000000,"place":""},)" + lane2,
       true,
       {"heat 1 lane 1: 2 laps flown, 1 shown", "heat 1 lane 1: final 16000 flown, no result shown"}},
      {"cut elsewhere",
       lane1 + R"(,{"lane":2,"laps":[8500],"cuts":[{"pylon":3}],"final":1000000,"place":""})",
       false,
       {"heat 1 lane 2: 1 cuts at pylon 2 flown, 0 shown",
        "heat 1 lane 2: 0 cuts at pylon 3 flown, 1 shown"}},
      {"cut late",
       lane1 + R"(,{"lane":2,"laps":[8500],"cuts":[{"pylon":2,"time":9999}],"final":1000000,"place":""})",
       false,
       {"heat 1 lane 2: cut at pylon 2 at 9000 flown, at 9999 shown"}},
      {"place",
       R"({"lane":1,"laps":[8000,16000],"cuts":[],"turns":3,"final":16000,"place":"Second"},)" + lane2,
       false,
       {"heat 1 lane 1: 2 turns flown, 3 shown", "heat 1 lane 1: First flown, Second shown"}},
      {"place against the shown finals",
       R"({"lane":1,"laps":[8000,16000],"cuts":[],"final":16000,"place":"Second"},)" + lane2,
       true,
       {"heat 1 lane 1: Second shown, but its final is First"}},
      {"a lane that does not fly",
       lane1 + "," + lane2 + R"(,{"lane":3,"laps":[6000],"cuts":[],"final":1000000,"place":""})",
       false,
       {"heat 1 lane 3: 0 laps flown, 1 shown"}},
  };
  for (const Case& c : cases) {
    const auto shown = Read(R"({"heat":1,"lanes":[)" + c.lanes + "]}");
    EXPECT_EQ(CompareHeats(Read(kFlown), shown, {.tolerance = 60, .lossy = c.lossy}), c.differences)
        << c.name;
  }
  EXPECT_THAT(CompareHeats(Read(kFlown), {}, {}), ElementsAre("1 heats flown, 0 shown"));
  EXPECT_THAT(CompareHeats(Read(kFlown), Read(R"({"heat":2,"lanes":[]})"), {}),
              ElementsAre("heat 1: heat 2 shown in its place"));
  EXPECT_THAT(CompareHeats(Read(kFlown), Read(std::string("\n{\"ms\":1,\"rx\":\"55\"}\r\n") + kFlown), {}),
              IsEmpty());
}

TEST(FieldCompare, SaysWhyAFileCannotBeRead) {
  const std::pair<const char*, const char*> cases[] = {
      {"\n[]", "line 2: not a JSON object"},
      {"{\"heat\":1", "line 1: not a JSON object"},
      {"{\"heat\":1.5}", "line 1: \"heat\" is not a whole number"},
      {"{\"heat\":1}", "line 1: \"lanes\" is not an array"},
      {R"({"heat":1,"lanes":[7]})", "line 1: \"lane\" is not a whole number"},
      {R"({"heat":1,"lanes":[{"lane":5}]})", "line 1: there is no lane 5"},
      {R"({"heat":1,"lanes":[{"lane":1,"laps":[1e99]}]})", "line 1: \"laps\" is not a whole number"},
      {R"({"heat":1,"lanes":[{"lane":1,"laps":[],"cuts":[{}]}]})", "line 1: \"pylon\" is not a whole number"},
      {R"({"heat":1,"lanes":[{"lane":1,"laps":[],"cuts":[],"final":"x"}]})",
       "line 1: \"final\" is not a whole number"},
  };
  for (const auto& [text, fault] : cases) {
    std::istringstream in(text);
    std::string error;
    EXPECT_FALSE(ReadHeats(in, error)) << text;
    EXPECT_EQ(error, fault);
  }
}

TEST(FieldCompare, SurvivesEveryChangeOfALine) {
  const std::string line = kFlown;
  for (std::size_t i = 0; i < line.size(); ++i) {
    for (const char c : {'\0', '"', '\\', '{', ']', '9', '\xFF'}) {
      std::istringstream in(std::string(line).replace(i, 1, 1, c));
      std::string error;
      const bool read = ReadHeats(in, error).has_value();
      EXPECT_EQ(read, error.empty());
    }
  }
}

}  // namespace
}  // namespace quorvane::field
