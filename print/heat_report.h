#pragma once

#include <string>

#include "forms/platform.h"
#include "print/surface.h"
#include "records/race_record.h"

namespace quorvane {

// The heat report: one race on one page, black on white, for A4 and Letter alike. A race that has not run
// gives a score sheet to be filled in by hand. Several races are several reports, each on a page of its own.
class frmPrint {
 public:
  // The race must outlive the report. program: name and version for the foot of the page.
  frmPrint(const RaceRecord& race, std::string program, const LocalDateTime& printed)
      : race_(race), program_(std::move(program)), printed_(printed) {}

  // Draws the whole report. Never fails; what is too long shrinks and is then cut with an ellipsis.
  // A page without any size stays empty.
  void PrintDocument(Surface& surface) const;

 private:
  const RaceRecord& race_;
  const std::string program_;
  const LocalDateTime printed_;
};

}  // namespace quorvane
