#include "lane/lane_progress.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace quorvane {
namespace {

// "6.0 c 12.5": laps in seconds, c a cut.
LaneProgress Flown(const std::string& story) {
  LaneLog log;
  std::istringstream words(story);
  for (std::string word; words >> word;) {
    const bool cut = word == "c";
    const auto time = cut ? 1000 : static_cast<std::int32_t>(std::lround(std::stod(word) * 1000));
    log.AddEvent(Entry(cut ? "C" : "L", time, cut ? 0 : kTimersStation, log.CountLaps() + (cut ? 0 : 1)));
  }
  LaneProgress progress = ProgressOf(log, false, false);
  progress.shown = true;
  return progress;
}

TEST(LaneProgress, TellsTheGapAtTheLastLapAndWholeLapsWhenTheLeaderHasComeRound) {
  const std::vector<std::string> kCases[] = {
      // Two lanes, and what the second of them shows.
      {"", "", ""},
      {"6", "", ""},
      {"6 12", "", "-1 lap"},
      {"6 12", "6.5 12.25", "+0.25"},
      {"6 12 18", "6.5 12.25", "+0.25"},  // it stands until the lane is timed again
      {"6 12 18", "6.5 18.5", "-1 lap"},  // passed
      {"6 12 18 24", "6.5", "-2 laps"},   // not seen for long
      {"6 12", "6 12", "+0.00"},
      {"6 12", "5.9 11.9", "Leader"},
      {"c 6 12", "6.1 12.1", "Leader"},  // the other lane has a lap more to fly
      {"6 12", "c 6 12 18.5", "+6.50"},
      {"6 12", "c c 6 12", ""},
      {"c c 6 12 18", "6 13", "Leader"},
  };
  for (const auto& row : kCases) {
    const std::vector lanes = {Flown(row[0]), Flown(row[1])};
    EXPECT_EQ(GapText(lanes, 1), row[2]) << row[0] << " and " << row[1];
  }
  const LaneProgress cut = Flown("6 12.2 c 18");
  EXPECT_EQ(cut.flown * 100 + cut.due, 311);
  EXPECT_EQ(cut.lastLap, 5800);
}

}  // namespace
}  // namespace quorvane
