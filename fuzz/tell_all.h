#pragma once

#include <string>

#include "fuzz/require.h"
#include "print/heat_report.h"
#include "print/protest_sheet.h"
#include "results/race_records.h"
#include "results/results_formats.h"
#include "tests/print/recording_surface.h"

namespace quorvane {

// A project file, whatever it says, in every form in which its races go out.
inline void TellAll(const std::string& path) {
  ContestRecord contest;
  if (ReadProject(SystemFiles(), path, contest)) return;
  Require(!ResultsText(contest).empty() && !ResultsCsv(contest, true).empty());
  Require(!ResultsJson(contest).empty() && !ResultsHtml(contest, "fuzz").empty());
  Require(!CopyText(SortedRows(ResultsRows(contest), contest.races.size() % 12, true)).empty());
  RecordingSurface page({0, 0, 210, 297});
  for (const RaceRecord& race : contest.races) {
    frmPrint::PrintDocument(page, race, "fuzz", {});
    const int pages = std::min(frmProtest::Pages(page.Page(), race), 5);
    for (int i = 1; i <= pages; ++i) frmProtest::PrintPage(page, race, i, "fuzz", {});
  }
}

}  // namespace quorvane
