// The results as one table for a window.

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "records/project.h"
#include "results/results_formats.h"
#include "results/results_words.h"

namespace quorvane {
namespace {

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
  ResultsCell title = Number(race.number);
  if (race.refly != 0) title.text += " REFLY";
  return {{title,
           Number(race.round),
           Number(race.heat),
           {race.modeName, static_cast<double>(race.mode)},
           {DateAndTime(race.when), static_cast<double>(SecondsBetween(kDayZero, race.when))},
           Number(lane.lane),
           Place(lane),
           Time(FinalText(lane), lane.final),
           Number(FlownLaps(lane).size()),
           Number(lane.cuts.size()),
           Time(FastestText(lane), fastest ? *fastest->split : 0),
           {RepeatedNote(race), race.stands ? kNoValue : 0.0}},
          race.stands};
}

}  // namespace

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
