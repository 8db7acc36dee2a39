#pragma once

#include <string>
#include <vector>

#include "replay/replay.h"

namespace quorvane {

// What a replay leaves behind, as text.

// One JSON object: `time`, `race`, `lanes`, `controls`.
std::string StateJson(Replay& replay);
// A tx record for each frame sent.
std::string FrameRecords(const std::vector<Replay::Frame>& frames);
// A line for each dialog box that was answered: `ms` at which it opened, `kind`, `title`, `text`, `answer`.
std::string DialogLines(const std::vector<VirtualPlatform::Shown>& shown);
// INI text, one section after the other in the order of their names.
std::string SettingsText(const MemorySettings& settings);

struct Verdict {
  bool same = false;
  std::string text;                // one line for the operator, with the time of the first difference
  std::vector<std::string> notes;  // what could not be compared
};

// Compares what a replay (with verify) has sent and saved with what the session sent, by its tx
// records, and saved, by its project files as they now stand on the disk. `project`, if given, stands in for
// the file that was open at the end.
Verdict Verify(const SessionJournal& journal, Replay& replay, const std::string& project);

}  // namespace quorvane
