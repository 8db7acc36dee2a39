// The results as plain text.

#include <algorithm>
#include <vector>

#include "base/time_text.h"
#include "records/project.h"
#include "results/results_formats.h"
#include "results/results_words.h"

namespace quorvane {
namespace {

constexpr int kLapWidth = 8;

bool BeginsCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

int CharactersIn(std::string_view text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

// The first `count` characters.
std::string_view Front(std::string_view text, int count) {
  std::size_t end = 0;
  while (end < text.size() && (count > 0 || !BeginsCharacter(text[end]))) {
    if (BeginsCharacter(text[end])) --count;
    ++end;
  }
  return text.substr(0, end);
}

// What is too wide ends with an ellipsis.
std::string Fit(const std::string& text, int width) {
  if (CharactersIn(text) <= width) return text;
  return std::string(Front(text, width - 1)) + "\xE2\x80\xA6";
}

std::string Left(const std::string& text, int width) {
  const std::string fit = Fit(OneLine(text), width);
  return fit + std::string(static_cast<std::size_t>(width - CharactersIn(fit)), ' ');
}

std::string Right(const std::string& text, int width) {
  const std::string fit = Fit(OneLine(text), width);
  return std::string(static_cast<std::size_t>(width - CharactersIn(fit)), ' ') + fit;
}

std::string Right(int number, int width) {
  return Right(std::to_string(number), width);
}

void AppendLine(std::string& page, const std::string& line) {
  page += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

// Breaks a text at blanks; the lines after the first stand under its beginning. A word longer than a line is
// cut.
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
  return best ? BestText(*best, tellLane) : "-";
}

void AppendSummary(std::string& page, const ContestSummary& summary) {
  AppendLine(page, "Races flown   " + std::to_string(summary.racesFlown));
  AppendLine(page, "Cuts          " + std::to_string(summary.cuts));
  AppendLine(page, "Fastest heat  " + Best(summary.fastestHeat, true));
  AppendLine(page, "Fastest lap   " + Best(summary.fastestLap, true));
  page += "\n";
  AppendLine(page, Left("Lane", 16) + Right("Flown", 7) + Right("Cuts", 6) + "  " + Left("Fastest heat", 34) +
                       "Fastest lap");
  int lane = 0;
  for (const LaneSummary& of : summary.lanes) {
    AppendLine(page, Left(LaneTitle(++lane, of.name), 16) + Right(of.racesFlown, 7) + Right(of.cuts, 6) +
                         "  " + Left(Best(of.fastestHeat, false), 34) + Left(Best(of.fastestLap, false), 35));
  }
}

void AppendLaps(std::string& page, const std::vector<FlownLap>& laps) {
  if (laps.empty()) return;
  std::vector<std::string> times(kLapColumns);
  std::vector<std::string> splits(kLapColumns);
  for (const FlownLap& lap : laps) {
    const auto column = static_cast<std::size_t>(lap.number - 1);
    times[column] = FormatSeconds(lap.time);
    if (lap.split) splits[column] = FormatSeconds(*lap.split);
  }
  std::string time = "      time ";
  std::string split = "      split";
  for (std::size_t i = 0; i < kLapColumns; ++i) {
    time += Right(times[i], kLapWidth);
    split += Right(splits[i], kLapWidth);
  }
  AppendLine(page, time);
  AppendLine(page, split);
}

void AppendLane(std::string& page, const LaneRecord& lane) {
  const std::vector<FlownLap> laps = FlownLaps(lane);
  const auto fastest = FastestLap(lane);
  AppendLine(page,
             "  " + Left(LaneTitle(lane), 16) + " " + Left(lane.placing, 20) + Right(FinalText(lane), 12) +
                 Right(static_cast<int>(laps.size()), 6) + Right(static_cast<int>(lane.cuts.size()), 6) +
                 Right(fastest ? FormatSeconds(*fastest->split) : "", 13) + (lane.novice ? "  9 Laps" : ""));
  AppendLaps(page, laps);
  std::string cuts;
  for (const CutRecord& cut : lane.cuts) {
    cuts += (cuts.empty() ? "" : ", ") + cut.pylon + " " + FormatSeconds(cut.time);
  }
  if (!cuts.empty()) AppendWrapped(page, "      cuts     ", cuts);
}

std::string LapNumbers() {
  std::string line = "      lap  ";
  for (int lap = 1; lap <= kLapColumns; ++lap) line += Right(lap, kLapWidth);
  return line;
}

void AppendRace(std::string& page, const RaceRecord& race) {
  const std::string note = RepeatedNote(race);
  AppendLine(page, Fit(RaceTitle(race) + "   Round " + std::to_string(race.round) + "  Heat " +
                           std::to_string(race.heat) + "   " + OneLine(race.modeName) + "   " +
                           DateAndTime(race.when) + (note.empty() ? "" : "   (" + note + ")"),
                       kTextColumns));
  AppendLine(page, "  " + Left("Lane", 16) + " " + Left("Place", 20) + Right("Time", 12) + Right("Laps", 6) +
                       Right("Cuts", 6) + Right("Fastest lap", 13));
  AppendLine(page, LapNumbers());
  for (const LaneRecord& lane : race.lanes) {
    if (lane.flies) AppendLane(page, lane);
  }
  const std::string comments = CommentsOf(race);
  if (!comments.empty()) AppendWrapped(page, "  Comments: ", comments);
}

}  // namespace

std::string ResultsText(const ContestRecord& contest) {
  std::string page;
  const std::string title = contest.eventName.empty() ? "Results" : contest.eventName;
  AppendLine(page, Fit(OneLine(title), kTextColumns));
  AppendLine(page, Fit(OneLine(FileNameOf(contest.projectFile)), kTextColumns));
  page += "\n";
  if (contest.races.empty()) {
    AppendLine(page, "No race has been run.");
    return page;
  }
  AppendSummary(page, SummaryOf(contest));
  for (const RaceRecord& race : contest.races) {
    page += "\n";
    AppendRace(page, race);
  }
  return page;
}

}  // namespace quorvane
