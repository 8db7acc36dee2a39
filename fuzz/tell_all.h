#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "fuzz/require.h"
#include "print/heat_report.h"
#include "print/protest_sheet.h"
#include "records/project_store.h"
#include "results/race_records.h"
#include "results/results_formats.h"
#include "tests/print/recording_surface.h"

namespace quorvane {

// The first races of a project file, whatever it says, in every form in which races go out.
inline void TellAll(const ProfileFile& file) {
  const ProjectSource project{[&](const auto& section, const auto& key, const auto& fallback) {
    return ProfileString(file, section, key, fallback);
  }};
  ContestRecord contest{project.read("Current", "Title", "Cup"), "", {}};
  for (int race = 1; race <= 4; ++race) contest.races.push_back(ReadRace(project, race));
  RecordingSurface page({0, 0, 210, 297});
  for (const RaceRecord& race : contest.races) {
    frmPrint::PrintDocument(page, race, "fuzz", {});
    const int pages = std::min(frmProtest::Pages(page.Page(), race), 5);
    for (int i = 1; i <= pages; ++i) frmProtest::PrintPage(page, race, i, "fuzz", {});
  }
  std::erase_if(contest.races, [](const RaceRecord& race) { return !race.hasRun; });
  for (const std::string& text :
       {ResultsText(contest), ResultsCsv(contest, true), ResultsJson(contest), ResultsHtml(contest, "fuzz"),
        CopyText(SortedRows(ResultsRows(contest), contest.eventName.size() % 12, true))}) {
    Require(!text.empty());
    Tell(text);
  }
  for (const auto& words : page.words)
    Tell(fmt::format("{} {:.2f} {:.2f}", words.text, words.ink.left, words.ink.top));
}

}  // namespace quorvane
