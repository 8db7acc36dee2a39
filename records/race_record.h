#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "common/color.h"
#include "common/platform.h"

namespace quorvane {

// What is known of one race, as plain data: for the heat report and for tables of results. Taken from the
// lanes' logs, never from what the windows show, but for the places. Times are ms of race time.

struct LapRecord {
  int count = 0;           // 1..11
  std::int32_t time = 0;   // when the lap was completed
  bool credited = false;   // the free lap of a novice
  bool finishing = false;  // the lap that completed the lane's target
};

struct CutRecord {
  std::string pylon;  // "P1".."P3", "ST", "MP1".."MP3", "ME"
  std::int32_t time = 0;
  int lap = 0;  // laps flown when it was reported
};

struct LaneRecord {
  int lane = 1;      // 1..4
  std::string name;  // the lane's marking, " Low Green"
  Color low = kButtonFace;
  Color high = kButtonFace;
  bool flies = true;             // false: no such lane in this race mode
  bool novice = false;           // flew nine laps for ten
  std::string placing;           // "First", "DNF", "DBL CUT", or what the operator wrote
  std::string position;          // "1".."4", "100" without a result, "Locked" placed by hand
  std::int32_t final = 1000000;  // 1000000 and above: no result
  int lapTarget = 10;
  std::vector<LapRecord> laps;
  std::vector<CutRecord> cuts;  // those in force; withdrawn ones are left out
  std::vector<std::int32_t> turns;
};

struct RaceRecord {
  int number = 1;
  int refly = 0;      // serial number of the refly, 0: the race itself
  int reflownBy = 0;  // of an original: the refly that repeats it, 0: none
  int round = 1;
  int heat = 1;
  int mode = 0;          // 1..6
  std::string modeName;  // "AMA 1324"
  bool hasRun = false;
  LocalDateTime when;  // meaningful when it has run
  std::string comments;
  std::string eventName;
  std::string projectFile;
  std::array<LaneRecord, 4> lanes;
};

}  // namespace quorvane
