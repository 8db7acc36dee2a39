// The results as rows, one for each lane of each flight: as comma-separated values, and for a window.

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "base/text.h"
#include "records/project.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

// A text that a spreadsheet would take for a formula, with an apostrophe before it.
std::string WithoutFormula(const std::string& text) {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  const bool formula =
      std::string_view("=+-@\t\r").find_first_of(text.substr(first, 1)) != std::string_view::npos;
  return formula ? "'" + text : text;
}

std::string Quoted(const std::string& field) {
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  return '"' + Replaced(field, "\"", "\"\"") + '"';
}

// A text that somebody has typed. Numbers of ours need no such care.
std::string Typed(const std::string& text) {
  return WithoutFormula(OneLine(text));
}

void AppendRow(std::string& csv, std::vector<std::string> fields) {
  for (std::string& field : fields) field = Quoted(field);
  csv += Join(fields, ',') + "\r\n";
}

std::vector<std::string> Header() {
  std::vector<std::string> fields = {"Race", "Refly", "Counts",      "Note",  "Round", "Heat",
                                     "Mode", "Date",  "Lane",        "Name",  "Place", "Time",
                                     "Laps", "Cuts",  "Fastest Lap", "9 Laps"};
  for (const char* column : {"Lap ", "Split "}) {
    for (int i = 1; i <= kMostLaps; ++i) fields.push_back(column + std::to_string(i));
  }
  fields.insert(fields.end(), {"Cut List", "Comments"});
  return fields;
}

std::vector<std::string> LaneFields(const RaceRecord& race, const LaneRecord& lane) {
  std::vector<std::string> fields = {std::to_string(race.number),
                                     race.refly != 0 ? std::to_string(race.refly) : "",
                                     race.stands ? "yes" : "no",
                                     Typed(NoteText(race)),
                                     std::to_string(race.round),
                                     std::to_string(race.heat),
                                     Typed(race.modeName),
                                     MomentText(race.when, ' '),
                                     std::to_string(lane.lane),
                                     Typed(lane.name),
                                     Typed(lane.placing),
                                     HasResult(lane) ? FormatSeconds(lane.final) : "",
                                     std::to_string(FlownLaps(lane).size()),
                                     std::to_string(lane.cuts.size()),
                                     FastestText(lane),
                                     lane.novice ? "yes" : "no"};
  const LapTexts laps = LapTextsOf(lane);
  fields.insert(fields.end(), laps.times.begin(), laps.times.end());
  fields.insert(fields.end(), laps.splits.begin(), laps.splits.end());
  fields.insert(fields.end(), {Typed(CutList(lane, "; ")), Typed(CommentsOf(race))});
  return fields;
}

// ---- The window's table.

constexpr double kNoValue = std::numeric_limits<double>::infinity();

ResultsCell Number(double number) {
  return {fmt::format("{:.0f}", number), number};
}

ResultsCell Time(const std::string& text, double ms) {
  return {text, text.empty() ? kNoValue : ms};
}

// A place given by hand is only known by its word; places that are no number come last, by their words.
ResultsCell Place(const LaneRecord& lane) {
  const std::string text = OneLine(lane.placing);
  const auto word =
      std::ranges::find_if(kPlaceWords, [&](const char* known) { return EqualsIgnoringCase(text, known); });
  if (word != kPlaceWords.end()) return {text, static_cast<double>(word - kPlaceWords.begin() + 1)};
  return {text, text.empty() ? kNoValue : 100.0};
}

ResultsRow RowOf(const RaceRecord& race, const LaneRecord& lane) {
  const auto fastest = FastestLap(lane);
  const std::string note = NoteText(race);
  ResultsCell title = Number(race.number);
  if (race.refly != 0) title.text += " REFLY";
  return {{title,
           Number(race.round),
           Number(race.heat),
           {race.modeName, static_cast<double>(race.mode)},
           {DateAndTime(race.when), static_cast<double>((race.when - kDayZero).count())},
           Number(lane.lane),
           Place(lane),
           Time(FinalText(lane), lane.final),
           Number(FlownLaps(lane).size()),
           Number(lane.cuts.size()),
           Time(FastestText(lane), fastest ? *fastest->split : 0),
           {note, note.empty()  ? kNoValue
                  : race.stands ? 1.0
                                : 0.0}},
          race.stands};
}

}  // namespace

std::string ResultsCsv(const ContestRecord& contest, bool byteOrderMark) {
  std::string csv = std::string(byteOrderMark ? kByteOrderMark : "");
  AppendRow(csv, Header());
  for (const RaceRecord& race : contest.races) {
    for (const LaneRecord& lane : FlyingLanes(race)) AppendRow(csv, LaneFields(race, lane));
  }
  return csv;
}

std::vector<ResultsRow> ResultsRows(const ContestRecord& contest) {
  std::vector<ResultsRow> rows;
  for (const RaceRecord& race : contest.races) {
    for (const LaneRecord& lane : FlyingLanes(race)) rows.push_back(RowOf(race, lane));
  }
  return rows;
}

std::vector<ResultsRow> SortedRows(std::vector<ResultsRow> rows, std::size_t column, bool descending) {
  std::ranges::stable_sort(rows, [&](const ResultsRow& first, const ResultsRow& second) {
    const ResultsCell* a = &first.cells.at(column);
    const ResultsCell* b = &second.cells.at(column);
    if (a->key == kNoValue || b->key == kNoValue) return a->key < b->key;
    if (descending) std::swap(a, b);
    return a->key != b->key ? a->key < b->key : a->text < b->text;
  });
  return rows;
}

std::string CopyText(const std::vector<ResultsRow>& rows) {
  std::string text = fmt::format("{}\r\n", fmt::join(kResultsColumns, "\t"));
  for (const ResultsRow& row : rows) {
    std::vector<std::string> cells;
    for (const ResultsCell& cell : row.cells) cells.push_back(WithoutFormula(cell.text));
    text += Join(cells, '\t') + "\r\n";
  }
  return text;
}

}  // namespace quorvane
