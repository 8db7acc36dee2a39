
#include <algorithm>
#include <limits>
#include <numeric>

#include "base/checked.h"
#include "base/text.h"
#include "results/results_formats.h"
#include "results/results_words.h"

namespace quorvane {
namespace {

constexpr double kNoValue = std::numeric_limits<double>::infinity();

ResultsCell Number(int number) {
  return {std::to_string(number), static_cast<double>(number)};
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

ResultsCell Date(const LocalDateTime& at) {
  const std::int64_t days = (std::int64_t{at.year} * 12 + at.month) * 31 + at.day;
  return {DateAndTime(at), static_cast<double>(((days * 24 + at.hour) * 60 + at.minute) * 60 + at.second)};
}

ResultsRow RowOf(const RaceRecord& race, const LaneRecord& lane) {
  const auto fastest = FastestLap(lane);
  ResultsCell title = Number(race.number);
  if (race.refly != 0) title.text += " REFLY";
  return {{title,
           Number(race.round),
           Number(race.heat),
           {race.modeName, static_cast<double>(race.mode)},
           Date(race.when),
           Number(lane.lane),
           Place(lane),
           Time(FinalText(lane), lane.final),
           Number(static_cast<int>(FlownLaps(lane).size())),
           Number(static_cast<int>(lane.cuts.size())),
           Time(FastestText(lane), fastest ? *fastest->split : 0),
           {RepeatedNote(race), race.stands ? kNoValue : 0.0}},
          race.stands};
}

}  // namespace

ResultsTable::ResultsTable(const ContestRecord& contest) {
  for (const RaceRecord& race : contest.races) {
    for (const LaneRecord& lane : race.lanes) {
      if (lane.flies) rows_.push_back(RowOf(race, lane));
    }
  }
}

std::vector<std::size_t> ResultsTable::Order(std::size_t column, bool descending) const {
  if (column >= kResultsColumns.size()) throw SubscriptError();
  std::vector<std::size_t> order(rows_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t first, std::size_t second) {
    const ResultsCell* a = &rows_[first].cells[column];
    const ResultsCell* b = &rows_[second].cells[column];
    if (a->key == kNoValue || b->key == kNoValue) return a->key < b->key;
    if (descending) std::swap(a, b);
    return a->key != b->key ? a->key < b->key : a->text < b->text;
  });
  return order;
}

std::string ResultsTable::CopyText(std::span<const std::size_t> rows) const {
  std::string text;
  for (const char* name : kResultsColumns) text += (text.empty() ? "" : "\t") + std::string(name);
  text += "\r\n";
  for (const std::size_t index : rows) {
    const ResultsRow& row = Element(rows_, static_cast<std::int64_t>(index));
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      text += (i == 0 ? "" : "\t") + WithoutFormula(row.cells[i].text);
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace quorvane
