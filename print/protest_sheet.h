#pragma once

#include <string>

#include "forms/platform.h"
#include "print/surface.h"
#include "records/race_record.h"

// The form of the protest sheet. It shows nothing by itself, so it is a procedure without controls.
namespace quorvane::frmProtest {

// How many pages of that size the race takes, at least one.
int Pages(const Box& page, const RaceRecord& race);

// Draws page 1..Pages of the full story of a race: each lane's entries and corrections in one table, what is
// doubtful about them, and what is known of the radio. Black on white, for A4 and Letter alike. Never fails;
// a page without any size stays empty. program: name and version for the foot of the page.
void PrintPage(Surface& surface, const RaceRecord& race, int page, const std::string& program,
               const LocalDateTime& printed);

}  // namespace quorvane::frmProtest
