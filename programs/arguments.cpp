#include "programs/arguments.h"

#include <algorithm>
#include <iostream>

namespace quorvane {

int Ending::Tell() const {
  (status == 0 ? std::cout : std::cerr) << text << std::flush;
  return status == 0 && !std::cout ? 1 : status;
}

Arguments::Arguments(const std::string& program, const std::string& purpose) : CLI::App(purpose, program) {
  set_help_flag("-h,--help", "print this text");
  set_version_flag("--version", program + " " QUORVANE_VERSION, "print the version");
  get_formatter()->column_width(32);
  option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::Throw);
}

std::optional<Ending> Arguments::Read(std::vector<std::string> arguments) {
  std::reverse(arguments.begin(), arguments.end());
  try {
    parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return Ending{0, help()};
  } catch (const CLI::CallForVersion& version) {
    return Ending{0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& wrong) {
    return Wrong(wrong.what());
  }
  return std::nullopt;
}

Ending Arguments::Wrong(const std::string& what) const {
  return {2, get_name() + ": " + what + " (see --help)\n"};
}

const CLI::Validator& NamedFile() {
  static const CLI::Validator validator(
      [](std::string& name) { return name.empty() ? std::string("a file name is empty") : std::string(); },
      "FILE");
  return validator;
}

}  // namespace quorvane
