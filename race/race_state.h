#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/checked.h"
#include "base/color.h"
#include "forms/platform.h"

namespace quorvane {

// A final time, in ms, of a lane that has no result.
inline constexpr std::int32_t kNoResult = 1000000;
inline constexpr int kFirstFaiMode = 4;  // of the race modes 1..6
inline constexpr int kFaiLanes = 3;      // that an FAI mode flies
inline constexpr std::array kPlaceWords = {"First", "Second", "Third", "Fourth"};

// How a lane's aircraft is marked.
struct LaneMarking {
  std::string name = {};  // " Low Green"
  Color low = kButtonFace;
  Color high = kButtonFace;
};

// How a race was received by radio, from its start to its end.
struct RadioRecord {
  struct Station {  // one that was expected
    std::string name;
    std::int64_t frames = 0;          // that it was heard with, acknowledgements too
    std::int64_t longestSilence = 0;  // ms
  };
  std::int64_t damaged = 0;  // frames
  std::vector<Station> stations = {};
  bool lively = true;  // so many stations spoke that the silence of another one tells something
};

// The race variables that all parts of the program share; one instance for the program.
struct RaceState {
  std::int16_t RaceNumber = 1;    // counted from 1 across rounds
  std::int16_t LastRaceRun = 0;   // last race finalized; -1 after the heat was advanced by hand
  std::string LastRaceFile = {};  // the project in which that was
  std::int16_t HeatsPerRound = 1;
  std::int16_t NumberReflys = 0;
  std::int16_t RaceMode = 1;      // 1..6
  bool IsFaiMode = false;         // modes 4, 5 and 6
  bool RaceActive = false;        // initialized, and neither finalized nor reset
  bool RaceHolding = false;       // the clock display is held
  bool ManualStart = false;       // started with the Start button
  bool RaceDone = false;          // concluded
  bool Unsaved = false;           // has a result that may be saved
  bool StartInfoPending = false;  // the next frame sent announces the start
  bool ReflyMode = false;         // the race on the console repeats one that has run
  bool RaceLoaded = false;        // the race on the console was shown from the project file
  bool Amending = false;          // and is being put right
  std::int32_t RaceStartRef = 0;  // stopwatch reading, in ms, that counts as race time zero
  // ms: the corrected clock of the last station heard, or what the Start button puts in its place.
  std::int32_t LaneStartOffset = 0;
  bool CommActive = false;  // the chosen serial port is open and works
  std::int16_t LaneColorScheme = 1;
  std::string ProjectFile = {};
  std::string ProjectBaseName = {};
  std::string ResultsFile = {};

  bool BeingFlown() const { return RaceActive && !RaceDone; }
  // It keeps its number and its mode, and no key adds to it.
  bool WaitsForSave() const { return RaceDone && Unsaved; }
  // It may have been started by radio while a box was open.
  bool AtStake() const { return BeingFlown() || Unsaved; }
  bool MayCorrect() const { return Amending || (AtStake() && !RaceLoaded); }  // its logs may be put right

  int HeatsInRound() const { return std::max<int>(HeatsPerRound, 1); }  // a file may say anything
  int Round() const { return (RaceNumber - 1) / HeatsInRound() + 1; }
  int Heat() const { return (RaceNumber - 1) % HeatsInRound() + 1; }
};

// Ms of race time in this event, from RaceStartRef on a free-running stopwatch; OverflowError beyond 32 bits.
class RaceClock {
 public:
  RaceClock(const EventClock& clock, RaceState& race) : clock_(clock), race_(race) {}

  std::int32_t RaceTime() const { return SubtractLong(ToLong(clock_.Now() - zero_), race_.RaceStartRef); }
  void ResetStopwatch() { zero_ = clock_.Now(); }
  // Starts the clock anew at `offset` ms of race time.
  void ResetRaceClock(std::int32_t offset) {
    ResetStopwatch();
    race_.RaceStartRef = SubtractLong(0, offset);
  }

 private:
  const EventClock& clock_;
  RaceState& race_;
  std::int64_t zero_ = 0;
};

}  // namespace quorvane
