#pragma once

#include <optional>
#include <string>
#include <system_error>

#include "records/file_ops.h"
#include "records/race_record.h"
#include "tools/results/options.h"

namespace quorvane {

// Reads all flights of a project file.
std::error_code ReadProject(FileOps& files, const std::string& path, ContestRecord& contest);

// The whole file in the format that the options ask for. program: name and version.
std::string WriteResults(const ContestRecord& contest, const ResultsOptions& options,
                         const std::string& program);

// Replaces `path` in one step. Gives the reason why not: then nothing has changed. The project itself, and
// what is no file, is never replaced.
std::optional<std::string> SaveResults(FileOps& files, const std::string& path, const std::string& project,
                                       const std::string& bytes);

}  // namespace quorvane
