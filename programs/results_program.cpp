#include "programs/results_program.h"

#include "results/results_formats.h"

namespace quorvane {

std::string WriteResults(const ContestRecord& contest, const ResultsOptions& options,
                         const std::string& program) {
  if (options.format == "csv") return ResultsCsv(contest, options.byteOrderMark);
  if (options.format == "json") return ResultsJson(contest);
  if (options.format == "html") return ResultsHtml(contest, program);
  return ResultsText(contest);
}

}  // namespace quorvane
