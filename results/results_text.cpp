// The results as plain text.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>

#include "base/text.h"
#include "records/project.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

// The widths of a table's columns; a negative one is aligned to the right.
constexpr std::array kSummaryTable = {16, -7, -6, 2, 34, 35};
constexpr std::array kLanesTable = {2, 16, 1, 20, -12, -6, -6, -13, 8};
constexpr int kLapWidth = -8;

int CharactersIn(std::string_view text) {
  return static_cast<int>(std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string_view Front(std::string_view text, int count) {
  return FirstCharacters(text, static_cast<std::size_t>(count));
}

// What is too wide ends with an ellipsis.
std::string Fit(std::string_view text, int width) {
  std::string line = OneLine(text);
  if (CharactersIn(line) <= width) return line;
  return std::string(Front(line, width - 1)) + "\xE2\x80\xA6";
}

std::string Cell(std::string_view text, int width) {
  const std::string fit = Fit(text, std::abs(width));
  const std::string blanks(static_cast<std::size_t>(std::abs(width) - CharactersIn(fit)), ' ');
  return width < 0 ? blanks + fit : fit + blanks;
}

void AppendLine(std::string& page, const std::string& line) {
  page += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

void AppendRow(std::string& page, std::span<const int> widths, std::initializer_list<std::string> texts) {
  std::string line;
  for (const std::string& text : texts) {
    line += Cell(text, widths.front());
    widths = widths.subspan(1);
  }
  AppendLine(page, line);
}

// Breaks a text at blanks, the lines under the first one's beginning. A word longer than a line is cut.
void AppendWrapped(std::string& page, const std::string& label, const std::string& text) {
  const int width = kTextColumns - CharactersIn(label);
  std::string rest = OneLine(text);
  std::string margin = label;
  for (;;) {
    std::string_view line = Front(rest, width);
    std::size_t next = line.size();
    if (line.size() < rest.size()) {
      const std::size_t blank = rest.find_last_of(' ', line.size());
      if (blank != std::string::npos && blank > 0) {
        line = line.substr(0, blank);
        next = blank + 1;
      }
    }
    AppendLine(page, margin + std::string(line));
    rest.erase(0, next);
    if (rest.empty()) return;
    margin.assign(static_cast<std::size_t>(CharactersIn(label)), ' ');
  }
}

std::string Best(const std::optional<BestTime>& best, bool tellLane) {
  return best ? BestText(best, tellLane) : "-";
}

void AppendSummary(std::string& page, const ContestSummary& summary) {
  page += fmt::format(
      "Races flown   {}\n"
      "Cuts          {}\n"
      "Fastest heat  {}\n"
      "Fastest lap   {}\n\n",
      summary.racesFlown, summary.cuts, Best(summary.fastestHeat, true), Best(summary.fastestLap, true));
  AppendRow(page, kSummaryTable, {"Lane", "Flown", "Cuts", "", "Fastest heat", "Fastest lap"});
  int lane = 0;
  for (const FlightSummary& of : summary.lanes) {
    AppendRow(page, kSummaryTable,
              {std::to_string(++lane), std::to_string(of.racesFlown), std::to_string(of.cuts), "",
               Best(of.fastestHeat, false), Best(of.fastestLap, false)});
  }
}

void AppendLaps(std::string& page, std::string line, std::span<const std::string> texts) {
  for (const std::string& text : texts) line += Cell(text, kLapWidth);
  AppendLine(page, line);
}

void AppendLane(std::string& page, const LaneRecord& lane) {
  const std::size_t laps = FlownLaps(lane).size();
  AppendRow(page, kLanesTable,
            {"", std::to_string(lane.lane), "", lane.placing, FinalText(lane), std::to_string(laps),
             std::to_string(lane.cuts.size()), FastestText(lane), lane.novice ? "  9 Laps" : ""});
  if (laps > 0) {
    const LapTexts texts = LapTextsOf(lane);
    AppendLaps(page, "      time ", texts.times);
    AppendLaps(page, "      split", texts.splits);
  }
  if (!lane.cuts.empty()) AppendWrapped(page, "      cuts     ", CutList(lane, ", "));
}

void AppendRace(std::string& page, const RaceRecord& race) {
  const std::string note = RepeatedNote(race);
  AppendLine(page,
             Fit(fmt::format("{}   Round {}  Heat {}   {}   {}{}", RaceTitle(race), race.round, race.heat,
                             race.modeName, DateAndTime(race.when), note.empty() ? "" : "   (" + note + ")"),
                 kTextColumns));
  AppendRow(page, kLanesTable, {"", "Lane", "", "Place", "Time", "Laps", "Cuts", "Fastest lap"});
  std::array<std::string, kMostLaps> numbers;
  for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = std::to_string(i + 1);
  AppendLaps(page, "      lap  ", numbers);
  for (const LaneRecord& lane : FlyingLanes(race)) AppendLane(page, lane);
  if (const std::string unusual = UnusualText(race); !unusual.empty()) AppendWrapped(page, "  ", unusual);
  const std::string comments = CommentsOf(race);
  if (!comments.empty()) AppendWrapped(page, "  Comments: ", comments);
}

}  // namespace

std::string ResultsText(const ContestRecord& contest) {
  std::string page;
  AppendLine(page, Fit(ContestTitle(contest), kTextColumns));
  AppendLine(page, Fit(FileNameOf(contest.projectFile), kTextColumns));
  page += "\n";
  if (contest.races.empty()) return page + "No race has been run.\n";
  AppendSummary(page, SummaryOf(contest));
  for (const RaceRecord& race : contest.races) {
    page += "\n";
    AppendRace(page, race);
  }
  return page;
}

}  // namespace quorvane
