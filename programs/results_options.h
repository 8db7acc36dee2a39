#pragma once

#include <string>
#include <variant>
#include <vector>

#include "programs/arguments.h"

namespace quorvane {

// What the command line of quorvane-results asks for.
struct ResultsOptions {
  std::string format = "text";  // or "csv", "json", "html"
  bool byteOrderMark = false;
  std::string output = {};  // empty or "-": standard output
  std::string project = {};
};

std::variant<ResultsOptions, Ending> ParseResultsOptions(const std::vector<std::string>& arguments);

}  // namespace quorvane
