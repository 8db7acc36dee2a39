#include "results/race_records.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "base/text.h"
#include "files/file_ops.h"
#include "files/output_guard.h"
#include "lane/lane_log.h"
#include "records/lane_colors.h"
#include "records/profile_file.h"
#include "records/project.h"
#include "records/project_store.h"

namespace quorvane {
namespace {

constexpr double kLastDay = 2958466.0;  // the first of January 10000 as a day serial

// The whole number at the start of the text when it is one from 1 to kLastRace, otherwise 0.
int PositiveNumber(std::string_view text) {
  const double number = std::nearbyint(LeadingNumber(text));
  return number >= 1.0 && number <= kLastRace ? static_cast<int>(number) : 0;
}

// What follows `name`, as in "12 (h=4, r=3)".
int NumberAfter(const std::string& text, std::string_view name) {
  const std::size_t at = text.find(name);
  return at == std::string::npos ? 0 : PositiveNumber(std::string_view(text).substr(at + name.size()));
}

LocalDateTime DateOfSerial(double serial) {
  const double last = kLastDay * 86400.0 - 1;
  const double seconds = std::clamp(std::nearbyint(serial * 86400.0), 0.0, last);
  return kDayZero + std::chrono::seconds(static_cast<std::int64_t>(seconds));
}

std::string SectionOf(int race, int refly) {
  return refly == 0 ? RaceSection(race) : ReflySection(refly);
}

bool SectionHasRun(const ProjectSource& project, const std::string& section) {
  return LeadingNumber(project.read(section, "Timestamp", "0")) > 0.0;
}

// The refly that stands for the race, 0: itself. It must not disappear because that refly is not there.
int ReflyOf(const ProjectSource& project, int race) {
  const int refly = PositiveNumber(project.read(SectionOf(race, 0), "ReflyID", "0"));
  return refly != 0 && SectionHasRun(project, SectionOf(race, refly)) ? refly : 0;
}

// Of two laps with the same number the later one counts, as in the recount.
void AddLap(LaneRecord& lane, const LaneEvent& event) {
  if (event.Count < 1 || event.Count > kMostLaps) return;
  std::erase_if(lane.laps, [&](const LapRecord& lap) { return lap.count == event.Count; });
  lane.laps.push_back({event.Count, event.EventTime});
}

EntryRecord RecordOf(const LaneLog& log, const LaneEvent& event) {
  return {event.Kind, event.Count, log.MadeBy(event), event.SourceName, event.EventTime, event.FirstReported};
}

// None for a text that is no entry.
std::optional<EntryRecord> EntryOf(const std::string& text) {
  LaneLog log;
  log.Read([&](const std::string& key) { return key == "NumEvents" ? "1" : key == "Event0" ? text : ""; });
  return log[0].Kind.empty() ? std::nullopt : std::optional(RecordOf(log, log[0]));
}

// What "Current" says holds for a race that has not run; one that has run kept its own heat and round.
RaceRecord ReadHeader(const ProjectSource& project, int race, int refly) {
  const std::string section = SectionOf(race, refly);
  RaceRecord record;
  record.number = race;
  record.refly = refly;
  record.eventName = project.read("Current", "Title", "");
  record.projectFile = project.file;
  const int heats = std::max(1, PositiveNumber(project.read("Current", "HeatsPerRound", "1")));
  record.round = (race - 1) / heats + 1;
  record.heat = (race - 1) % heats + 1;

  const double serial = LeadingNumber(project.read(section, "Timestamp", "0"));
  record.hasRun = serial > 0.0;
  if (!record.hasRun) return record;
  record.when = DateOfSerial(serial);
  record.comments = project.read(section, "Comments", kDefaultComments);
  record.recovered = project.read(section, "Recovered", "");
  record.amendments = PositiveNumber(project.read(section, "Amendments", "0"));
  record.radio = ReadRadio([&](const char* key) { return project.read(section, key, ""); });
  const std::string place = project.read(section, "CurrentRace", "");
  const int heat = NumberAfter(place, "h=");
  const int round = NumberAfter(place, "r=");
  if (heat != 0 && round != 0) {
    record.heat = heat;
    record.round = round;
  }
  const double mode = LeadingNumber(project.read(section, "RaceMode", ""));
  if (mode >= 1.0 && mode < 7.0) SetMode(record, static_cast<int>(mode));
  return record;
}

// The versions of a value that the amendments of its race have left beside it, in their order.
std::vector<AmendedText> ReadAmended(const ProjectSource& project, const RaceRecord& race,
                                     const std::string& section, const char* key, std::string now) {
  constexpr const char* kNone = "\x01";
  std::vector<AmendedText> texts;
  for (int number = std::min(race.amendments, kMostCorrections); number > 0; --number) {
    std::string before = project.read(section, fmt::format("Was{}_{}", number, key), kNone);
    if (before == kNone) continue;
    const std::string when =
        project.read(SectionOf(race.number, race.refly), fmt::format("Amended{}", number), "0");
    texts.push_back({DateOfSerial(LeadingNumber(when)), before, std::exchange(now, before)});
  }
  std::ranges::reverse(texts);
  return texts;
}

RaceRecord ReadFlight(const ProjectSource& project, int race, int refly) {
  RaceRecord record = ReadHeader(project, race, refly);
  MarkLanes(record, project.laneColorScheme);
  if (!record.hasRun) return record;
  record.amendedComments = ReadAmended(project, record, SectionOf(race, refly), "Comments", record.comments);
  for (LaneRecord& lane : record.lanes) {
    const std::string laneSection = LaneSection(SectionOf(race, refly), lane.lane);
    const auto value = [&](const std::string& key) { return project.read(laneSection, key, ""); };
    LaneLog log;
    log.Read(value);
    ReadLane(lane, log, record.mode);
    lane.placing = value("Placing");
    lane.position = value("Position");
    lane.places = ReadAmended(project, record, laneSection, "Placing", lane.placing);
  }
  return record;
}

// Looks at every race number there is, so that no hole hides a race.
ContestRecord ReadContest(const ProjectSource& project) {
  ContestRecord contest{project.read("Current", "Title", ""), project.file, {}};
  std::map<int, int> reflyOfRace;
  std::set<int> standing;  // reflys
  const auto addRepeated = [&](int race, int refly) {
    const auto by = reflyOfRace.find(race);
    contest.races.push_back(ReadFlight(project, race, refly));
    contest.races.back().reflownBy = by == reflyOfRace.end() ? 0 : by->second;
    contest.races.back().stands = false;
  };
  for (int race = 1; race <= kLastRace; ++race) {
    if (!SectionHasRun(project, SectionOf(race, 0))) continue;
    const int refly = ReflyOf(project, race);
    contest.races.push_back(ReadFlight(project, race, refly));
    if (refly == 0) continue;
    reflyOfRace[race] = refly;
    standing.insert(refly);
    addRepeated(race, 0);
  }
  // A refly that was itself repeated stays in the file with nothing that points to it.
  const int last = ReflysCounted(project);
  for (int refly = 1; refly <= last; ++refly) {
    const std::string section = SectionOf(0, refly);
    if (standing.contains(refly) || !SectionHasRun(project, section)) continue;
    addRepeated(PositiveNumber(project.read(section, "CurrentRace", "")), refly);
  }
  std::ranges::stable_sort(contest.races, {}, &RaceRecord::number);
  return contest;
}

std::error_code Read(FileOps& files, const std::string& path, const std::function<void(ProjectSource)>& use) {
  std::string bytes;
  FileStamp stamp;
  if (const std::error_code error = files.ReadFile(path, kLargestProject, bytes, stamp)) return error;
  const ProfileFile text(std::move(bytes));
  const auto read = [&text](const std::string& section, const std::string& key, const std::string& fallback) {
    return ProfileString(text, section, key, fallback);
  };
  use({read, TextFromBytes(path)});
  return {};
}

}  // namespace

void SetMode(RaceRecord& record, int mode) {
  record.mode = mode;
  record.modeName = kRaceModeNames[static_cast<std::size_t>(mode - 1)];
}

void MarkLanes(RaceRecord& record, std::int16_t laneColorScheme) {
  int number = 0;
  for (LaneRecord& lane : record.lanes) {
    lane.lane = ++number;
    const LaneMarking marking = LaneMarkingOf(laneColorScheme, number);
    lane.name = Trimmed(marking.name);
    lane.low = marking.low;
    lane.high = marking.high;
    lane.flies = record.mode < kFirstFaiMode || number <= kFaiLanes;
  }
}

void ReadLane(LaneRecord& lane, const LaneLog& log, int mode) {
  const LapRecount count = RecountLaps(log, mode >= kFirstFaiMode);
  const bool hasResult = count.laps >= count.lapTarget && count.cutsBeforeFinish < 2;
  lane.final = hasResult ? count.finalTime : kNoResult;
  lane.lapTarget = count.lapTarget;
  lane.novice = log.FreeLap() >= 0;
  for (const LaneEvent& event : log.Entries()) {
    lane.entries.push_back(RecordOf(log, event));
    if (event.Kind == "L") AddLap(lane, event);
    if (event.Kind == "C") lane.cuts.push_back({event.SourceName, event.EventTime, event.Count});
    if (event.Kind == "T") lane.turns.push_back(event.EventTime);
  }
  for (const auto& [time, what, by, before, after, amended] : log.Corrections()) {
    if (lane.corrections.size() >= kMostCorrections) break;
    lane.corrections.push_back({time, what, by, EntryOf(before), EntryOf(after)});
    if (!amended.empty()) lane.corrections.back().amended = DateOfSerial(LeadingNumber(amended));
  }
  for (LapRecord& lap : lane.laps) {
    lap.credited = lane.novice && lap.count == 1;
    lap.finishing = lane.final < kNoResult && lap.count == count.lapTarget && lap.time == count.finalTime;
  }
}

RaceRecord ReadStandingHeader(const ProjectSource& project, int race) {
  return ReadHeader(project, race, ReflyOf(project, race));
}

int ReflysCounted(const ProjectSource& project) {
  return PositiveNumber(project.read("Current", "NumberReflys", "0"));
}

ProjectSource OpenProject(Project& project, const RaceState& race) {
  return {[&project](const std::string& section, const std::string& key, const std::string& fallback) {
            return project.GetProjectValue(section, key, fallback);
          },
          TextFromBytes(race.ProjectFile), race.LaneColorScheme};
}

RaceRecord ReadRace(const ProjectSource& project, int race) {
  return ReadFlight(project, race, ReflyOf(project, race));
}

std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest) {
  return Read(files, path, [&](const ProjectSource& project) { contest = ReadContest(project); });
}

std::error_code ReadRaces(FileOps& files, const std::string& path, const SettingsStore& settings,
                          const std::vector<int>& numbers, std::vector<RaceRecord>& races) {
  return Read(files, path, [&](ProjectSource project) {
    project.laneColorScheme = LoadLaneColorScheme(settings);
    for (const int number : numbers) races.push_back(ReadRace(project, number));
    if (!numbers.empty()) return;
    races = ReadContest(project).races;
    std::erase_if(races, [](const RaceRecord& race) { return !race.stands; });
  });
}

std::optional<std::string> SaveResults(FileOps& files, const std::string& path, const std::string& project,
                                       const std::string& bytes) {
  if (auto reason = WhyNotWrite(path, FileKind::Other, {project})) return reason;
  std::string target;
  FileStamp seen;
  std::error_code error = files.Resolve(path, target);
  if (!error) error = files.Look(target, seen);
  if (!error) error = ReplaceFile(files, target, bytes, seen);
  return error ? std::optional(error.message()) : std::nullopt;
}

}  // namespace quorvane
