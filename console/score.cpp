#include "console/score.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>

#include "base/text.h"
#include "console/program.h"
#include "results/race_records.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

std::string HeatText(int round, int heat, bool refly) {
  return "Round " + std::to_string(round) + "  Heat " + std::to_string(heat) + (refly ? "  Refly" : "");
}

std::string PlaceText(const std::string& caption) {
  static constexpr std::array kShort = {"1st", "2nd", "3rd", "4th"};
  const auto word = std::find(kPlaceWords.begin(), kPlaceWords.end(), caption);
  return word == kPlaceWords.end() ? caption : kShort[static_cast<std::size_t>(word - kPlaceWords.begin())];
}

Score::Lane MarkingOnly(const LaneRecord& lane) {
  return {.flies = lane.flies, .name = std::to_string(lane.lane), .low = lane.low, .high = lane.high};
}

// All but the place.
Score::Lane Counts(const LaneRecord& lane) {
  Score::Lane score = MarkingOnly(lane);
  if (!HasFlown(lane)) return score;
  score.laps = std::to_string(std::ranges::count(lane.laps, false, &LapRecord::credited));
  if (!lane.cuts.empty()) score.cuts = std::to_string(lane.cuts.size());
  score.time = FinalText(lane);
  return score;
}

Score ResultOf(const RaceRecord& race) {
  Score score{.heat = HeatText(race.round, race.heat, race.refly != 0),
              .event = race.eventName,
              .mode = race.modeName,
              .clock = "Result"};
  for (std::size_t i = 0; i < score.lanes.size(); ++i) {
    score.lanes[i] = Counts(race.lanes[i]);
    score.lanes[i].place = PlaceText(race.lanes[i].placing);
    score.lanes[i].bad = !HasResult(race.lanes[i]);
  }
  return score;
}

Score::Lane LaneNow(const frmJudge& judge, const LaneRecord& lane) {
  const frmLane& panel = judge.Lane(lane.lane - 1);
  Score::Lane score = Counts(lane);
  if (!score.laps.empty())
    score.laps = std::to_string(panel.Progress().flown);  // also those that are not listed
  const bool twoCuts = panel.Counts().cutsBeforeFinish >= 2;
  const bool placed = !judge.RaceBeingFlown() || panel.Status() == "DNF";
  if (placed) score.place = PlaceText(panel.Status());
  if (!placed && twoCuts) score.place = "DBL CUT";
  score.bad = twoCuts || score.place == "DNF" || (placed && panel.Position() == "100");
  // The lap that was flown last, until the lane or the race has finished.
  const bool finished = HasResult(lane) && (placed || panel.IsFinished());
  if (!finished && !lane.laps.empty()) score.time = FormatSeconds(lane.laps.back().time);
  return score;
}

Score ScoreOnConsole(Program& program) {
  const frmJudge& judge = program.judge();
  const RaceState& race = program.race();
  Score score{.heat = HeatText(race.Round(), race.Heat(), race.ReflyMode),
              .event = judge.EventName(),
              .mode = judge.lblRaceMode.Caption(),
              .clock = judge.lblStatus.Caption(),
              .clockBack = judge.lblStatus.BackColor()};
  const RaceRecord record = judge.RecordAt({});
  // Until it is flown again, the lanes still have the race that the refly repeats.
  const bool repeats = race.ReflyMode && !race.RaceActive;
  for (std::size_t i = 0; i < score.lanes.size(); ++i) {
    score.lanes[i] = repeats ? MarkingOnly(record.lanes[i]) : LaneNow(judge, record.lanes[i]);
  }
  return score;
}

}  // namespace

std::string ResultLine(const RaceRecord& race) {
  std::multimap<std::ptrdiff_t, std::string> lines;
  for (const LaneRecord& lane : race.lanes) {
    if (!lane.flies || lane.placing.empty()) continue;
    const auto place = std::find(kPlaceWords.begin(), kPlaceWords.end(), lane.placing);
    const std::string number = "lane " + std::to_string(lane.lane) + " ";
    const std::string line = place == kPlaceWords.end()
                                 ? number + lane.placing
                                 : PlaceText(lane.placing) + " " + number + FinalText(lane);
    lines.emplace(place - kPlaceWords.begin(), line);
  }
  std::vector<std::string> ordered;
  for (const auto& [place, line] : lines) ordered.push_back(line);
  return fmt::format("{}", fmt::join(ordered, ", "));
}

bool ScoreKeeper::BetweenRaces() const {
  const RaceState& race = program_.race();
  if (race.RaceActive || race.ReflyMode) return false;
  for (int i = 0; i < 4; ++i) {
    if (program_.lane(i).EventCount() != 0) return false;
  }
  return race.LastRaceRun >= 1 && race.LastRaceFile == race.ProjectFile;
}

// Once: the starter's stop makes the console ready for the next race as soon as one is over.
void ScoreKeeper::ReadLastResult() {
  const RaceState& race = program_.race();
  Project& project = program_.project();
  const std::string section = RaceBook(project, program_.race()).ShownSection(race.LastRaceRun);
  const std::tuple last(race.ProjectFile, race.LastRaceRun, race.NumberReflys,
                        project.GetProjectValue(section, "Amendments", ""));
  if (of_ == last) return;
  of_ = last;
  const RaceRecord record = ReadRace(OpenProject(project, race), race.LastRaceRun);
  result_ = record.hasRun ? std::optional(ResultOf(record)) : std::nullopt;
}

Score ScoreKeeper::Now() {
  const bool between = BetweenRaces();
  if (between) ReadLastResult();
  Score score = between && result_ ? *result_ : ScoreOnConsole(program_);
  score.practice = program_.judge().Practising();
  return score;
}

}  // namespace quorvane
