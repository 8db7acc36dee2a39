#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "field/compare.h"
#include "field/field.h"
#include "programs/arguments.h"

namespace quorvane::field {

enum class Task { kFly, kFast, kCompare };

// What the command line of quorvane-field asks for.
struct CommandLine {
  Task task = Task::kFly;
  FieldOptions field;
  std::string link;                   // empty: no link
  std::optional<std::int64_t> delay;  // ms; without it the heats wait for a console
  bool stay = false;
  std::vector<std::string> compared;  // two files: what was flown, what was shown
  CompareOptions compare;
};

std::variant<CommandLine, Ending> ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace quorvane::field
