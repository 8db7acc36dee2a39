#include "programs/countdown_command.h"

#include "programs/arguments.h"

namespace quorvane {

std::string ReadCountdownCommand(const std::vector<std::string>& arguments) {
  std::string name;
  Arguments app("quorvane-countdown", "Writes the sound of the 60-second count.\n");
  app.AddFile("FILE.wav", name, "to be written")->required();
  app.Read(arguments);
  return name;
}

}  // namespace quorvane
