#pragma once

#include "records/race_record.h"

namespace quorvane {

// A lane that has flown `laps` laps of seven seconds, the first in eight. A novice is credited with the first
// of them together with the one that is flown.
inline LaneRecord FlownLane(int number, int laps, int target = 10, bool novice = false) {
  static constexpr const char* kNames[] = {"Low Green", "Low Red", "High Green", "Lane 4"};
  LaneRecord lane;
  lane.lane = number;
  lane.name = kNames[number - 1];
  lane.low = Color::Rgb(0x60FF60);
  lane.novice = novice;
  lane.lapTarget = target;
  for (int count = 1; count <= laps; ++count) {
    const bool credited = novice && count == 1;
    lane.laps.push_back({count, 1000 + 7000 * (credited ? 2 : count) + number, credited, count == target});
  }
  lane.placing = laps >= target ? "First" : "DNF";
  if (laps >= target) lane.final = 1000 + 7000 * target + number;
  return lane;
}

// All four have flown ten laps, or the race is still to be flown.
inline RaceRecord FlownRace(bool hasRun = true, int mode = 2) {
  RaceRecord race;
  race.number = 12;
  race.round = 3;
  race.heat = 2;
  race.mode = mode;
  race.modeName = kRaceModeNames[static_cast<std::size_t>(mode - 1)];
  race.hasRun = hasRun;
  race.when = MomentOf(2026, 11, 21, 12, 10, 9);
  race.comments = hasRun ? "Wind from the west." : "";
  race.eventName = "Fall Classic";
  race.projectFile = "c:\\Quorvane\\21-Nov-2026.ini";
  for (int lane = 1; lane <= 4; ++lane) {
    race.lanes[static_cast<std::size_t>(lane - 1)] = FlownLane(lane, hasRun ? 10 : 0);
  }
  if (mode >= kFirstFaiMode) race.lanes[3].flies = false;
  return race;
}

}  // namespace quorvane
