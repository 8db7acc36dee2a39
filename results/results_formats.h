#pragma once

#include <array>
#include <cstddef>
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

// A text that a spreadsheet would take for a formula, with an apostrophe before it.
std::string WithoutFormula(const std::string& text);

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

}  // namespace quorvane
