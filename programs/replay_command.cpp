#include "programs/replay_command.h"

#include "programs/arguments.h"

namespace quorvane {

ReplayCommand ReadReplayCommand(const std::vector<std::string>& arguments) {
  ReplayCommand command;
  Arguments app("quorvane-replay", "Runs a session journal through the console on a virtual clock.\n");
  app.AddFile("--project", command.project,
              "the project file that is written; without it a fresh file in a temporary folder");
  app.AddFile("--settings", command.settings, "gets the settings store at the end, as INI text");
  app.AddFile("--state", command.state,
              "gets the state of the race, the lanes and all controls at the end, as JSON");
  app.AddFile("--frames", command.frames, "gets a tx record for each frame sent");
  app.AddFile("--dialogs", command.dialogs, "gets a line of JSON for each dialog box shown");
  app.add_flag(
      "--in-place", command.inPlace,
      "the files that the journal names by answers are written where they stand; otherwise copies are "
      "used, and --project is no file of the session");
  app.add_flag(
      "--verify", command.verify,
      "compares the frames with the journal's tx records, and the project files with those that the "
      "session left; --project then names the session's file, or a copy of it. No project is written");
  app.AddFile("JOURNAL", command.journal, "of the session; - is standard input")->required();
  app.footer(
      "Exit status: 0 done, or the same; 1 different; 2 the journal cannot be read, or not be run to its "
      "end.");
  app.Read(arguments);
  if (command.verify && command.inPlace) {
    app.Refuse("--verify writes no file of the session, so --in-place does not go with it");
  }
  return command;
}

}  // namespace quorvane
