#pragma once

#include <string>

#include "console/running_race.h"
#include "race/race_state.h"
#include "records/project.h"

namespace quorvane {

// A saved race that is put right, and saved in its place with what was there before kept beside it. Between
// Begin and End RaceState says that the race is being amended.
class Amendment {
 public:
  Amendment(RaceState& race, Project& project, const LanePanels& lanes)
      : race_(race), project_(project), lanes_(lanes) {}

  // `section`, "Race7" or "Refly2", is what the lanes show.
  void Begin(const std::string& section);
  // With what a program that died had put right already.
  void Resume(const KeptRace& kept);
  void End() { race_.Amending = false; }
  // Names the race as it stands in the file: when it was saved, and how often it has been amended since.
  std::string Version(const std::string& section);
  // False: another program has changed the race meanwhile.
  bool Fits() { return Version(section_) == version_; }
  // Returns which amendment of the race it is. The places must have been given.
  int Save(const std::string& comments, const LocalDateTime& now);
  // Adds which race it is.
  void Describe(RunningRace& race) const;

 private:
  RaceState& race_;
  Project& project_;
  const LanePanels& lanes_;
  std::string section_;
  std::string version_;  // of the race as it was shown
};

}  // namespace quorvane
