#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "console/notices.h"
#include "forms/door.h"
#include "race/project_values.h"
#include "race/race_state.h"
#include "records/project.h"

namespace quorvane {

// Finds out which project file is meant, by the command line, the settings and the operator, and opens it.
class ProjectChooser {
 public:
  ProjectChooser(Door& door, RaceState& race, Project& project, Notices& notices)
      : door_(door), race_(race), project_(project), notices_(notices) {}

  // The project named on the command line; opened at start-up without asking.
  void SetStartupProject(std::string path) { startupProject_ = std::move(path); }
  // The project that is opened, or asked about, at start-up.
  std::string ProjectAtStart() const;
  // False: nothing was chosen, and the open project stays.
  bool OpenAtStart();
  // A race that begins behind the box keeps its project; the operator is told.
  bool Ask(bool atStart) { return Choose(FileBox(atStart), atStart); }
  bool AskNew();
  bool AskRecent(const std::string& file);  // the operator has chosen it from the list
  // Tells why, where the file does not become the project.
  bool Open(const std::string& file);
  // The projects chosen last that still exist, without the open one and those of practice.
  std::vector<std::string> Recent() const;

 private:
  std::vector<std::string> Remembered() const;
  void OfferNextTime(const std::string& file);
  void Remember(const std::string& file);
  bool Choose(const DialogBox& box, bool atStart);
  std::string DefaultFolder() const;
  std::string TodaysName() const { return ProjectDate(door_.LocalNow()) + ".ini"; }
  std::string LastFile() const;
  DialogBox FileBox(bool atStart) const;

  Door& door_;
  RaceState& race_;
  Project& project_;
  Notices& notices_;
  std::string startupProject_;
};

// Opens the file as the project, with the folders that it needs. Returns why not, in words for the operator.
std::string OpenAsProject(Project& project, const std::string& file);

// The races of the open project by number: which have run, which comes next, and how a race gets its header.
class RaceBook {
 public:
  RaceBook(Project& project, RaceState& race) : project_(project), race_(race) {}

  bool HasRun(int race) { return Timestamp(RaceSection(race)) > 0.0; }
  bool HasTimestamp(int race) { return Timestamp(RaceSection(race)) != 0.0; }
  // Of the flight that stands for the race: "Race7", or "Refly2" that has repeated it.
  std::string ShownSection(int number);

  // In the section "Current". A number that does not fit reads as the fallback: the project still opens.
  std::int16_t Number(const std::string& key, std::int16_t fallback);
  std::string Text(const std::string& key) { return project_.GetProjectValue("Current", key, ""); }
  void Keep(const std::string& key, const std::string& value) {
    project_.SetProjectValue("Current", key, value);
  }

  // Moves on to the first race that has no time stamp.
  void SkipRacesRun();
  // Keeps where the console stands.
  void KeepPlace();
  // What another program has put where this race was to go stays; this race takes the next number that is
  // free, and the operator is to be told what is returned.
  std::string TakeFreeNumber();
  // Writes what is known of the race but its lanes; returns the section to which their names are added.
  std::string Write(const std::string& mode, const std::string& comments, const LocalDateTime& now);

 private:
  double Timestamp(const std::string& section);
  std::int16_t NextRefly();

  Project& project_;
  RaceState& race_;
};

}  // namespace quorvane
