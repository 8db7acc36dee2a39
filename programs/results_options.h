#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

enum class ResultsFormat : std::uint8_t { Text, Csv, Json, Html };

// What the command line of quorvane-results asks for.
struct ResultsOptions {
  bool help = false;
  bool version = false;
  ResultsFormat format = ResultsFormat::Text;
  bool byteOrderMark = false;
  std::string output;  // empty: standard output
  std::string project;
};

// On a bad command line gives nothing and one line in `error`.
std::optional<ResultsOptions> ParseResultsOptions(const std::vector<std::string>& arguments,
                                                  std::string& error);

extern const char* const kResultsHelp;

}  // namespace quorvane
