#pragma once

#include <string>
#include <vector>

#include "journal/journal_reader.h"
#include "replay/replay.h"

namespace quorvane {

struct Verdict {
  bool same = false;
  std::string text;                // one line for the operator, with the time of the first difference
  std::vector<std::string> notes;  // what could not be compared
};

// Compares what a replay (with keepVersions) has sent and saved with what the session sent, by its tx
// records, and saved, by its project files as they now stand on the disk. `project`, if given, stands in for
// the file that was open at the end.
Verdict Verify(const SessionJournal& journal, Replay& replay, const std::string& project);

}  // namespace quorvane
