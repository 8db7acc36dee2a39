// The results as comma-separated values: one row for each lane of each flight.

#include <vector>

#include "base/text.h"
#include "results/results_formats.h"
#include "results/results_words.h"

namespace quorvane {
namespace {

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
                                     RepeatedNote(race),
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

}  // namespace

std::string WithoutFormula(const std::string& text) {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  const bool formula =
      std::string_view("=+-@\t\r").find_first_of(text.substr(first, 1)) != std::string_view::npos;
  return formula ? "'" + text : text;
}

std::string ResultsCsv(const ContestRecord& contest, bool byteOrderMark) {
  std::string csv = std::string(byteOrderMark ? kByteOrderMark : "");
  AppendRow(csv, Header());
  for (const RaceRecord& race : contest.races) {
    for (const LaneRecord& lane : FlyingLanes(race)) AppendRow(csv, LaneFields(race, lane));
  }
  return csv;
}

}  // namespace quorvane
