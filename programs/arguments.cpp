#include "programs/arguments.h"

#include <algorithm>
#include <utility>

#include "programs/commit.h"

namespace quorvane {

Arguments::Arguments(const std::string& program, const std::string& purpose) : CLI::App(purpose, program) {
  set_help_flag("-h,--help", "print this text");
  set_version_flag("--version", program + " " QUORVANE_VERSION " (" + ProgramCommit() + ")",
                   "print the version");
  get_formatter()->column_width(32);
  option_defaults()->disable_flag_override();
}

CLI::Option* Arguments::AddFile(const std::string& name, std::string& file, const std::string& purpose) {
  return add_option(name, file, purpose)->type_name("FILE")->check(NamedFile());
}

CLI::Option* Arguments::AddRepeated(const std::string& name, const std::string& form,
                                    const std::string& purpose,
                                    const std::function<void(std::string)>& take) {
  return add_option(name, purpose)
      ->type_name(form)
      ->type_size(1)
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->each(take);
}

void Arguments::Read(std::vector<std::string> arguments) {
  // The library would take the next argument for the value, or the "=" for a part of it.
  for (const std::string& argument : arguments) {
    if (argument == "--") break;
    const std::size_t equals = argument.find('=');
    const bool isLong = argument.starts_with("--");
    if (isLong && equals == argument.size() - 1) Refuse(argument + " has no value");
    if (!isLong && argument.starts_with('-') && equals == 2) Refuse(argument + ": \"=\" is for long names");
  }
  std::reverse(arguments.begin(), arguments.end());
  try {
    parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    throw Ending{0, help()};
  } catch (const CLI::CallForVersion& version) {
    throw Ending{0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& wrong) {
    Refuse(wrong.what());
  }
}

void Arguments::Refuse(const std::string& what) const {
  std::string plain = what;  // an argument in it may hold anything
  std::ranges::replace_if(
      plain, [](unsigned char c) { return c < ' '; }, ' ');
  throw Ending{2, get_name() + ": " + plain + " (see --help)\n"};
}

const CLI::Validator& NamedFile() {
  static const CLI::Validator validator(
      [](std::string& name) { return name.empty() ? std::string("a file name is empty") : std::string(); },
      "");
  return validator;
}

}  // namespace quorvane
