#pragma once

#include "print/sheet.h"
#include "records/race_record.h"

namespace quorvane {

inline constexpr double kLaneColumnHeight = 70.0;

// The column of one lane on the heat report: who flew it, where it came in, its cuts and its laps. A race
// that has not run leaves the same places ruled, to be filled in by hand. `place` is in the sheet's units.
void DrawLaneColumn(Sheet& sheet, const RaceRecord& race, const LaneRecord& lane, const Box& place);

}  // namespace quorvane
