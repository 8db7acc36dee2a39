#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "console/notices.h"
#include "console/open_project.h"
#include "console/running_race.h"
#include "files/background_files.h"
#include "forms/door.h"
#include "race/race_state.h"

namespace quorvane {

// Keeps the race on the console beside its project, so that neither a crash nor a slip of the hand loses it.
class RaceKeeper {
 public:
  using RadioSoFar = std::function<std::optional<RadioRecord>()>;

  RaceKeeper(Door& door, RaceState& race, Project& project, BackgroundFiles& files, const LanePanels& lanes,
             Notices& notices)
      : door_(door), race_(race), project_(project), files_(files), lanes_(lanes), notices_(notices) {}

  // The race as it is now: what has changed goes to the disk, with how it has been received until then.
  void Keep(const RunningRace& race, const RadioSoFar& radio);
  // There is no race to be kept; what is not saved yet stays kept.
  void Release();
  // Run after every event: what a save could not bring to the disk is kept for the next start.
  void KeepUnsaved();
  // The same for projects out of which another program has taken races.
  void KeepReplaced();
  // False: the disk of the project refuses that too.
  bool KeepsUnsaved() const { return files_.Problem().empty(); }
  // The race, or an amendment that has put something right, goes without being saved: a race can be brought
  // back until the next one starts, an amendment until something else is dropped. False: there was nothing.
  bool Drop();
  // A race; an amendment stays.
  void ForgetDropped();
  // It is on the console again, and stays on the disk until it is kept there.
  void DroppedIsTaken();
  // What cannot go on any more, under another name: `what` tells the operator what it is.
  void SetDroppedAside(const std::string& what);
  void SetRunningAside(const std::string& what);
  bool HasDropped() const { return !dropped_.empty(); }
  std::optional<KeptRace> Dropped() const { return ReadRunning(dropped_); }

  // What a program that died with this project open has left. Before any box: a race may begin behind it.
  void FindLeft();
  // What was found and is not in the project, until it has been taken up or set aside.
  std::optional<KeptRace> Left();
  bool HasLeft() const { return !left_.empty(); }
  void LeftIsTaken() { left_.clear(); }
  // It can still be brought back as if it had been thrown away, as long as nothing else can.
  void LeftIsDropped() {
    if (dropped_.empty()) dropped_ = left_;
  }
  // What is not taken up goes under another name: `what` tells the operator what it is.
  void EndOffer(const std::string& what = kNotRecovered);
  // "Race 7, heat 3, round 2, 4 laps on lane 1, 1 lap on lane 2".
  std::string StoryOf(const KeptRace& kept) const;

 private:
  struct State {
    RunningRace race;
    std::array<frmLane::RunningState, 4> lanes;
    bool operator==(const State&) const = default;
  };

  static constexpr const char* kNotRecovered = "The race that was not recovered";
  static constexpr const char* kNotRead = "What could not be read";
  // ms between two times that a race in flight is kept, although nothing is new: what was judged is known.
  static constexpr std::int64_t kBeat = 1000;

  void SetAside(const std::string& from, std::string& text, const std::string& what,
                const std::string& replaced = {});
  std::string FreeName(const std::string& from) const;
  void MoveAside(const char* ending, const std::string& what);
  std::optional<std::string> Find(const char* ending);
  std::string Beside(const char* ending) const { return BesideProject(of_, ending); }
  std::string TextOf(const RunningRace& race, const RadioSoFar& radio);
  bool InProject(const KeptRace& kept);
  bool SavedIn(const std::string& section, const KeptRace& kept);
  void TakeUnsaved();

  Door& door_;
  RaceState& race_;
  Project& project_;
  BackgroundFiles& files_;
  const LanePanels& lanes_;
  Notices& notices_;
  RaceBook book_{project_, race_};
  std::optional<State> kept_;  // of the race on the console, as it was kept last
  std::int64_t keptAt_ = 0;    // ms of the console clock
  bool corrected_ = false;     // the amendment on the console differs from what is saved
  std::string text_;
  std::string file_;
  std::string replaced_;  // goes when the race on the console is kept
  std::string of_;        // the project that is open; another one may be about to be
  std::set<std::string> asides_;
  bool found_ = false;                          // a file of a race, whatever was in it
  std::string left_;                            // by a program that died, until the operator has decided
  std::map<std::string, std::size_t> unsaved_;  // values kept for a project, by the file that has them
  std::string dropped_;                         // the last race that went without being saved; empty: none
};

}  // namespace quorvane
