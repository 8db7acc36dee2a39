#include "ui/command_line.h"

#include <charconv>
#include <optional>
#include <string_view>

#include "console/heat_printer.h"
#include "files/output_guard.h"
#include "ui/printing/paper.h"

namespace quorvane {
namespace {

constexpr int kMostPorts = 31;
constexpr int kMostHeats = 999;
constexpr std::size_t kMostPages = 5000;

std::optional<int> NumberUpTo(const std::string& text, int most) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, number);
  if (fault != std::errc() || stop != end || number < 1 || number > most) return std::nullopt;
  return number;
}

void TakePort(CommandLine& line, const std::string& value) {
  const std::size_t equals = value.find('=');
  const auto number = NumberUpTo(value.substr(0, equals), kMostPorts);
  if (!number || equals == std::string::npos || equals + 1 == value.size()) {
    line.error = "--port takes NUMBER=DEVICE with a number from 1 to 31, not " + value;
  } else if (!line.ports.emplace(*number, value.substr(equals + 1)).second) {
    line.error = "port " + std::to_string(*number) + " is given twice";
  }
}

void TakeHeats(CommandLine& line, const std::string& value) {
  const auto number = NumberUpTo(value, kMostHeats);
  if (number) {
    line.heats = *number;
  } else {
    line.error = "--heats takes a number from 1 to 999, not " + value;
  }
}

bool TakeNumber(std::string_view& text, int& number) {
  const auto [stop, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault != std::errc() || number < 1 || number > kLastRace) return false;
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  return true;
}

// "5" or "5-8".
bool TakeRange(std::string_view& text, std::vector<int>& races) {
  int first = 0;
  if (!TakeNumber(text, first)) return false;
  int last = first;
  if (text.starts_with('-')) {
    text.remove_prefix(1);
    if (!TakeNumber(text, last) || last < first) return false;
  }
  for (int race = first; race <= last; ++race) races.push_back(race);
  return races.size() <= kMostPages;
}

// "1,3,5-8" or "all".
bool TakeRaces(std::string_view text, RaceList& list) {
  if (text == "all") return list.all = true;
  while (TakeRange(text, list.races)) {
    if (text.empty()) return true;
    if (!text.starts_with(',')) return false;
    text.remove_prefix(1);
  }
  return false;
}

void TakePrinting(CommandLine& line, const std::string& name, const std::string& value) {
  Paper paper = Paper::A4;
  if (name == "--print") {
    if (!TakeRaces(value, line.print)) {
      line.error = "--print takes races such as 7 or 1,3,5-8, or the word all, not " + value;
    }
  } else if (name == "--paper") {
    line.paper = value;
    if (!PaperNamed(value, paper)) line.error = "--paper takes A4 or Letter, not " + value;
  } else if (line.output.empty()) {
    line.output = value;
  } else {
    line.error = "one output file at a time: " + value + " is one too many";
  }
}

bool IsPrinting(const std::string& name) {
  return name == "--print" || name == "--paper" || name == "--output" || name == "-o";
}

void TakeOption(CommandLine& line, const std::string& name, const std::string& value) {
  if (name == "--settings") {
    line.settings = value;
  } else if (name == "--port") {
    TakePort(line, value);
  } else if (name == "--journal") {
    line.journal = value;
  } else if (name == "--demo") {
    line.demo = value;
  } else if (IsPrinting(name)) {
    TakePrinting(line, name, value);
  } else {
    TakeHeats(line, value);
  }
  if (line.error.empty() && value.empty()) line.error = name + " needs a value";
}

bool TakesValue(const std::string& name) {
  return name == "--settings" || name == "--port" || name == "--journal" || name == "--demo" ||
         name == "--heats" || IsPrinting(name);
}

void TakeProject(CommandLine& line, const std::string& path) {
  if (path.empty()) {
    line.error = "the project's name is empty";
  } else if (!line.project.empty()) {
    line.error = "one project at a time: " + path + " is one too many";
  } else {
    line.project = path;
  }
}

// What is wrong with the options taken together, else empty.
std::string Contradiction(const CommandLine& line) {
  if (line.print.IsEmpty()) {
    return line.output.empty() && line.paper.empty() ? "" : "-o and --paper go with --print only";
  }
  if (line.project.empty()) return "--print needs a project";
  if (line.output.empty()) return "--print needs -o FILE.pdf";
  return line.demo.empty() && line.journal.empty() && line.ports.empty() ? "" : "--print opens no console";
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  bool options = true;
  for (std::size_t i = 0; i < arguments.size() && line.error.empty(); ++i) {
    const std::string& argument = arguments[i];
    if (!options || argument.empty() || argument[0] != '-') {
      TakeProject(line, argument);
      continue;
    }
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    if (argument == "--") {
      options = false;
    } else if (argument == "--help" || argument == "-h") {
      line.help = true;
    } else if (argument == "--version") {
      line.version = true;
    } else if (!TakesValue(name)) {
      line.error = "there is no option " + argument;
    } else if (equals != std::string::npos) {
      TakeOption(line, name, argument.substr(equals + 1));
    } else if (i + 1 == arguments.size()) {
      line.error = name + " needs a value";
    } else {
      TakeOption(line, name, arguments[++i]);
    }
  }
  if (line.error.empty() && !line.help && !line.version) line.error = Contradiction(line);
  return line;
}

std::string TroubleWithSettings(const CommandLine& line) {
  if (line.settings.empty()) return "";
  const auto reason = WhyNotWrite(line.settings, FileKind::Settings, {line.project});
  return reason ? "cannot keep settings in " + line.settings + ": " + *reason : "";
}

std::string HelpText() {
  return "Usage: quorvane [OPTION...] [PROJECT.ini]\n"
         "       quorvane --print RACES PROJECT.ini -o FILE.pdf [--paper A4|Letter]\n"
         "\n"
         "The race-control console. Opens that project without asking; without one it offers the project of "
         "last\n"
         "time.\n"
         "\n"
         "  --settings FILE   keep the settings in that INI file instead of the user's settings\n"
         "  --port N=DEVICE   serial port COM<N> (1 to 31) is that device; may be given several times\n"
         "  --journal FILE    record the session in that file, for quorvane-replay\n"
         "  --demo FOLDER     fly without asking anything, leave pictures of the window and shown.jsonl in "
         "the\n"
         "                    folder, print the lanes' results, and end after the heats\n"
         "  --heats N         how many heats the demonstration waits for (default 1)\n"
         "  --print RACES     write the heat reports of these races (7, or 1,3,5-8, or all) without a "
         "window\n"
         "  -o FILE.pdf       where to; one page a race\n"
         "  --paper SIZE      A4 or Letter; otherwise as set up, or as usual in this country\n"
         "  --version         print the version\n"
         "  --help            print this text\n";
}

}  // namespace quorvane
