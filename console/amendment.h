#pragma once

#include <array>
#include <string>

#include "console/starter.h"
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
  void End() { race_.Amending = false; }
  // False: another program has changed the race meanwhile.
  bool Fits() { return project_.GetProjectValue(section_, "Timestamp", "") == timestamp_; }
  // Returns which amendment of the race it is. The places must have been given.
  int Save(const std::string& comments, const LocalDateTime& now);

 private:
  RaceState& race_;
  Project& project_;
  const LanePanels& lanes_;
  std::string section_;
  std::string timestamp_;              // of the race as it was shown
  std::array<unsigned, 4> logs_ = {};  // the revisions of its logs
};

}  // namespace quorvane
