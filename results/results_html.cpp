// The results as one page for a browser, a phone and the printer.

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <vector>

#include "base/text.h"
#include "records/project.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

constexpr const char* kStyle = R"(
:root{color-scheme:light}
body{font:16px/1.4 system-ui,sans-serif;color:#111;background:#fff;margin:0 auto;padding:1rem;max-width:60rem}
h1{font-size:1.6rem;margin:0}
h2{font-size:1.15rem;margin:2rem 0 .3rem}
h2 small{font-weight:normal;color:#444;white-space:nowrap}
p{margin:.3rem 0}
table{border-collapse:collapse;width:100%;font-variant-numeric:tabular-nums}
th,td{border:1px solid #bbb;padding:.2rem .4rem;text-align:right;vertical-align:top}
.lanes td{white-space:nowrap}
th{background:#eee}
tr>:first-child{text-align:left;white-space:normal;width:6.5em}
td small{display:block;color:#555;white-space:nowrap}
.lanes{table-layout:fixed}
.lanes .place td{white-space:normal;overflow-wrap:break-word;font-weight:bold;font-size:1.1rem}
.finish{background:#d8f0d8;font-weight:bold}
.repeated{color:#666}
.repeated h2 b{font-weight:bold;text-decoration:underline}
.mark{display:inline-block;width:.8em;height:.8em;border:1px solid #555;margin-right:.3em}
footer{margin-top:2rem;color:#555;font-size:.85rem}
@media(max-width:30rem){body{padding:.5rem;font-size:14px}.lanes .place td{font-size:1em}th,td{padding:.15rem .25rem}tr>:first-child{width:4.4em}}
@media print{body{max-width:none;padding:0;font-size:9.5pt}section{break-inside:avoid}
h2{margin-top:1.2em}th,td{padding:.05rem .35rem}.lanes td{white-space:normal}td small{display:inline-block;margin-left:.8em}
th,.finish{print-color-adjust:exact;-webkit-print-color-adjust:exact}@page{margin:12mm}}
)";

std::string Escaped(std::string_view text) {
  static constexpr std::pair<const char*, const char*> kEntities[] = {
      {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&#39;"}};
  std::string html = OneLine(text);
  if (html.find_first_of("&<>\"'") == std::string::npos) return html;
  for (const auto& [character, entity] : kEntities) html = Replaced(html, character, entity);
  return html;
}

std::string Cell(const std::string& html, const char* attributes = "") {
  return fmt::format("<td{}>{}</td>", attributes, html);
}

// A row of a race's table: a head, then a cell for each lane that flies.
template <typename Content>
std::string Row(const std::string& head, const RaceRecord& race, Content content,
                const char* attributes = "") {
  std::string html = fmt::format("<tr{}><th scope=\"row\">{}</th>", attributes, head);
  for (const LaneRecord& lane : FlyingLanes(race)) html += content(lane);
  return html + "</tr>\n";
}

std::string LapCell(const std::vector<FlownLap>& laps, int number) {
  const auto lap = std::ranges::find(laps, number, &FlownLap::number);
  if (lap == laps.end()) return Cell("");
  const std::string split = lap->split ? "<small>" + FormatSeconds(*lap->split) + "</small>" : "";
  return Cell(FormatSeconds(lap->time) + split, lap->finishing ? " class=\"finish\"" : "");
}

std::string CutsCell(const LaneRecord& lane) {
  std::string html = std::to_string(lane.cuts.size());
  for (const CutRecord& cut : lane.cuts) html += "<small>" + Escaped(CutText(cut)) + "</small>";
  return Cell(html);
}

std::string LanesTable(const RaceRecord& race) {
  std::string html = "<table class=\"lanes\">\n";
  html += Row("Lane", race, [](const LaneRecord& lane) {
    return fmt::format("<th scope=\"col\">{}{}</th>", lane.lane, lane.novice ? " (9 Laps)" : "");
  });
  html += Row(
      "Place", race, [](const LaneRecord& lane) { return Cell(Escaped(lane.placing)); }, " class=\"place\"");
  html += Row("Time", race, [](const LaneRecord& lane) { return Cell(FinalText(lane)); });
  std::map<int, std::vector<FlownLap>> laps;  // of each lane
  int last = 0;
  for (const LaneRecord& lane : FlyingLanes(race)) {
    for (const FlownLap& lap : laps[lane.lane] = FlownLaps(lane)) last = std::max(last, lap.number);
  }
  for (int number = 1; number <= last; ++number) {
    html += Row("Lap " + std::to_string(number), race,
                [&](const LaneRecord& lane) { return LapCell(laps[lane.lane], number); });
  }
  html += Row("Fastest lap", race, [](const LaneRecord& lane) { return Cell(FastestText(lane)); });
  html += Row("Cuts", race, CutsCell);
  return html + "</table>\n";
}

std::string RaceSection(const RaceRecord& race) {
  const std::string note = RepeatedNote(race);
  const std::string comments = Escaped(CommentsOf(race));
  const std::string unusual = Escaped(UnusualText(race));
  return fmt::format(
      "<section{}>\n<h2>{}{} <small>Round {}, Heat {}</small> <small>{}</small> <small>{}</small></h2>\n"
      "{}{}{}</section>\n",
      race.stands ? "" : " class=\"repeated\"", RaceTitle(race), note.empty() ? "" : " <b>(" + note + ")</b>",
      race.round, race.heat, Escaped(race.modeName), DateAndTime(race.when), LanesTable(race),
      unusual.empty() ? "" : "<p>" + unusual + "</p>\n",
      comments.empty() ? "" : "<p>Comments: " + comments + "</p>\n");
}

std::string SummaryRow(const std::string& head, const FlightSummary& of, bool tellLane) {
  return fmt::format("<tr><th scope=\"row\">{}</th><td>{}</td><td>{}</td><td>{}</td><td>{}</td></tr>\n", head,
                     of.racesFlown, of.cuts, BestText(of.fastestHeat, tellLane),
                     BestText(of.fastestLap, tellLane));
}

std::string SummarySection(const ContestRecord& contest) {
  const ContestSummary summary = SummaryOf(contest);
  std::string html =
      "<section>\n<h2>Summary</h2>\n<table>\n<tr><th>Lane</th><th>Races flown</th><th>Cuts</th>"
      "<th>Fastest heat</th><th>Fastest lap</th></tr>\n";
  int lane = 0;
  for (const FlightSummary& of : summary.lanes) html += SummaryRow(std::to_string(++lane), of, false);
  return html + SummaryRow("Contest", summary, true) + "</table>\n</section>\n";
}

}  // namespace

std::string ResultsHtml(const ContestRecord& contest, std::string_view program) {
  const std::string title = Escaped(ContestTitle(contest));
  std::string html = fmt::format(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>{0}</title>\n"
      "<style>{1}</style>\n</head>\n<body>\n<h1>{0}</h1>\n",
      title, kStyle);
  html += contest.races.empty() ? "<p>No race has been run.</p>\n" : SummarySection(contest);
  for (const RaceRecord& race : contest.races) html += RaceSection(race);
  return html + fmt::format("<footer>{} &middot; {}</footer>\n</body>\n</html>\n",
                            Escaped(FileNameOf(contest.projectFile)), Escaped(program));
}

}  // namespace quorvane
