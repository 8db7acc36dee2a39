// Any command line for each of the programs: it is read, or refused in one plain line. No file is touched.
//
// The input is the arguments, each with a zero byte behind it; the first names the program.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/text.h"
#include "fuzz/require.h"
#include "programs/arguments.h"
#include "programs/console_command.h"
#include "programs/field_command.h"
#include "programs/replay_command.h"
#include "programs/results_command.h"
#include "results/race_records.h"

namespace {

using namespace quorvane;

void Read(const std::string& program, const std::vector<std::string>& arguments) {
  if (program == "field") {
    const field::LineOptions line = field::ReadCommandLine(arguments).field.line;
    for (const double share : {line.noise, line.loss, line.damage}) Require(share >= 0 && share <= 1);
  } else if (program == "replay") {
    Require(!ReadReplayCommand(arguments).journal.empty());
  } else if (program == "results") {
    Require(!ReadResultsCommand(arguments).project.empty());
  } else {
    const CommandLine line = ParseCommandLine(arguments);
    for (const auto& [port, device] : line.ports) Require(port >= 1 && port <= 31 && !device.empty());
    for (const int race : line.print.races) Require(race >= 1 && race <= kLastRace);
    Require(!OnlyPrints(line) || (!line.project.empty() && !line.output.empty()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> arguments = Split(std::string(data, data + size), '\0');
  if (arguments.size() < 2) return 0;
  arguments.pop_back();
  const std::string program = arguments[0];
  arguments.erase(arguments.begin());
  try {
    Read(program, arguments);
  } catch (const Ending& ending) {
    const auto control = [](unsigned char c) { return c < ' '; };
    Require(ending.status == 0 || (ending.status == 2 && ending.text.ends_with('\n') &&
                                   std::ranges::count_if(ending.text, control) == 1));
  }
  return 0;
}
