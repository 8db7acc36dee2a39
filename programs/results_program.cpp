#include "programs/results_program.h"

#include "results/results_formats.h"

namespace quorvane {

std::string WriteResults(const ContestRecord& contest, const ResultsOptions& options,
                         const std::string& program) {
  switch (options.format) {
    case ResultsFormat::Csv:
      return ResultsCsv(contest, options.byteOrderMark);
    case ResultsFormat::Json:
      return ResultsJson(contest);
    case ResultsFormat::Html:
      return ResultsHtml(contest, program);
    case ResultsFormat::Text:
      break;
  }
  return ResultsText(contest);
}

}  // namespace quorvane
