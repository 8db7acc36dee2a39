#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "files/file_ops.h"
#include "forms/platform.h"
#include "records/race_record.h"

namespace quorvane {

// Reads all flights of a project file, as it stands on the disk. From any thread.
std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest);

// Reads the races with these numbers, run or not, as the flight that stands for each; without numbers each
// race that has been flown. The lanes are marked by the scheme in the settings.
std::error_code ReadRaces(FileOps& files, const std::string& path, const SettingsStore& settings,
                          const std::vector<int>& numbers, std::vector<RaceRecord>& races);

// Replaces `path` by these results in one step. Gives the reason why not: then nothing has changed. The
// project itself, and what results must not replace (see WhyNotWrite), stays.
std::optional<std::string> SaveResults(FileOps& files, const std::string& path, const std::string& project,
                                       const std::string& bytes);

}  // namespace quorvane
