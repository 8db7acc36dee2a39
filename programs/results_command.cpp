#include "programs/results_command.h"

#include "programs/arguments.h"

namespace quorvane {

ResultsCommand ReadResultsCommand(const std::vector<std::string>& arguments) {
  ResultsCommand options;
  Arguments app("quorvane-results",
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

}  // namespace quorvane
