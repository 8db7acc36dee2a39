// The results as one page for a browser, a phone and the printer.

#include <algorithm>
#include <vector>

#include "base/time_text.h"
#include "records/project.h"
#include "results/results_formats.h"
#include "results/results_words.h"

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
  std::string html;
  for (const char c : OneLine(text)) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string Cell(const std::string& html, const char* attributes = "") {
  return "<td" + std::string(attributes) + ">" + html + "</td>";
}

// A row of a race's table: a head, then a cell for each lane.
template <typename Content>
std::string Row(const std::string& head, const std::vector<const LaneRecord*>& lanes, Content content,
                const char* attributes = "") {
  std::string html = "<tr" + std::string(attributes) + "><th scope=\"row\">" + head + "</th>";
  for (const LaneRecord* lane : lanes) html += content(*lane);
  return html + "</tr>\n";
}

std::string Swatch(Color color) {
  if (color.SystemColor() != Color::System::None) return {};
  return "<span class=\"mark\" style=\"background:#" + color.Name() + "\"></span>";
}

std::string LapCell(const LaneRecord& lane, int number) {
  for (const FlownLap& lap : FlownLaps(lane)) {
    if (lap.number != number) continue;
    const std::string split = lap.split ? "<small>" + FormatSeconds(*lap.split) + "</small>" : std::string();
    return Cell(FormatSeconds(lap.time) + split, lap.finishing ? " class=\"finish\"" : "");
  }
  return Cell("");
}

std::string CutsCell(const LaneRecord& lane) {
  std::string html = std::to_string(lane.cuts.size());
  for (const CutRecord& cut : lane.cuts) {
    html += "<small>" + Escaped(cut.pylon) + " " + FormatSeconds(cut.time) + "</small>";
  }
  return Cell(html);
}

std::string FastestCell(const LaneRecord& lane) {
  const auto lap = FastestLap(lane);
  return Cell(lap ? FormatSeconds(*lap->split) : "");
}

int LastLap(const std::vector<const LaneRecord*>& lanes) {
  int last = 0;
  for (const LaneRecord* lane : lanes) {
    const std::vector<FlownLap> laps = FlownLaps(*lane);
    if (!laps.empty()) last = std::max(last, laps.back().number);
  }
  return last;
}

std::string LanesTable(const RaceRecord& race) {
  std::vector<const LaneRecord*> lanes;
  for (const LaneRecord& lane : race.lanes) {
    if (lane.flies) lanes.push_back(&lane);
  }
  std::string html = "<table class=\"lanes\">\n";
  html += Row("Lane", lanes, [](const LaneRecord& lane) {
    return "<th scope=\"col\">" + Swatch(lane.high) + Swatch(lane.low) + Escaped(LaneTitle(lane)) +
           (lane.novice ? " (9 Laps)" : "") + "</th>";
  });
  html += Row(
      "Place", lanes, [](const LaneRecord& lane) { return Cell(Escaped(lane.placing)); }, " class=\"place\"");
  html += Row("Time", lanes, [](const LaneRecord& lane) { return Cell(FinalText(lane)); });
  const int last = LastLap(lanes);
  for (int number = 1; number <= last; ++number) {
    html += Row("Lap " + std::to_string(number), lanes,
                [number](const LaneRecord& lane) { return LapCell(lane, number); });
  }
  html += Row("Fastest lap", lanes, FastestCell);
  html += Row("Cuts", lanes, CutsCell);
  return html + "</table>\n";
}

std::string RaceSection(const RaceRecord& race) {
  const std::string note = RepeatedNote(race);
  std::string html = std::string("<section") + (race.stands ? "" : " class=\"repeated\"") + ">\n<h2>" +
                     RaceTitle(race) + (note.empty() ? "" : " <b>(" + note + ")</b>") + " <small>Round " +
                     std::to_string(race.round) + ", Heat " + std::to_string(race.heat) + "</small> <small>" +
                     Escaped(race.modeName) + "</small> <small>" + DateAndTime(race.when) +
                     "</small></h2>\n" + LanesTable(race);
  const std::string comments = CommentsOf(race);
  if (!comments.empty()) html += "<p>Comments: " + Escaped(comments) + "</p>\n";
  return html + "</section>\n";
}

std::string SummaryRow(const std::string& head, const FlightSummary& of, bool tellLane) {
  const auto best = [tellLane](const std::optional<BestTime>& time) {
    return Cell(time ? BestText(*time, tellLane) : "");
  };
  return "<tr><th scope=\"row\">" + head + "</th>" + Cell(std::to_string(of.racesFlown)) +
         Cell(std::to_string(of.cuts)) + best(of.fastestHeat) + best(of.fastestLap) + "</tr>\n";
}

std::string SummarySection(const ContestRecord& contest) {
  const ContestSummary summary = SummaryOf(contest);
  std::string html =
      "<section>\n<h2>Summary</h2>\n<table>\n<tr><th>Lane</th><th>Races flown</th><th>Cuts</th>"
      "<th>Fastest heat</th><th>Fastest lap</th></tr>\n";
  int lane = 0;
  for (const LaneSummary& of : summary.lanes) {
    html += SummaryRow(Escaped(LaneTitle(++lane, of.name)), of, false);
  }
  return html + SummaryRow("Contest", summary, true) + "</table>\n</section>\n";
}

}  // namespace

std::string ResultsHtml(const ContestRecord& contest, std::string_view program) {
  const std::string title = Escaped(contest.eventName.empty() ? "Results" : contest.eventName);
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
      title + "</title>\n<style>" + kStyle + "</style>\n</head>\n<body>\n<h1>" + title + "</h1>\n";
  html += contest.races.empty() ? "<p>No race has been run.</p>\n" : SummarySection(contest);
  for (const RaceRecord& race : contest.races) html += RaceSection(race);
  return html + "<footer>" + Escaped(FileNameOf(contest.projectFile)) + " &middot; " + Escaped(program) +
         "</footer>\n</body>\n</html>\n";
}

}  // namespace quorvane
