#pragma once

#include <string>

#include "console/contest_file.h"
#include "records/race_record.h"
#include "tools/results/options.h"

namespace quorvane {

// The whole file in the format that the options ask for. program: name and version.
std::string WriteResults(const ContestRecord& contest, const ResultsOptions& options,
                         const std::string& program);

}  // namespace quorvane
