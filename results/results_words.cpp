#include "results/results_formats.h"

#include <fmt/format.h>

#include "base/text.h"
#include "records/project.h"
#include "results/race_records.h"

namespace quorvane {
namespace {

void Keep(std::optional<BestTime>& best, const BestTime& time) {
  if (!best || time.time < best->time) best = time;
}

void AddLane(FlightSummary& summary, const RaceRecord& race, const LaneRecord& lane) {
  summary.cuts += static_cast<int>(lane.cuts.size());
  if (HasResult(lane)) Keep(summary.fastestHeat, {lane.final, race.number, race.refly, lane.lane, 0});
  if (const auto lap = FastestLap(lane)) {
    Keep(summary.fastestLap, {*lap->split, race.number, race.refly, lane.lane, lap->number});
  }
}

}  // namespace

std::string ContestTitle(const ContestRecord& contest) {
  return contest.eventName.empty() ? "Results" : contest.eventName;
}

std::string RaceTitle(const RaceRecord& race) {
  return fmt::format("Race {}{}", race.number, race.refly != 0 ? " REFLY" : "");
}

std::string RepeatedNote(const RaceRecord& race) {
  if (race.stands) return {};
  return race.reflownBy == 0 ? "does not count" : fmt::format("reflown by Refly {}", race.reflownBy);
}

std::string UnusualText(const RaceRecord& race) {
  std::string note = UnusualNote(race);
  if (!race.radio) return note;
  std::string gaps;
  for (const auto& [name, frames, silence] : SilentStations(*race.radio)) {
    if (frames == 0) continue;
    gaps += fmt::format("{}{} {} s", gaps.empty() ? "" : ", ", name, FormatRatio(silence, 1000, 1));
  }
  if (gaps.empty()) return note;
  return note + (note.empty() ? "" : " ") + "Radio gap: " + gaps + ".";
}

std::string NoteText(const RaceRecord& race) {
  const std::string repeated = RepeatedNote(race);
  const std::string unusual = OneLine(UnusualText(race));
  return repeated + (repeated.empty() || unusual.empty() ? "" : ". ") + unusual;
}

std::string DateAndTime(const LocalDateTime& when) {
  return ProjectDate(when) + " " + TimeOfDay(when);
}

std::string FinalText(const LaneRecord& lane) {
  return HasResult(lane) ? FormatMinutes(FormatSeconds(lane.final)) : "";
}

std::string FastestText(const LaneRecord& lane) {
  const auto lap = FastestLap(lane);
  return lap ? FormatSeconds(*lap->split) : "";
}

std::string CutText(const CutRecord& cut) {
  return cut.pylon + " " + FormatSeconds(cut.time);
}

std::string CutList(const LaneRecord& lane, std::string_view separator) {
  std::string list;
  for (const CutRecord& cut : lane.cuts) list.append(list.empty() ? "" : separator).append(CutText(cut));
  return list;
}

std::string CommentsOf(const RaceRecord& race) {
  return race.comments == kDefaultComments ? "" : race.comments;
}

std::string OneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    // The control characters of U+0080..U+009F are the two bytes C2 80..C2 9F.
    const bool longControl =
        c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (longControl) ++i;
    line += c < 0x20 || c == 0x7F || longControl ? ' ' : text[i];
  }
  return line;
}

LapTexts LapTextsOf(const LaneRecord& lane) {
  LapTexts texts;
  for (const FlownLap& lap : FlownLaps(lane)) {
    const auto at = static_cast<std::size_t>(lap.number - 1);
    texts.times[at] = FormatSeconds(lap.time);
    if (lap.split) texts.splits[at] = FormatSeconds(*lap.split);
  }
  return texts;
}

std::string BestText(const std::optional<BestTime>& best, bool tellLane) {
  if (!best) return {};
  const std::string time = FormatSeconds(best->time);
  return fmt::format("{} (race {}{}{}{})", best->lap == 0 ? FormatMinutes(time) : time, best->race,
                     best->refly != 0 ? " REFLY" : "", tellLane ? fmt::format(", lane {}", best->lane) : "",
                     best->lap != 0 ? fmt::format(", lap {}", best->lap) : "");
}

ContestSummary SummaryOf(const ContestRecord& contest) {
  ContestSummary summary;
  for (const RaceRecord& race : contest.races) {
    if (!race.stands || !race.hasRun) continue;
    ++summary.racesFlown;
    for (const LaneRecord& lane : FlyingLanes(race)) {
      if (!HasFlown(lane)) continue;
      FlightSummary& own = summary.lanes.at(static_cast<std::size_t>(lane.lane - 1));
      ++own.racesFlown;
      AddLane(own, race, lane);
      AddLane(summary, race, lane);
    }
  }
  return summary;
}

}  // namespace quorvane
