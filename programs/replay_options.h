#pragma once

#include <string>
#include <variant>
#include <vector>

#include "programs/arguments.h"

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
  std::string journal = {};
};

std::variant<ReplayCommand, Ending> ReadReplayCommand(const std::vector<std::string>& arguments);

}  // namespace quorvane
