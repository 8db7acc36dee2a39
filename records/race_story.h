#pragma once

#include <string>
#include <vector>

#include "records/race_record.h"

namespace quorvane {

// What happened in a lane, entry by entry, for somebody who has to judge its result.

struct StoryRow {
  // "42.31", seconds of race time; of a correction when it was made, "10:15 AM" for that of a saved race.
  std::string time = {};
  std::string what = {};   // "Lap 5", "Cut P2", "Turn", "Struck"
  std::string split = {};  // of a lap
  std::string from = {};   // "Judges 2", "Timers", "by hand"; of a correction: who had made the entry
  std::string remark = {};
  bool doubtful = false;  // the log cannot be the whole truth here: a lap without its turn, a turn too many
  bool correction = false;

  bool operator==(const StoryRow&) const = default;
};

// The entries in the order in which they are counted, then the corrections as they were made. Between two
// laps an aircraft turns once; where no lane of the race has a turn, nobody watched them and none is missed.
std::vector<StoryRow> StoryOf(const RaceRecord& race, const LaneRecord& lane);

bool TurnsWereWatched(const RaceRecord& race);

// Who made an entry, in words: "Judges 1" for "P1", "by hand", "Timers or hand".
std::string MakerText(const std::string& by);

}  // namespace quorvane
