#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "common/platform.h"
#include "common/race_state.h"
#include "records/race_record.h"

namespace quorvane {

class frmJudge;
class Project;

// Reads one value: section, key, fallback.
using ProjectReader = std::function<std::string(const std::string&, const std::string&, const std::string&)>;

// A project file, open in the console or only read. What it says may have been edited by hand: values that
// make no sense read as if they were missing.
struct ProjectSource {
  ProjectReader read;
  std::string file = {};  // its path, for the record
  // How the lanes are marked; the file does not say. 9 names them by number.
  std::int16_t laneColorScheme = 9;
};

// The project of the console. Good for as long as the project lives.
ProjectSource OpenProject(Project& project, const RaceState& race);

// The flight that stands for the race: its refly, or the race itself. A race that has not run gives a record
// with hasRun false. Races are 1..32767.
RaceRecord ReadRace(const ProjectSource& project, int race);

// Every flight in the file. Looks at every race number there is, so that no hole hides a race; read an open
// project inside a Project::Group, which looks at the disk once.
ContestRecord ReadContest(const ProjectSource& project);

// The race on the console: one that is being flown, one that waits to be saved, one shown from the project
// file, or one that has not run yet. `now` is the date of a race that is not in the file.
RaceRecord RecordOnConsole(const frmJudge& judge, const RaceState& race, const ProjectSource& project,
                           const LocalDateTime& now);

}  // namespace quorvane
