#include "programs/console_command.h"

#include <charconv>
#include <optional>

#include "base/text.h"
#include "programs/arguments.h"
#include "results/race_records.h"

namespace quorvane {
namespace {

constexpr int kMostPorts = 31;
constexpr int kMostHeats = 999;
constexpr std::size_t kMostPages = 5000;

// Of digits alone, from 1 to `most`.
std::optional<int> WholeNumber(const std::string& text, int most) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, number);
  if (fault != std::errc() || stop != end || number < 1 || number > most) return std::nullopt;
  return number;
}

// "5=/dev/ttyUSB0".
void TakePort(std::map<int, std::string>& ports, const std::string& value) {
  const std::size_t sign = value.find('=');
  const auto number = WholeNumber(value.substr(0, sign), kMostPorts);
  if (!number || sign >= value.size() - 1) {
    throw CLI::ValidationError(value, "is not NUMBER=DEVICE with a number from 1 to 31");
  }
  if (!ports.emplace(*number, value.substr(sign + 1)).second) {
    throw CLI::ValidationError(value, "gives this port a second device");
  }
}

// "1,3,5-8" or "all".
bool TakeRaces(RaceList& list, const std::string& value) {
  if (value == "all") return list.all = true;
  const std::vector<std::string> parts = Split(value, ',');
  for (const std::string& part : parts) {
    const std::size_t dash = part.find('-');
    const auto first = WholeNumber(part.substr(0, dash), kLastRace);
    const auto last = dash == std::string::npos ? first : WholeNumber(part.substr(dash + 1), kLastRace);
    if (!first || !last || *last < *first) return false;
    for (int race = *first; race <= *last; ++race) list.races.push_back(race);
  }
  return !parts.empty() && list.races.size() <= kMostPages;
}

void AddConsole(Arguments& app, CommandLine& line) {
  app.AddFile("PROJECT.ini", line.project,
              "opened without asking; without it the project of last time is offered");
  app.AddFile("--settings", line.settings,
              "keep the settings in that INI file instead of the user's settings");
  app.AddRepeated("--port", "N=DEVICE",
                  "serial port COM<N> (1 to 31) is that device; may be given several times",
                  [&](const std::string& value) { TakePort(line.ports, value); });
  app.AddFile("--journal", line.journal, "record the session in that file, for quorvane-replay");
  app.add_option("--language", line.language, "de or en; otherwise that of the desktop")
      ->type_name("CODE")
      ->check(CLI::IsMember({"de", "en"}).description(""));
  app.AddFile(
         "--demo", line.demo,
         "fly without asking anything, leave pictures of the window and shown.jsonl in the folder, print the "
         "lanes' results, and end after the heats")
      ->type_name("FOLDER");
  app.add_option("--heats", line.heats, "how many heats the demonstration waits for [1]")
      ->type_name("N")
      ->check(CLI::Range(1, kMostHeats).description(""));
}

void AddPrinting(Arguments& app, CommandLine& line) {
  const std::string group = "Heat reports and protest sheets: --print RACES PROJECT.ini -o FILE.pdf";
  const auto add = [&](const char* option, RaceList& list, const char* help) {
    const auto take = [&list](const std::string& value) {
      if (TakeRaces(list, value)) return;
      throw CLI::ValidationError(value, "is not races such as 7 or 1,3,5-8, or the word all");
    };
    app.AddRepeated(option, "RACES", help, take)->group(group);
  };
  add("--print", line.print,
      "write the heat reports of these races (7, or 1,3,5-8, or all) without a window");
  add("--protest", line.protest,
      "in place of the heat reports the protest sheets, which tell all that happened in a race");
  app.AddFile("-o,--output", line.output, "the PDF file, one page a heat report")->group(group);
  app.add_option("--paper", line.paper, "A4 or Letter; otherwise as set up, or as usual in this country")
      ->type_name("SIZE")
      ->check(CLI::IsMember({"A4", "Letter"}, CLI::ignore_case).description(""))
      ->group(group);
}

// What is wrong with the options taken together, else empty.
std::string Contradiction(const CommandLine& line) {
  if (!OnlyPrints(line)) {
    return line.output.empty() && line.paper.empty() ? ""
                                                     : "-o and --paper go with --print or --protest only";
  }
  if (!line.print.IsEmpty() && !line.protest.IsEmpty()) return "--print and --protest exclude each other";
  const std::string option = line.print.IsEmpty() ? "--protest" : "--print";
  if (line.project.empty()) return option + " needs a project";
  if (line.output.empty()) return option + " needs -o FILE.pdf";
  const bool console = !line.demo.empty() || !line.journal.empty() || !line.ports.empty();
  return console ? option + " opens no console" : "";
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  Arguments app("quorvane", "The race-control console.\n");
  AddConsole(app, line);
  AddPrinting(app, line);
  app.Read(arguments);
  if (const std::string wrong = Contradiction(line); !wrong.empty()) app.Refuse(wrong);
  return line;
}

}  // namespace quorvane
