#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "records/race_record.h"

namespace quorvane {

// The results of a contest as a file: every flight with its lanes and laps, and a summary per lane and for
// the contest. Each is UTF-8 text of a whole file; results/README.md describes them.

// For a terminal or a printer: lines of at most kTextColumns characters.
inline constexpr int kTextColumns = 100;
std::string ResultsText(const ContestRecord& contest);

// A row for each lane of each flight, as a spreadsheet expects it (RFC 4180). byteOrderMark: for spreadsheets
// that would otherwise not take the file as UTF-8.
std::string ResultsCsv(const ContestRecord& contest, bool byteOrderMark);

std::string ResultsJson(const ContestRecord& contest);

// One page that needs nothing else. program: name and version for its foot.
std::string ResultsHtml(const ContestRecord& contest, std::string_view program);

// ---- The same as a table for a window: a row for each lane of each flight.

inline constexpr std::array<const char*, 12> kResultsColumns = {
    "Race", "Round", "Heat", "Mode", "Date", "Lane", "Place", "Time", "Laps", "Cuts", "Fastest Lap", "Note"};

struct ResultsCell {
  std::string text;
  double key = 0.0;  // sorts first; the text decides between equal keys
  bool operator==(const ResultsCell&) const = default;
};

struct ResultsRow {
  std::array<ResultsCell, kResultsColumns.size()> cells;
  bool stands = true;  // false: the flight was repeated and does not count
  bool operator==(const ResultsRow&) const = default;
};

std::vector<ResultsRow> ResultsRows(const ContestRecord& contest);

// By a column. Equal rows keep their order, and what has no value comes last either way.
std::vector<ResultsRow> SortedRows(std::vector<ResultsRow> rows, std::size_t column, bool descending);

// The header and these rows with tabs between the cells: what a spreadsheet takes from the clipboard.
std::string CopyText(const std::vector<ResultsRow>& rows);

// ---- The words and sums that all of them share.

std::string ContestTitle(const ContestRecord& contest);
std::string RaceTitle(const RaceRecord& race);  // "Race 12 REFLY"
// Why a flight does not count: "reflown by Refly 2"; empty when it does.
std::string RepeatedNote(const RaceRecord& race);
// What was unusual about the race, also that a station fell silent in it: laps that it told late have no true
// splits. A station that never spoke has told none.
std::string UnusualText(const RaceRecord& race);
// Both, for a column.
std::string NoteText(const RaceRecord& race);
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
