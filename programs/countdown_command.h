#pragma once

#include <string>
#include <vector>

namespace quorvane {

// The file that quorvane-countdown is to write. Throws an Ending where the program does not get to its work.
std::string ReadCountdownCommand(const std::vector<std::string>& arguments);

}  // namespace quorvane
