#pragma once

#include <cstdint>
#include <string>

#include "console/frm_judge_controls.h"
#include "files/background_files.h"
#include "forms/door.h"
#include "records/project.h"

namespace quorvane {

// The console's line of notices, and what it says of the program's own troubles.
class Notices {
 public:
  // A notice that is no news goes when its reason does.
  enum class Kind : std::uint8_t {
    kNews,
    kSaveFirst,
    kCountsOverRace,
    kNotSaved,
    kNotKept,
    kRecovered,
    kThrownAway,
    kSaved
  };

  Notices(JudgeControls& shown, const Door& door, Project& project, const BackgroundFiles& keeper)
      : shown_(shown), door_(door), project_(project), keeper_(keeper) {}

  // Says it in the window and asks nothing; the empty text takes the last notice away. What a save has come
  // to is said again when a notice that came over it goes.
  void Show(const std::string& text, Kind kind = Kind::kNews);
  // What went well and can be seen elsewhere: it does not come over what a save has come to.
  void ShowDone(const std::string& text);
  // What was chosen in a box is left undone, because a race has begun behind it.
  void TellOvertaken() { Show("A race has begun meanwhile: what you chose was left undone"); }
  void TakeAway(Kind kind);
  // Run after every event: what could not be saved or kept, and an error that has ended it.
  void TellTroubles();

 private:
  void TellUnsaved();

  JudgeControls& shown_;
  const Door& door_;
  Project& project_;
  const BackgroundFiles& keeper_;
  Kind kind_ = Kind::kNews;
  std::string saved_;
  // What has been told: why a save has failed, why the race on the console could not be kept, errors.
  std::string unsaved_;
  std::string unkept_;
  int errors_ = 0;
};

}  // namespace quorvane
