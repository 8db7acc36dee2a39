// quorvane-results: tells the results of a contest from its project file.

#include <cstdio>
#include <string>

#include "files/file_ops.h"
#include "programs/ending.h"
#include "programs/results_command.h"
#include "results/race_records.h"
#include "results/results_formats.h"

namespace quorvane {
namespace {

constexpr const char* kProgram = "quorvane-results";

bool Print(const std::string& bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

std::string Written(const ContestRecord& contest, const ResultsCommand& options) {
  if (options.format == "csv") return ResultsCsv(contest, options.byteOrderMark);
  if (options.format == "json") return ResultsJson(contest);
  if (options.format == "html") return ResultsHtml(contest, std::string(kProgram) + " " + QUORVANE_VERSION);
  return ResultsText(contest);
}

[[noreturn]] void Fail(const std::string& why) {
  throw Ending{1, std::string(kProgram) + ": " + why + "\n"};
}

int Run(const ResultsCommand& options) {
  FileOps& files = SystemFiles();
  ContestRecord contest;
  if (const std::error_code error = ReadProject(files, options.project, contest)) {
    Fail("cannot read " + options.project + ": " + error.message());
  }
  const std::string bytes = Written(contest, options);
  if (options.output.empty() || options.output == "-") {
    if (!Print(bytes)) Fail("cannot write to standard output");
  } else if (const auto reason = SaveResults(files, options.output, options.project, bytes)) {
    Fail("cannot write " + options.output + ": " + *reason);
  }
  return 0;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;
  return RunProgram(kProgram, [&] { return Run(ReadResultsCommand(CommandLineWords(argc, argv))); });
}
