// Any command line for each of the programs: it is read, or refused in one plain line. No file is touched.
//
// The input is the arguments, each with a zero byte behind it; the first names the program.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/text.h"
#include "fuzz/require.h"
#include "programs/console_command.h"
#include "programs/ending.h"
#include "programs/field_command.h"
#include "programs/replay_command.h"
#include "programs/results_command.h"

namespace {

using namespace quorvane;

void Read(const std::string& program, const std::vector<std::string>& arguments) {
  if (program == "field") return static_cast<void>(field::ReadCommandLine(arguments));
  if (program == "replay") return static_cast<void>(ReadReplayCommand(arguments));
  if (program == "results") return static_cast<void>(ReadResultsCommand(arguments));
  const CommandLine line = ParseCommandLine(arguments);
  Require(!OnlyPrints(line) || (!line.project.empty() && !line.output.empty()));
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
    Tell(std::to_string(ending.status) + ending.text);
    const auto control = [](unsigned char c) { return c < ' '; };
    Require(ending.status == 0 || (ending.status == 2 && ending.text.ends_with('\n') &&
                                   std::ranges::count_if(ending.text, control) == 1));
  }
  return 0;
}
