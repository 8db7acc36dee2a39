#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// The command line of quorvane-replay.
struct ReplayCommand {
  std::string project = {};
  std::string settings = {};
  std::string state = {};
  std::string frames = {};
  std::string dialogs = {};
  bool verify = false;
  bool inPlace = false;
  bool help = false;
  std::string journal = {};
};

// Nothing when the words are no such command line; `problem` is then what is wrong with them.
std::optional<ReplayCommand> ReadCommand(const std::vector<std::string>& words, std::string& problem);

extern const char* const kReplayUsage;

}  // namespace quorvane
