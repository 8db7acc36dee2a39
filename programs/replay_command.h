#pragma once

#include <string>
#include <vector>

namespace quorvane {

// What quorvane-replay was asked for; no file is an empty name.
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

// Throws an Ending where the program does not get to its work.
ReplayCommand ReadReplayCommand(const std::vector<std::string>& arguments);

}  // namespace quorvane
