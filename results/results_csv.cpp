// The results as comma-separated values: one row for each lane of each flight.

#include <vector>

#include "base/time_text.h"
#include "results/results_formats.h"
#include "results/results_words.h"

namespace quorvane {
namespace {

std::string Quoted(const std::string& field) {
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  std::string text = "\"";
  for (const char c : field) text += c == '"' ? std::string("\"\"") : std::string(1, c);
  return text + "\"";
}

// A text that somebody has typed. Numbers of ours need no such care.
std::string Typed(const std::string& text) {
  return WithoutFormula(OneLine(text));
}

void AppendRow(std::string& csv, const std::vector<std::string>& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) csv += (i == 0 ? "" : ",") + Quoted(fields[i]);
  csv += "\r\n";
}

std::vector<std::string> Header() {
  std::vector<std::string> fields = {"Race", "Refly", "Counts",      "Note",  "Round", "Heat",
                                     "Mode", "Date",  "Lane",        "Name",  "Place", "Time",
                                     "Laps", "Cuts",  "Fastest Lap", "9 Laps"};
  for (int i = 1; i <= kLapColumns; ++i) fields.push_back("Lap " + std::to_string(i));
  for (int i = 1; i <= kLapColumns; ++i) fields.push_back("Split " + std::to_string(i));
  fields.insert(fields.end(), {"Cut List", "Comments"});
  return fields;
}

std::string CutList(const LaneRecord& lane) {
  std::string list;
  for (const CutRecord& cut : lane.cuts) {
    list += (list.empty() ? "" : "; ") + cut.pylon + " " + FormatSeconds(cut.time);
  }
  return list;
}

std::vector<std::string> LaneFields(const RaceRecord& race, const LaneRecord& lane) {
  const std::vector<FlownLap> laps = FlownLaps(lane);
  const auto fastest = FastestLap(lane);
  std::vector<std::string> fields = {std::to_string(race.number),
                                     race.refly != 0 ? std::to_string(race.refly) : "",
                                     race.stands ? "yes" : "no",
                                     RepeatedNote(race),
                                     std::to_string(race.round),
                                     std::to_string(race.heat),
                                     Typed(race.modeName),
                                     IsoDate(race.when, ' '),
                                     std::to_string(lane.lane),
                                     Typed(MarkingOf(lane)),
                                     Typed(lane.placing),
                                     HasResult(lane) ? FormatSeconds(lane.final) : "",
                                     std::to_string(laps.size()),
                                     std::to_string(lane.cuts.size()),
                                     fastest ? FormatSeconds(*fastest->split) : "",
                                     lane.novice ? "yes" : "no"};
  std::vector<std::string> times(kLapColumns);
  std::vector<std::string> splits(kLapColumns);
  for (const FlownLap& lap : laps) {
    const auto column = static_cast<std::size_t>(lap.number - 1);
    times[column] = FormatSeconds(lap.time);
    if (lap.split) splits[column] = FormatSeconds(*lap.split);
  }
  fields.insert(fields.end(), times.begin(), times.end());
  fields.insert(fields.end(), splits.begin(), splits.end());
  fields.push_back(Typed(CutList(lane)));
  fields.push_back(Typed(CommentsOf(race)));
  return fields;
}

}  // namespace

std::string WithoutFormula(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  const bool formula =
      first != std::string::npos && std::string_view("=+-@\t\r").find(text[first]) != std::string_view::npos;
  return formula ? "'" + text : text;
}

std::string ResultsCsv(const ContestRecord& contest, bool byteOrderMark) {
  std::string csv = byteOrderMark ? "\xEF\xBB\xBF" : "";
  AppendRow(csv, Header());
  for (const RaceRecord& race : contest.races) {
    for (const LaneRecord& lane : race.lanes) {
      if (lane.flies) AppendRow(csv, LaneFields(race, lane));
    }
  }
  return csv;
}

}  // namespace quorvane
