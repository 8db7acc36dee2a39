#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/color.h"
#include "forms/platform.h"
#include "race/race_state.h"
#include "records/radio_record.h"

namespace quorvane {

// What is known of one race, for the heat report and for results. Taken from the lanes' logs, never from what
// the windows show, but for the places. Times are ms of race time.

inline constexpr int kLastRace = 32767;  // races are numbered from 1 in 16 bits
inline constexpr std::array<const char*, 6> kRaceModeNames = {"RaceHorse", "AMA 1324", "AMA 2413",
                                                              "FAI 123",   "FAI 231",  "FAI 312"};

inline constexpr int kMostLaps = 11;  // that are listed of a lane

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

// One entry of a lane's log, also one that counts no more.
struct EntryRecord {
  std::string kind;   // "L" lap, "C" cut, "-C" cut withdrawn, "T" turn
  int count = 0;      // the lane's laps at that moment; after the lap, for a lap
  std::string by;     // who made it: a station's code, "hand", "TM or hand" where nobody has noted that
  std::string pylon;  // as of a cut
  std::int32_t time = 0;
  std::int32_t firstReported = 0;  // of a cut: a withdrawal overwrites its time; 0: not known
};

// What the operator has changed in a lane's log.
struct CorrectionRecord {
  std::int32_t time = 0;  // when; 0: after the race had been saved
  std::string what;       // "struck", "inserted", "moved", "undone", "redone"
  std::string by;         // who had made the entry
  std::optional<EntryRecord> before;
  std::optional<EntryRecord> after;
  std::optional<LocalDateTime> amended = {};  // when the saved race was put right, where that is known
};

// What a text of a saved race was before an amendment, and what it became.
struct AmendedText {
  LocalDateTime when;
  std::string before;
  std::string after;
};

inline constexpr int kMostCorrections = 200;  // that are listed of a lane; also of amendments

struct LaneRecord {
  int lane = 1;      // 1..4
  std::string name;  // the lane's marking, "Low Green"
  Color low = kButtonFace;
  Color high = kButtonFace;
  bool flies = true;               // false: no such lane in this race mode
  bool novice = false;             // flew nine laps for ten
  std::string placing;             // "First", "DNF", "DBL CUT", or what the operator wrote
  std::string position;            // "1".."4", "100" without a result, "Locked" placed by hand
  std::int32_t final = kNoResult;  // kNoResult and above: none
  int lapTarget = 10;
  std::vector<LapRecord> laps;
  std::vector<CutRecord> cuts;  // those in force; withdrawn ones are left out
  std::vector<std::int32_t> turns;
  std::vector<EntryRecord> entries;  // all of the log, in its order
  std::vector<CorrectionRecord> corrections;
  std::vector<AmendedText> places;  // that amendments have changed
};

struct RaceRecord {
  int number = 1;
  int refly = 0;       // serial number of the refly, 0: the race itself
  int reflownBy = 0;   // the refly that stands in the place of this flight, 0: none
  bool stands = true;  // this flight is the race's result; false for a flight that was repeated
  int round = 1;
  int heat = 1;
  int mode = 0;          // 1..6
  std::string modeName;  // "AMA 1324"
  bool hasRun = false;
  LocalDateTime when;  // meaningful when it has run
  std::string comments;
  std::string recovered;  // from a crash: what may be missing, "4.00 s not judged"; empty: it was not
  int amendments = 0;     // how often it was put right after it had been saved
  std::vector<AmendedText> amendedComments;
  std::optional<RadioRecord> radio;  // of a race from a file only where something went wrong
  std::string eventName;
  std::string projectFile;
  std::array<LaneRecord, 4> lanes;
};

// The lanes that fly in the race's mode: the first ones.
inline std::span<const LaneRecord> FlyingLanes(const RaceRecord& race) {
  return {race.lanes.begin(), std::ranges::find(race.lanes, false, &LaneRecord::flies)};
}

// A lap as it is listed: numbered as flown, so that a novice's laps run from 1 to 9.
struct FlownLap {
  int number = 1;
  std::int32_t time = 0;
  std::optional<std::int32_t> split = {};  // none where the lap before is not known
  bool finishing = false;
};

// The laps up to the lane's target, in rising order, without a novice's free lap.
std::vector<FlownLap> FlownLaps(const LaneRecord& lane);
// The one with the shortest split; the earlier of two.
std::optional<FlownLap> FastestLap(const LaneRecord& lane);

// Whether anything was seen of the lane in this race.
bool HasFlown(const LaneRecord& lane);
// The final time is one, and not what a hand-edited file says.
bool HasResult(const LaneRecord& lane);

// What was unusual about a race, "Recovered: 4.00 s not judged. Amended once."; empty for nothing.
std::string UnusualNote(const RaceRecord& race);
// "lap 5 at 42.31", "cut P2 at 30.99".
std::string EntryText(const EntryRecord& entry);

// All flights of a contest by race number; of the flights of one race the one that stands comes first.
struct ContestRecord {
  std::string eventName;
  std::string projectFile;
  std::vector<RaceRecord> races;
};

}  // namespace quorvane
