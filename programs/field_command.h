#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "field/compare.h"
#include "field/field.h"

namespace quorvane::field {

// What quorvane-field was asked for.
struct CommandLine {
  FieldOptions field;
  std::string link;                   // empty: no link
  std::optional<std::int64_t> delay;  // ms; without it the heats wait for a console
  bool stay = false;
  bool fast = false;
  std::vector<std::string> compared;  // two files: what was flown, what was shown
  CompareOptions compare;
};

// Throws an Ending where the program does not get to its work.
CommandLine ReadCommandLine(const std::vector<std::string>& arguments);

}  // namespace quorvane::field
