#include "ui/command_line.h"

#include <charconv>
#include <optional>

namespace quorvane {
namespace {

constexpr int kMostPorts = 31;
constexpr int kMostHeats = 999;

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

void TakeOption(CommandLine& line, const std::string& name, const std::string& value) {
  if (name == "--settings") {
    line.settings = value;
  } else if (name == "--port") {
    TakePort(line, value);
  } else if (name == "--journal") {
    line.journal = value;
  } else if (name == "--demo") {
    line.demo = value;
  } else {
    TakeHeats(line, value);
  }
  if (line.error.empty() && value.empty()) line.error = name + " needs a value";
}

bool TakesValue(const std::string& name) {
  return name == "--settings" || name == "--port" || name == "--journal" || name == "--demo" ||
         name == "--heats";
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
  return line;
}

std::string HelpText() {
  return "Usage: quorvane [OPTION...] [PROJECT.ini]\n"
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
         "  --version         print the version\n"
         "  --help            print this text\n";
}

}  // namespace quorvane
