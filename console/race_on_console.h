#pragma once

#include "forms/platform.h"
#include "race/race_state.h"
#include "results/race_records.h"

namespace quorvane {

class frmJudge;

// The race on the console: one that is being flown, one that waits to be saved, one shown from the project
// file, or one that has not run yet. `now` is the date of a race that is not in the file.
RaceRecord RecordOnConsole(const frmJudge& judge, const RaceState& race, const ProjectSource& project,
                           const LocalDateTime& now);

}  // namespace quorvane
