#include "ui/demo.h"

#include <gtest/gtest.h>

#include <map>

namespace quorvane {
namespace {

TEST(DescribeLaneTest, TellsWhatTheProjectFileSays) {
  std::map<std::string, std::string> section = {{"NumEvents", "7"},
                                                {"NumCuts", "2"},
                                                {"NumLaps", "2"},
                                                {"Placing", "First"},
                                                {"Position", "1"},
                                                {"Time", "16.84"},
                                                {"Event0", "1,4,L,TM,9051,0"},
                                                {"Event1", "1,0,C,P1,9500,9500"},
                                                {"Event2", "1,1,-C,P2,9600,9400"},
                                                {"Event3", "1,4,T,TM,11115,0"},
                                                {"Event4", "1,254,C,MP3,12000,12000"},
                                                {"Event5", "nonsense"},
                                                {"Event6", "2,4,L,TM,16840,0"}};
  const auto value = [&](const std::string& key) { return section[key]; };
  EXPECT_EQ(
      DescribeLane(2, value).json,
      "{\"lane\":2,\"laps\":[9051,16840],\"cuts\":[{\"pylon\":1,\"time\":9500},{\"pylon\":3,\"time\":12000}],"
      "\"turns\":1,\"final\":16840,\"place\":\"First\"}");
  EXPECT_EQ(DescribeLane(2, value).text, "  lane 2: First in 16.84 s, laps 2, cuts 2");
  section["Position"] = "100";
  section["Placing"] = "say \"no\"";
  EXPECT_NE(DescribeLane(2, value).json.find("\"final\":1000000,\"place\":\"say \\\"no\\\"\""),
            std::string::npos);
}

}  // namespace
}  // namespace quorvane
