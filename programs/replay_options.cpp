#include "programs/replay_options.h"

#include <map>

namespace quorvane {

const char* const kReplayUsage =
    "usage: quorvane-replay [--project FILE] [--settings FILE] [--state FILE] [--frames FILE]\n"
    "                       [--dialogs FILE] [--in-place] [--verify] JOURNAL\n"
    "\n"
    "Runs a session journal through the console on a virtual clock.\n"
    "\n"
    "  --project FILE   the project file that is written; without it a fresh file in a temporary folder\n"
    "  --settings FILE  gets the settings store at the end, as INI text\n"
    "  --state FILE     gets the state of the race, the lanes and all controls at the end, as JSON\n"
    "  --frames FILE    gets a tx record for each frame sent\n"
    "  --dialogs FILE   gets a line of JSON for each dialog box shown\n"
    "  --in-place       the files that the journal names by answers are written where they stand; otherwise\n"
    "                   copies are used, and --project is no file of the session\n"
    "  --verify         compares the frames with the journal's tx records, and the project files with those\n"
    "                   that the session left; --project then names the session's file, or a copy of it.\n"
    "                   No project is written\n"
    "\n"
    "Exit status: 0 done, or the same; 1 different; 2 the journal cannot be read, or not be run to its "
    "end.\n";

std::optional<ReplayCommand> ReadCommand(const std::vector<std::string>& words, std::string& problem) {
  ReplayCommand command;
  const std::map<std::string, std::string*> files = {{"--project", &command.project},
                                                     {"--settings", &command.settings},
                                                     {"--state", &command.state},
                                                     {"--frames", &command.frames},
                                                     {"--dialogs", &command.dialogs}};
  bool optionsOver = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    const std::string name = word.substr(0, word.find('='));
    const auto file = files.find(name);
    if (optionsOver || word == "-" || !word.starts_with('-')) {
      if (!command.journal.empty()) problem = "one journal at a time";
      command.journal = word;
    } else if (word == "--") {
      optionsOver = true;
    } else if (word == "--verify") {
      command.verify = true;
    } else if (word == "--in-place") {
      command.inPlace = true;
    } else if (word == "--help" || word == "-h") {
      command.help = true;
    } else if (file == files.end()) {
      problem = "there is no option " + word;
    } else if (name.size() < word.size()) {
      *file->second = word.substr(name.size() + 1);
    } else if (i + 1 < words.size()) {
      *file->second = words[++i];
    } else {
      problem = word + " needs a file";
    }
    if (!problem.empty()) return std::nullopt;
  }
  if (command.verify && command.inPlace) {
    problem = "--verify writes no file of the session, so --in-place does not go with it";
    return std::nullopt;
  }
  if (command.journal.empty() && !command.help) {
    problem = "no journal given";
    return std::nullopt;
  }
  return command;
}

}  // namespace quorvane
