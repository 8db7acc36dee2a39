#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/checked.h"
#include "race/race_state.h"

namespace quorvane {

// The source of an entry made at the panel.
inline constexpr int kPanelSource = 254;
// Of each lap, also of one from the panel.
inline constexpr int kTimersStation = 4;

// One entry of a lane's event log. Times are ms of race time.
struct LaneEvent {
  std::uint8_t Count = 0;   // the lane's laps at the moment of entry; after the lap, for a lap
  std::uint8_t Source = 0;  // 0..6 a station, 254 the panel
  std::string Kind = {};    // "L" lap, "C" cut, "-C" cut withdrawn, "T" turn
  std::string SourceName = {};
  std::int32_t EventTime = 0;
  // When a cut was first reported: a withdrawal overwrites EventTime; 0 otherwise.
  std::int32_t FirstReported = 0;
  // Not among the six fields that the project file keeps.
  bool ByHand = false;
  bool Moved = false;   // a judge's cut that has the name of another pylon's judge
  unsigned Serial = 0;  // of one entry in its log, whatever happens around it; no other one ever has it

  bool operator==(const LaneEvent& other) const;  // the six fields
};

// Its times, by so many ms.
void MoveTime(LaneEvent& event, std::int32_t by);
// As the project file keeps it: six fields joined by commas.
std::string EventText(const LaneEvent& event);

// An entry was put right after it had been made.
struct Correction {
  std::int32_t time = 0;    // ms of race time; 0 of a race that had been saved
  std::string what = {};    // "struck", "inserted", "moved", "undone", "redone"
  std::string by = {};      // who had made the entry: "hand", a station's code, "TM or hand"
  std::string before = {};  // the entry's text, empty when it was not there
  std::string after = {};
  std::string amended = {};  // when a saved race was put right, as the project file keeps a time

  bool operator==(const Correction&) const = default;
};
// Joined by semicolons, the time or that of the amendment first.
std::string CorrectionText(const Correction& correction);

// A new entry, named after its source. OverflowError for a source or a count outside 0..255. An entry of the
// panel is named after the missed pylon: "ME", "MP1".."MP3".
LaneEvent Entry(const char* kind, std::int32_t time, int source, int count, int missedPylon = 0);

// A report of how many cuts one source sees on the lane now.
struct CutReport {
  int wanted = 0;
  int source = 0;
  std::int32_t time = 0;
  int laps = 0;        // of the lane
  int lapOfCut = 0;    // laps, or one less for a cut that belongs before the latest lap
  int cutsOnLane = 0;  // of all sources, before this report
  int missedPylon = 0;
};

// The value of a key in the lane's section of a project file, empty when it is not there.
using LaneValue = std::function<std::string(const std::string& key)>;
using SetLaneValue = std::function<void(const std::string& key, const std::string& value)>;

// A lane's event log, in order of entry. A full one raises SubscriptError; an error has changed nothing.
class LaneLog {
 public:
  static constexpr int kSlots = 101;

  int EventCount() const { return count_; }
  // Any slot, also beyond EventCount.
  const LaneEvent& operator[](std::int64_t index) const { return Element(events_, index); }
  std::span<const LaneEvent> Entries() const { return {events_.data(), static_cast<std::size_t>(count_)}; }
  int CountLaps() const;                           // the count of the latest lap, 0 without one
  const LaneEvent* LatestLap() const;              // null without one
  std::int32_t LatestLapTime() const;              // 0 without one
  unsigned Revision() const { return revision_; }  // another one after each change

  void AddEvent(LaneEvent event);
  // Brings the cuts of the report's source to what it reports: the latest excess cuts are withdrawn, one that
  // was withdrawn less than a second ago counts again, missing ones are logged; all of them or none.
  void EnterCuts(const CutReport& report);
  void MoveTimes(std::int32_t by);   // of all entries, also of those that were put right in flight; ms
  void Require(int entries) const {  // so many free slots, or a SubscriptError
    if (entries > kSlots - count_) throw SubscriptError();
  }

