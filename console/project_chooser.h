#pragma once

#include <string>

#include "forms/door.h"
#include "race/race_state.h"
#include "records/project.h"

namespace quorvane {

// Finds out which project file is meant, by the command line, the settings and the operator, and opens it.
class ProjectChooser {
 public:
  ProjectChooser(Door& door, RaceState& race, Project& project)
      : door_(door), race_(race), project_(project) {}

  // The project named on the command line; opened at start-up without asking.
  void SetStartupProject(std::string path) { startupProject_ = std::move(path); }
  // The project that is opened, or asked about, at start-up.
  std::string ProjectAtStart() const;
  // False: nothing was chosen, and the open project stays.
  bool OpenAtStart();
  bool Ask(bool atStart);

 private:
  std::string DefaultFolder() const;
  std::string TodaysName() const { return ProjectDate(door_.LocalNow()) + ".ini"; }
  std::string LastFile() const;
  DialogBox FileBox(bool atStart) const;
  bool Open(const std::string& file);
  std::string WhyNotOpened(const std::string& file);

  Door& door_;
  RaceState& race_;
  Project& project_;
  std::string startupProject_;
};

}  // namespace quorvane
