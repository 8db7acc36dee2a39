#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "forms/platform.h"
#include "records/race_record.h"
#include "results/contest_summary.h"

namespace quorvane {

// The words that every form of the results shares.

inline constexpr int kLapColumns = 11;  // of a table that shows every lap

std::string RaceTitle(const RaceRecord& race);  // "Race 12 REFLY"
// Why a flight does not count: "reflown by Refly 2"; empty when it does.
std::string RepeatedNote(const RaceRecord& race);
std::string DateAndTime(const LocalDateTime& when);              // "21-Nov-2026 9:00 AM"
std::string IsoDate(const LocalDateTime& when, char separator);  // "2026-11-21T09:00:00"
std::string LaneTitle(const LaneRecord& lane);                   // "1 Low Green", "3" without a marking
std::string LaneTitle(int lane, std::string_view name);
std::string MarkingOf(const LaneRecord& lane);  // "Low Green"
std::string FinalText(const LaneRecord& lane);  // "1:02.35", empty without a result
// "62.35 (race 12, lane 3, lap 4)"; the lane is left out where the table names it.
std::string BestText(const BestTime& best, bool tellLane);
// The comments; empty when nobody wrote any.
std::string CommentsOf(const RaceRecord& race);
// One line of text without control characters, so that no value of a file can disturb a table or a terminal.
std::string OneLine(std::string_view text);

}  // namespace quorvane
