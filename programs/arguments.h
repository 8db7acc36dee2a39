#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "programs/ending.h"

namespace quorvane {

// Include this in as few sources as can be: the library takes long to compile.
//
// A command line in the one style of all programs: "--name value" or "--name=value", "--" before file names
// that begin with "-", --help and --version.
class Arguments : public CLI::App {
 public:
  Arguments(const std::string& program, const std::string& purpose);

  // A file name, which must not be empty.
  CLI::Option* AddFile(const std::string& name, std::string& file, const std::string& purpose);
  // An option that may come again; `take` gets each value and throws CLI::ValidationError for a wrong one.
  CLI::Option* AddRepeated(const std::string& name, const std::string& form, const std::string& purpose,
                           const std::function<void(std::string)>& take);

  // Reads them into the variables that the options are bound to; otherwise throws an Ending.
  void Read(std::vector<std::string> arguments);
  // For options that contradict each other.
  [[noreturn]] void Refuse(const std::string& what) const;
};

// For file names: the name must not be empty, so that an unset variable of a script is noticed.
const CLI::Validator& NamedFile();

}  // namespace quorvane
