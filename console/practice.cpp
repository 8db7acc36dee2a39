#include "console/practice.h"

namespace quorvane {
namespace {

// By PracticeOptions::Radio: a probability per frame, of noise before it, and of its loss or damage.
struct Line {
  const char* noise;
  const char* fault;
};
constexpr Line kLines[] = {{"0", "0"}, {"0.05", "0.01"}, {"0.2", "0.08"}};

}  // namespace

// The first heat begins four seconds after the console has opened the terminal, its start signal is given a
// minute later. Between two heats there is time to look at the result.
std::vector<std::string> FieldArguments(const PracticeOptions& options) {
  std::vector<std::string> arguments = {
      "--heats", "0", "--pause", "15000", "--mode", options.mode == 0 ? "all" : std::to_string(options.mode)};
  const auto add = [&](const char* option, const char* value) {
    arguments.insert(arguments.end(), {option, value});
  };
  if (options.radio != PracticeOptions::Radio::kGood) {
    const Line& line = kLines[static_cast<std::size_t>(options.radio)];
    add("--noise", line.noise);
    add("--loss", line.fault);
    add("--damage", line.fault);
  }
  if (options.silentJudge) add("--silent", "P2@75000");
  if (options.lostTimers) add("--silent", "TM@95000");
  if (options.starterRestarts) add("--restart", "85000");
  return arguments;
}

}  // namespace quorvane
