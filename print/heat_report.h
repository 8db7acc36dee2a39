#pragma once

#include <string>

#include "forms/platform.h"
#include "print/surface.h"
#include "records/race_record.h"

// The form of the heat report. It shows nothing by itself, so it is a procedure without controls.
namespace quorvane::frmPrint {

// Draws the heat report: one race on one page, black on white, for A4 and Letter alike. A race that has not
// run gives a score sheet to be filled in by hand. Never fails; what is too long shrinks and is then cut with
// an ellipsis. A page without any size stays empty. program: name and version for the foot of the page.
void PrintDocument(Surface& surface, const RaceRecord& race, const std::string& program,
                   const LocalDateTime& printed);

}  // namespace quorvane::frmPrint
