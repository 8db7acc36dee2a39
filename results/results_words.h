#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "records/race_record.h"

namespace quorvane {

// The words and sums that every form of the results shares.

std::string ContestTitle(const ContestRecord& contest);
std::string RaceTitle(const RaceRecord& race);  // "Race 12 REFLY"
// Why a flight does not count: "reflown by Refly 2"; empty when it does.
std::string RepeatedNote(const RaceRecord& race);
std::string DateAndTime(const LocalDateTime& when);  // "21-Nov-2026 9:00 AM"
std::string FinalText(const LaneRecord& lane);       // "1:02.35", empty without a result
std::string FastestText(const LaneRecord& lane);     // "5.82", empty without a fastest lap
std::string CutText(const CutRecord& cut);           // "P2 34.56"
std::string CutList(const LaneRecord& lane, std::string_view separator);
// The comments; empty when nobody wrote any.
std::string CommentsOf(const RaceRecord& race);
// One line of text without control characters, so that no value of a file can disturb a table or a terminal.
std::string OneLine(std::string_view text);

// Times and splits of a lane by the number of the lap; empty where there is none.
struct LapTexts {
  std::array<std::string, kMostLaps> times;
  std::array<std::string, kMostLaps> splits;
};
LapTexts LapTextsOf(const LaneRecord& lane);

// The best time of a lane or of the contest, and where it was flown. Of equal times the earlier race counts.
struct BestTime {
  std::int32_t time = 0;  // ms
  int race = 1;
  int refly = 0;
  int lane = 1;
  int lap = 0;  // of a lap; 0 for a whole heat
};
// "62.35 (race 12, lane 3, lap 4)", empty for none; the lane is left out where the table names it.
std::string BestText(const std::optional<BestTime>& best, bool tellLane);

struct FlightSummary {
  int racesFlown = 0;  // of a lane: those in which anything was seen of it
  int cuts = 0;
  std::optional<BestTime> fastestHeat = {};
  std::optional<BestTime> fastestLap = {};
};

// Counts only the flights that stand.
struct ContestSummary : FlightSummary {
  std::array<FlightSummary, 4> lanes;
};
ContestSummary SummaryOf(const ContestRecord& contest);

}  // namespace quorvane
