#include <cstdio>
#include <iostream>
#include <string>

#include "files/file_ops.h"
#include "programs/results_options.h"
#include "results/race_records.h"
#include "results/results_formats.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace {

using namespace quorvane;

constexpr const char* kProgram = "quorvane-results";

int Complain(const std::string& message) {
  std::cerr << kProgram << ": " << message << '\n';
  return 1;
}

// Standard output gets the bytes as they are: CSV lines end with CRLF already.
int Print(const std::string& bytes) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  const bool written =
      std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
  return written ? 0 : Complain("cannot write to standard output");
}

std::string Written(const ContestRecord& contest, const ResultsOptions& options) {
  if (options.format == "csv") return ResultsCsv(contest, options.byteOrderMark);
  if (options.format == "json") return ResultsJson(contest);
  if (options.format == "html") return ResultsHtml(contest, std::string(kProgram) + " " + QUORVANE_VERSION);
  return ResultsText(contest);
}

int Run(const ResultsOptions& options) {
  FileOps& files = SystemFiles();
  ContestRecord contest;
  if (const std::error_code error = ReadProject(files, options.project, contest)) {
    return Complain("cannot read " + options.project + ": " + error.message());
  }
  const std::string bytes = Written(contest, options);
  if (options.output.empty() || options.output == "-") return Print(bytes);
  if (const auto reason = SaveResults(files, options.output, options.project, bytes)) {
    return Complain("cannot write " + options.output + ": " + *reason);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  OutliveWriteErrors();
  const auto parsed = ParseResultsOptions({argv + 1, argv + argc});
  if (const auto* ending = std::get_if<Ending>(&parsed)) return ending->Tell();
  return Run(std::get<ResultsOptions>(parsed));
}
