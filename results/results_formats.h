#pragma once

#include <string>
#include <string_view>

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

}  // namespace quorvane
