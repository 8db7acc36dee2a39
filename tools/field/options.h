#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/field/compare.h"
#include "tools/field/field.h"

namespace quorvane::field {

enum class Task { kFly, kFast, kCompare, kHelp };

// What the command line asks for.
struct CommandLine {
  Task task = Task::kFly;
  FieldOptions field;
  std::string link;                   // empty: no link
  std::optional<std::int64_t> delay;  // ms; without it the heats wait for a console
  bool stay = false;
  std::string flown, shown;  // files to compare
  CompareOptions compare;
};

// On a bad command line gives nothing and one line in `error`.
std::optional<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments, std::string& error);

extern const char* const kHelpText;

}  // namespace quorvane::field
