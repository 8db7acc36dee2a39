// quorvane-results: tells the results of a contest from its project file.

#include <cstdio>
#include <string>
#include <vector>

#include "files/file_ops.h"
#include "programs/arguments.h"
#include "results/race_records.h"
#include "results/results_formats.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace quorvane {
namespace {

constexpr const char* kProgram = "quorvane-results";

struct Options {
  std::string format = "text";
  bool byteOrderMark = false;
  std::string output = {};  // empty or "-": standard output
  std::string project = {};
};

Options ReadOptions(const std::vector<std::string>& arguments) {
  Options options;
  Arguments app(kProgram,
                "Tells the results of a contest from its project file: every race that has been\n"
                "run, with the places, times, laps, splits and cuts of its lanes, and a summary\n"
                "per lane and for the contest. A refly stands in the place of the race it\n"
                "repeats; the original follows it, marked. The project file is only read.\n");
  app.add_option("--format", options.format, "text (default), csv, json or html")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"text", "csv", "json", "html"}).description(""));
  app.add_flag("--bom", options.byteOrderMark,
               "begin the CSV file with a byte order mark, for spreadsheets that would otherwise not take it "
               "as UTF-8");
  app.AddFile("-o,--output", options.output,
              "write to this file instead of standard output. The file is replaced in one step: nobody sees "
              "half of it");
  app.AddFile("PROJECT.ini", options.project, "of the contest")->required();
  app.footer("Exit status: 0 done; 1 a file cannot be read or written; 2 a bad command line.");
  app.Read(arguments);
  if (options.byteOrderMark && options.format != "csv") app.Refuse("--bom goes with --format csv only");
  return options;
}

// Standard output gets the bytes as they are: CSV lines end with CRLF already.
bool Print(const std::string& bytes) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

std::string Written(const ContestRecord& contest, const Options& options) {
  if (options.format == "csv") return ResultsCsv(contest, options.byteOrderMark);
  if (options.format == "json") return ResultsJson(contest);
  if (options.format == "html") return ResultsHtml(contest, std::string(kProgram) + " " + QUORVANE_VERSION);
  return ResultsText(contest);
}

[[noreturn]] void Fail(const std::string& why) {
  throw Ending{1, std::string(kProgram) + ": " + why + "\n"};
}

int Run(const Options& options) {
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
  return RunProgram(kProgram, [&] { return Run(ReadOptions({argv + 1, argv + argc})); });
}