  void Clear() {  // the slots keep what they hold
    count_ = 0;
    handKnown_ = true;
    corrections_.clear();
    struckCuts_.fill(0);
    ++revision_;
  }
  // The log that a lane's section describes. Its values may be anything: an entry that makes no sense leaves
  // its slot as it is, and there are never more than the log holds.
  void Read(const LaneValue& value);

  // Who made an entry.
  unsigned LastSerial() const { return serial_; }
  int Find(unsigned serial) const;   // its index, -1 when it is not there
  void MarkByHand(unsigned behind);  // the entries with a serial above that
  std::string MadeBy(const LaneEvent& event) const;
  int FreeLap() const;  // the index of a novice's free lap, -1 without one
  // A novice's, whose free lap comes back with the first lap when all have been struck.
  bool CreditsLap() const;
  // From one race time to another, also one of a station that was struck.
  bool HasTurnWithin(std::int64_t from, std::int64_t to) const;

  // Putting right. Each is kept as a correction, made at race time `now` in ms. A lap that goes or comes is
  // counted in all entries behind it; a novice's free lap stays with whichever lap is the first.
  struct Taken {
    LaneEvent event;
    unsigned before = 0;  // the entry in whose place it stood; 0: it was the last
  };
  Taken Strike(int index, std::int32_t now, const char* what);
  void PutBack(const Taken& taken, std::int32_t now, const char* what, bool withFreeLap);
  // Returns its serial.
  unsigned InsertLap(std::int32_t lapTime, std::int32_t now, bool withFreeLap);
  // To pylon 1..3. A judge's light that reported it goes on belonging to it.
  void MoveCut(int index, int pylon, std::int32_t now);
  const std::vector<Correction>& Corrections() const { return corrections_; }
  void DateCorrection(std::string amended) { corrections_.back().amended = std::move(amended); }
  // "Corrections", "Correction0"..., "ByHand", "MovedCuts"; and for a race that goes on, what the stations'
  // lights still say of cuts that were struck.
  void KeepCorrections(const SetLaneValue& set, bool raceGoesOn) const;

 private:
  void ReadCorrections(const LaneValue& value);
  void Edit(bool withFreeLap, const std::function<void(std::vector<LaneEvent>&)>& edit);
  void Record(std::int32_t now, const char* what, const LaneEvent& of, std::string before, std::string after);

  std::array<LaneEvent, kSlots> events_;
  int count_ = 0;
  unsigned revision_ = 0;
  unsigned serial_ = 0;
  bool handKnown_ = true;  // false: read from a file that does not say which entries were made by hand
  std::vector<Correction> corrections_;
  std::array<std::uint8_t, 4> struckCuts_ = {};  // that a judge or the starter reports and that do not count
};

// Laps, cuts and the result, replayed from the log.
struct LapRecount {
  std::int16_t laps = 0;
  std::int16_t lapTarget = 10;
  std::int16_t cutCount = 0;
  std::int16_t cutsBeforeFinish = 0;
  std::int32_t finalTime = kNoResult;          // of a lane that flew its target, even with too many cuts
  std::array<std::int16_t, 4> pylonCuts = {};  // at pylons 1..3, then those from any other source
};
LapRecount RecountLaps(const LaneLog& log, bool isFaiMode);

// A mark of the cut strip. Later marks replace earlier ones of the same index.
struct CutMark {
  int index = 0;
  int column = 0;  // lap column 0..10
  bool grey = false;
  std::string caption = {};
  std::string tag = {};
};

inline constexpr int kLastLapCell = 10;
inline constexpr int kLastCutMark = 39;

// Turns, cuts and the strip of marks. Here laps are the number of lap entries, at most one more than the
// target, and each cut counts for the pylon of the log's first entry.
struct CutRecount : LapRecount {
  std::int16_t turns = 0;
  std::vector<CutMark> marks = {};
};
CutRecount RecountCuts(const LaneLog& log, bool isFaiMode);

}  // namespace quorvane
