#pragma once

#include <string>

#include "programs/results_options.h"
#include "records/race_record.h"
#include "results/contest_file.h"

namespace quorvane {

// The whole file in the format that the options ask for. program: name and version.
std::string WriteResults(const ContestRecord& contest, const ResultsOptions& options,
                         const std::string& program);

}  // namespace quorvane
