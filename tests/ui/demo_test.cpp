#include "ui/demo.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(Demo, TellsOfARaceWhatTheProjectFileSays) {
  RaceRecord race;
  race.lanes[0].lane = 2;
  race.lanes[0].placing = "First";
  race.lanes[0].final = 16840;
  race.lanes[0].laps = {{1, 9051}, {2, 16840}};
  race.lanes[0].cuts = {{"P1", 9500, 1}, {"MP3", 12000, 1}, {"ME", 12001, 1}};
  race.lanes[0].turns = {11115};
  race.lanes[1].lane = 3;
  race.lanes[1].placing = "say \"no\"";
  race.lanes[2].flies = race.lanes[3].flies = false;
  EXPECT_EQ(HeatJson(7, race),
            "{\"heat\":7,\"lanes\":[{\"lane\":2,\"laps\":[9051,16840],\"cuts\":[{\"pylon\":1,\"time\":9500},"
            "{\"pylon\":3,\"time\":12000},{\"pylon\":0,\"time\":12001}],\"turns\":1,\"final\":16840,"
            "\"place\":\"First\"},{\"lane\":3,\"laps\":[],\"cuts\":[],\"turns\":0,\"final\":1000000,"
            "\"place\":\"say \\\"no\\\"\"}]}");
  EXPECT_EQ(HeatText(7, race),
            "Heat 7\n  lane 2: First in 16.84 s, laps 2, cuts 3\n  lane 3: say \"no\", laps 0, cuts 0\n");
}

}  // namespace
}  // namespace quorvane
