#pragma once

#include <string>
#include <utility>

#include "records/race_record.h"

namespace quorvane {

// A lane that has flown `laps` laps of seven seconds, the first in eight.
inline LaneRecord FlownLane(int number, int laps, int target = 10) {
  static constexpr const char* kNames[] = {"Low Green", "Low Red", "High Green", "High Red"};
  LaneRecord lane;
  lane.lane = number;
  lane.name = kNames[number - 1];
  lane.low = Color::Rgb(0x60FF60);
  lane.lapTarget = target;
  for (int count = 1; count <= laps; ++count) {
    lane.laps.push_back({count, 1000 + 7000 * count + number, false, count == target});
  }
  const bool finished = laps >= target;
  lane.placing = finished ? "First" : "DNF";
  lane.final = finished ? 1000 + 7000 * target + number : 1000000;
  return lane;
}

// A novice's log: the free lap is credited together with the first that is flown.
inline LaneRecord NoviceLane(int number) {
  LaneRecord lane = FlownLane(number, 10);
  lane.novice = true;
  lane.laps[0] = {1, lane.laps[1].time, true, false};
  return lane;
}

inline RaceRecord FlownRace() {
  RaceRecord race;
  race.number = 12;
  race.round = 3;
  race.heat = 2;
  race.mode = 2;
  race.modeName = "AMA 1324";
  race.hasRun = true;
  race.when = {2026, 11, 21, 14, 5, 9};
  race.comments = "Wind from the west.";
  race.eventName = "Fall Classic";
  race.projectFile = "c:\\Quorvane\\21-Nov-2026.ini";
  for (int lane = 1; lane <= 4; ++lane) race.lanes[static_cast<std::size_t>(lane - 1)] = FlownLane(lane, 10);
  return race;
}

inline RaceRecord OneLane(const LaneRecord& lane) {
  RaceRecord race = FlownRace();
  for (LaneRecord& other : race.lanes) other.flies = false;
  race.lanes[0] = lane;
  return race;
}

inline RaceRecord UnflownRace(int mode = 2) {
  RaceRecord race = FlownRace();
  race.hasRun = false;
  race.mode = mode;
  race.comments.clear();
  for (LaneRecord& lane : race.lanes) {
    const LaneRecord flown = std::exchange(lane, {});
    lane.lane = flown.lane;
    lane.name = flown.name;
  }
  if (mode >= 4) race.lanes[3].flies = false;
  return race;
}

}  // namespace quorvane
