#include <cstdio>
#include <iostream>
#include <string>

#include "files/write_signals.h"
#include "programs/results_program.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace {

using namespace quorvane;

constexpr const char* kProgram = "quorvane-results";

int Complain(const std::string& message, int status) {
  std::cerr << kProgram << ": " << message << '\n';
  return status;
}

// Standard output gets the bytes as they are: CSV lines end with CRLF already.
int Print(const std::string& bytes) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  const bool written =
      std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
  return written ? 0 : Complain("cannot write to standard output", 1);
}

int Run(const ResultsOptions& options) {
  FileOps& files = SystemFiles();
  ContestRecord contest;
  if (const std::error_code error = ReadProject(files, options.project, contest)) {
    return Complain("cannot read " + options.project + ": " + error.message(), 1);
  }
  const std::string bytes = WriteResults(contest, options, std::string(kProgram) + " " + QUORVANE_VERSION);
  if (options.output.empty() || options.output == "-") return Print(bytes);
  if (const auto reason = SaveResults(files, options.output, options.project, bytes)) {
    return Complain("cannot write " + options.output + ": " + *reason, 1);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  OutliveWriteErrors();
  std::string error;
  const auto options = ParseResultsOptions({argv + (argc > 0 ? 1 : 0), argv + argc}, error);
  if (!options) return Complain(error + " (see --help)", 2);
  if (options->help) return Print(kResultsHelp);
  if (options->version) return Print(std::string(kProgram) + " " + QUORVANE_VERSION + "\n");
  return Run(*options);
}
