#pragma once

#include <string>

#include "forms/platform.h"
#include "print/sheet.h"
#include "records/race_record.h"

namespace quorvane {

// What the pages about a race have in common, on a page measured as Sheet says.

// Below the head; the foot begins so far above the lower edge.
inline constexpr double kRaceHeadBottom = 17.4;
inline constexpr double kRaceFootHeight = Sheet::kMargin + 2.2;

// The title over the race's number, round, heat, mode and date.
void DrawRaceHead(Sheet& sheet, const RaceRecord& race, const std::string& title,
                  double titleWidth = Sheet::kInner);
void DrawRaceFoot(Sheet& sheet, const RaceRecord& race, const std::string& program,
                  const LocalDateTime& printed);
// The high half of the lane's marking above the low one, as it is painted on the aircraft.
void DrawMark(Sheet& sheet, const LaneRecord& lane, const Box& box);

}  // namespace quorvane
