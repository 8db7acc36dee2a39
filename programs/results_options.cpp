#include "programs/results_options.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace quorvane {

const char* const kResultsHelp =
    R"(Usage: quorvane-results [OPTION...] PROJECT.ini

Tells the results of a contest from its project file: every race that has been
run, with the places, times, laps, splits and cuts of its lanes, and a summary
per lane and for the contest. A refly stands in the place of the race it
repeats; the original follows it, marked. The project file is only read.

  --format FORMAT  text (default), csv, json or html
  --bom            begin the CSV file with a byte order mark, for spreadsheets
                   that would otherwise not take it as UTF-8
  -o, --output FILE
                   write to this file instead of standard output. The file is
                   replaced in one step: nobody sees half of it
  --help           this text
  --version        the program's version

Exit status: 0 done; 1 a file cannot be read or written; 2 a bad command line.
)";

namespace {

constexpr std::array<std::pair<std::string_view, ResultsFormat>, 4> kFormats = {
    {{"text", ResultsFormat::Text},
     {"csv", ResultsFormat::Csv},
     {"json", ResultsFormat::Json},
     {"html", ResultsFormat::Html}}};

// Reads the arguments one after the other; the first complaint stands in `error`.
class Parser {
 public:
  Parser(const std::vector<std::string>& arguments, std::string& error)
      : arguments_(arguments), error_(error) {}

  std::optional<ResultsOptions> Parse() {
    while (error_.empty() && next_ < arguments_.size()) Take(arguments_[next_++]);
    if (!error_.empty()) return std::nullopt;
    if (options_.help || options_.version) return options_;
    if (options_.project.empty()) {
      error_ = "no project file is named";
    } else if (options_.byteOrderMark && options_.format != ResultsFormat::Csv) {
      error_ = "--bom goes with --format csv only";
    }
    if (!error_.empty()) return std::nullopt;
    return options_;
  }

 private:
  void Take(const std::string& argument) {
    if (onlyFiles_ || argument == "-" || !argument.starts_with('-')) {
      if (argument.empty()) {
        error_ = "the project file's name is empty";
      } else if (!options_.project.empty()) {
        error_ = "more than one project file is named";
      }
      options_.project = argument;
      return;
    }
    const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
    const std::string name = argument.substr(0, equals);
    if (equals != std::string::npos) attached_ = argument.substr(equals + 1);
    TakeOption(name);
    if (attached_ && error_.empty()) error_ = name + " takes no value";
  }

  void TakeOption(const std::string& name) {
    if (name == "--") {
      onlyFiles_ = true;
    } else if (name == "--help" || name == "-h") {
      options_.help = true;
    } else if (name == "--version") {
      options_.version = true;
    } else if (name == "--bom") {
      options_.byteOrderMark = true;
    } else if (name == "--format") {
      TakeFormat(Value(name));
    } else if (name == "-o" || name == "--output") {
      options_.output = Value(name);
    } else {
      error_ = "unknown option " + name;
    }
  }

  void TakeFormat(const std::string& value) {
    for (const auto& [word, format] : kFormats) {
      if (value == word) {
        options_.format = format;
        return;
      }
    }
    if (error_.empty()) error_ = "--format is text, csv, json or html, not \"" + value + "\"";
  }

  std::string Value(const std::string& name) {
    std::string value;
    if (attached_) {
      value = *std::exchange(attached_, std::nullopt);
    } else if (next_ < arguments_.size()) {
      value = arguments_[next_++];
    }
    if (value.empty()) error_ = name + " needs a value";
    return value;
  }

  const std::vector<std::string>& arguments_;
  std::string& error_;
  std::size_t next_ = 0;
  bool onlyFiles_ = false;
  std::optional<std::string> attached_;  // what stands after the "=" of the option in hand
  ResultsOptions options_;
};

}  // namespace

std::optional<ResultsOptions> ParseResultsOptions(const std::vector<std::string>& arguments,
                                                  std::string& error) {
  error.clear();
  return Parser(arguments, error).Parse();
}

}  // namespace quorvane
