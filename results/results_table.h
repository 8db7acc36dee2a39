#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "records/race_record.h"

namespace quorvane {

struct ResultsCell {
  std::string text;
  double key = 0.0;  // sorts first; the text decides between equal keys
};

inline constexpr std::array<const char*, 12> kResultsColumns = {
    "Race", "Round", "Heat", "Mode", "Date", "Lane", "Place", "Time", "Laps", "Cuts", "Fastest Lap", "Note"};

struct ResultsRow {
  std::array<ResultsCell, kResultsColumns.size()> cells;
  bool stands = true;  // false: the flight was repeated and does not count
};

// The results of a contest as one table, a row for each lane of each flight, for a window: what its cells
// show, how its columns sort, and what "Copy" takes along.
class ResultsTable {
 public:
  ResultsTable() = default;
  explicit ResultsTable(const ContestRecord& contest);

  const std::vector<ResultsRow>& Rows() const { return rows_; }

  // The rows' indexes sorted by a column (SubscriptError for one that is not there). Equal rows keep the
  // order of the races, and what has no value comes last either way.
  std::vector<std::size_t> Order(std::size_t column, bool descending) const;

  // The header and these rows, in this order, with tabs between the cells: what a spreadsheet takes from the
  // clipboard.
  std::string CopyText(std::span<const std::size_t> rows) const;

 private:
  std::vector<ResultsRow> rows_;
};

}  // namespace quorvane
