#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "files/file_ops.h"
#include "forms/platform.h"
#include "race/project_values.h"
#include "race/race_state.h"
#include "records/race_record.h"

namespace quorvane {

class LaneLog;
class Project;

// A project file, open in the console or only read. What it says may have been edited by hand: values that
// make no sense read as if they were missing.
struct ProjectSource {
  ReadValue read;
  std::string file = {};  // its path as text, for the record
  // How the lanes are marked; the file does not say. 9 names them by number.
  std::int16_t laneColorScheme = 9;
};

// The project of the console. Good for as long as the project lives.
ProjectSource OpenProject(Project& project, const RaceState& race);

// The flight that stands for the race: its refly, or the race itself. A race that has not run gives a record
// with hasRun false. Races are 1..32767.
RaceRecord ReadRace(const ProjectSource& project, int race);

// Reads all flights of a project file, as it stands on the disk. From any thread.
std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest);

// Reads the races with these numbers, run or not, as the flight that stands for each; without numbers each
// race that has been flown. The lanes are marked by the scheme in the settings.
std::error_code ReadRaces(FileOps& files, const std::string& path, const SettingsStore& settings,
                          const std::vector<int>& numbers, std::vector<RaceRecord>& races);

// Replaces `path` by these results in one step. Gives the reason why not: then nothing has changed. The
// project itself, and what results must not replace (see WhyNotWrite), stays.
std::optional<std::string> SaveResults(FileOps& files, const std::string& path, const std::string& project,
                                       const std::string& bytes);

// The parts of a record, for a race that is not only in the file.

inline constexpr const char* kDefaultComments = "No comments";

// Number, heat, round, mode, date and comments of the flight that stands for the race.
RaceRecord ReadStandingHeader(const ProjectSource& project, int race);
int ReflysCounted(const ProjectSource& project);
void SetMode(RaceRecord& record, int mode);  // 1..6
// Number, marking and whether it flies, of each lane; the mode must be set.
void MarkLanes(RaceRecord& record, std::int16_t laneColorScheme);
// Entries, laps, cuts, turns, corrections and result of a lane, from its log.
void ReadLane(LaneRecord& lane, const LaneLog& log, int mode);

}  // namespace quorvane
