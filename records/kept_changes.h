#pragma once

#include <string>
#include <vector>

#include "records/profile_file.h"

namespace quorvane {

// A value that was written to a project and is not on the disk yet.
struct KeptChange {
  std::string section;
  std::string key;
  std::string value;
};

// Whether the file may take what belongs to `ours`: it has the same event name, a flight in common, or
// nothing of a contest yet.
bool SameContest(const ProfileFile& ours, const ProfileFile& file);

// Makes changes that were kept in memory fit a file that has changed meanwhile: a race or refly whose number
// another one has there gets the next free number, with all that refers to it. Returns what was moved, in
// words for the operator.
std::vector<std::string> MoveTakenRaces(const ProfileFile& file, std::vector<KeptChange>& changes);

}  // namespace quorvane
