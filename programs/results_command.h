#pragma once

#include <string>
#include <vector>

namespace quorvane {

// What quorvane-results was asked for.
struct ResultsCommand {
  std::string format = "text";
  bool byteOrderMark = false;
  std::string output = {};  // empty or "-": standard output
  std::string project = {};
};

// Throws an Ending where the program does not get to its work.
ResultsCommand ReadResultsCommand(const std::vector<std::string>& arguments);

}  // namespace quorvane
