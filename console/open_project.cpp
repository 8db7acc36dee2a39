#include "console/open_project.h"

#include <algorithm>

#include "base/text.h"
#include "files/file_ops.h"
#include "records/race_record.h"

namespace quorvane {
namespace {

constexpr const char* kSection = "DiskFile";  // of the settings

}  // namespace

std::string ProjectChooser::DefaultFolder() const {
#ifdef _WIN32
  return "c:\\Quorvane\\";
#else
  return door_.System().HomeFolder() + "Quorvane/";
#endif
}

std::string ProjectChooser::LastFile() const {
  return door_.System().Settings().GetSetting(kSection, "FileName", DefaultFolder() + TodaysName());
}

std::string ProjectChooser::ProjectAtStart() const {
  return startupProject_.empty() ? LastFile() : startupProject_;
}

bool ProjectChooser::OpenAtStart() {
  const std::string file = race_.ProjectFile = ProjectAtStart();
  if (startupProject_.empty() && FileExists(file)) {
    const std::string title = project_.ReadProfileString("Current", "Title", "", file);
    const DialogBox box{DialogKind::YesNoCancel, "Open Project",
                        "Open previous project? (" + title + ")\r\r" + file};
    const DialogAnswer::Word word = door_.Ask(box).word;
    if (word == DialogAnswer::Word::Cancel) return false;
    if (word == DialogAnswer::Word::No) return Ask(true);
  }
  if (!Open(file)) return Ask(true);
  // The next start without a name offers what was flown last, however it was opened.
  if (!startupProject_.empty()) OfferNextTime(WholePath(file));
  Remember(file);
  return true;
}

void ProjectChooser::OfferNextTime(const std::string& file) {
  SettingsStore& settings = door_.System().Settings();
  settings.SaveSetting(kSection, "InitDir", ParentFolder(file));
  settings.SaveSetting(kSection, "FileName", file);
}

DialogBox ProjectChooser::FileBox(bool atStart) const {
  DialogBox box{.kind = DialogKind::OpenFile,
                .title = "Open Existing Quorvane Project",
                .preset = LastFile(),
                .folder = ParentFolder(LastFile()),
                .defaultExtension = ".ini"};
  if (!atStart) return box;
  const std::string folder = ParentFolder(race_.ProjectFile);
  const bool there = folder.empty() || FolderExists(folder);
  box.kind = DialogKind::SaveFile;
  box.title = "Open New Quorvane Project";
  box.preset = (there ? folder : door_.System().HomeFolder()) + TodaysName();
  box.folder = door_.System().Settings().GetSetting(kSection, "InitDir", DefaultFolder());
  return box;
}

// The day may have a project already.
bool ProjectChooser::AskNew() {
  DialogBox box = FileBox(true);
  box.title = "New Quorvane Project";
  const std::string name = WithoutExtension(box.preset);
  for (int number = 2; FileExists(box.preset); ++number) {
    box.preset = name + " " + std::to_string(number) + ".ini";
  }
  return Choose(box, false);
}

bool ProjectChooser::AskRecent(const std::string& file) {
  return Choose({.kind = DialogKind::OpenFile,
                 .title = "Open Recent",
                 .preset = file,
                 .defaultExtension = ".ini",
                 .chosen = true},
                false);
}

std::vector<std::string> ProjectChooser::Remembered() const {
  return Split(door_.System().Settings().GetSetting(kSection, "Recent", ""), '\n');
}

std::vector<std::string> ProjectChooser::Recent() const {
  constexpr std::size_t kMostShown = 8;
  std::vector<std::string> there;
  for (const std::string& file : Remembered()) {
    const bool open = file == WholePath(race_.ProjectFile);
    if (!open && there.size() < kMostShown && FileExists(file)) there.push_back(file);
  }
  return there;
}

// More than are shown: a stick that is not plugged in today comes back tomorrow.
void ProjectChooser::Remember(const std::string& file) {
  constexpr std::size_t kMostKept = 16;
  std::vector<std::string> files = Remembered();
  const std::string whole = WholePath(file);
  std::erase(files, whole);
  files.insert(files.begin(), whole);
  files.resize(std::min(files.size(), kMostKept));
  door_.System().Settings().SaveSetting(kSection, "Recent", Join(files, '\n'));
}

bool ProjectChooser::Choose(const DialogBox& box, bool atStart) {
  std::string file;
  do {
    if (box.chosen && !file.empty()) return false;  // the same answer would come again
    const DialogAnswer answer = door_.Ask(box);
    if (answer.word != DialogAnswer::Word::File || answer.text.empty()) return false;
    // A race that began behind the box belongs to the project that is open.
    if (!atStart && race_.AtStake()) {
      notices_.TellOvertaken();
      return false;
    }
    file = answer.text;
    if (box.chosen && !FileExists(file)) {
      door_.Ask({DialogKind::Ok, box.title, "This project is not there any more:\r\r" + file});
      return false;
    }
  } while (!Open(file));
  OfferNextTime(file);
  Remember(file);
  return true;
}

bool ProjectChooser::Open(const std::string& file) {
  const std::string trouble = OpenAsProject(project_, file);
  // Locks, rights and folders are nothing that a replay could find out.
  door_.NoteProject(file, trouble.empty());
  if (trouble.empty()) return true;
  door_.Ask({DialogKind::Ok, "Open Project", trouble, DialogIcon::Exclamation});
  return false;
}

std::string OpenAsProject(Project& project, const std::string& file) {
  const std::string folder = ParentFolder(file);
  MakeFolderPath(folder);
  if (!folder.empty() && !FolderExists(folder)) {
    return "This folder is not there and cannot be made:\r\r" + folder + "\r\rChoose another place.";
  }
  switch (project.Open(file)) {
    case Project::Opened::HeldElsewhere:
      // Two consoles on one file would take each other's races for their own.
      return "This project is open in another console:\r\r" + file +
             "\r\rChoose another file, or close that console.";
    case Project::Opened::NoProject:
      return "This file is no project:\r\r" + file + "\r\rIt stays as it is. Choose another file.";
    case Project::Opened::Unreadable:
      return project.OpenProblem() + "\r\rChoose another file.";
    default:
      return "";
  }
}

double RaceBook::Timestamp(const std::string& section) {
  return LeadingNumber(project_.GetProjectValue(section, "Timestamp", "0"));
}

std::string RaceBook::ShownSection(int number) {
  std::string race = RaceSection(number);
  try {
    const double id = LeadingNumber(project_.GetProjectValue(race, "ReflyID", "0"));
    return id == 0.0 ? race : ReflySection(RoundTo<std::int32_t>(id));
  } catch (const OverflowError&) {
    return race;  // no refly has such a number
  }
}

std::int16_t RaceBook::Number(const std::string& key, std::int16_t fallback) {
  try {
    return LeadingInteger(project_.GetProjectValue("Current", key, std::to_string(fallback)));
  } catch (const OverflowError&) {
    return fallback;
  }
}

// Stops at the last number there is, so that a file that claims them all still opens.
void RaceBook::SkipRacesRun() {
  while (race_.RaceNumber < kLastRace && HasTimestamp(race_.RaceNumber)) ++race_.RaceNumber;
}

void RaceBook::KeepPlace() {
  const Project::Group group(project_);
  Keep("Race", std::to_string(race_.RaceNumber));
  Keep("Heat", std::to_string(race_.Heat()));
  Keep("Round", std::to_string(race_.Round()));
}

// One more than the file counts. A file that counts wrong must not cost a refly that is recorded already.
std::int16_t RaceBook::NextRefly() {
  const std::int16_t counted = Number("NumberReflys", 0);
  std::int16_t number = counted == INT16_MAX ? std::int16_t{1} : ToInteger(counted + 1);
  while (Timestamp(ReflySection(number)) != 0.0) number = ToInteger(number + 1);
  return number;
}

std::string RaceBook::TakeFreeNumber() {
  const int wanted = race_.RaceNumber;
  const std::string taken = "Race " + std::to_string(wanted) + " is in the project already: saved as ";
  for (int step = 0; step < kLastRace; ++step) {
    const std::int16_t race = ToInteger((wanted - 1 + step) % kLastRace + 1);
    if (HasTimestamp(race)) continue;
    if (race == wanted) return "";
    race_.RaceNumber = race_.LastRaceRun = race;
    return taken + std::to_string(race);
  }
  race_.ReflyMode = true;
  return taken + "its refly, because no other number is free";
}

std::string RaceBook::Write(const std::string& mode, const std::string& comments, const LocalDateTime& now) {
  const std::string race = std::to_string(race_.RaceNumber);
  std::string section = RaceSection(race_.RaceNumber);
  if (race_.ReflyMode) {
    race_.NumberReflys = NextRefly();
    const std::string number = std::to_string(race_.NumberReflys);
    Keep("NumberReflys", number);
    project_.SetProjectValue(section, "ReflyID", number + " (index to refly entry for this race");
    section = ReflySection(race_.NumberReflys);
  }
  const std::string place = " (h=" + std::to_string(race_.Heat()) + ", r=" + std::to_string(race_.Round());
  project_.SetProjectValue(section, "Timestamp", TimestampText(now));
  project_.SetProjectValue(section, "CurrentRace", race + place + ")");
  project_.SetProjectValue(section, "RaceMode", std::to_string(race_.RaceMode) + ", " + mode);
  project_.SetProjectValue(section, "Comments", comments);
  return section;
}

}  // namespace quorvane
