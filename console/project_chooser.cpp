#include "console/project_chooser.h"

namespace quorvane {

std::string ProjectChooser::DefaultFolder() const {
#ifdef _WIN32
  return "c:\\Quorvane\\";
#else
  return door_.System().HomeFolder() + "Quorvane/";
#endif
}

std::string ProjectChooser::LastFile() const {
  return door_.System().Settings().GetSetting("DiskFile", "FileName", DefaultFolder() + TodaysName());
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
  return Open(file) || Ask(true);
}

DialogBox ProjectChooser::FileBox(bool atStart) const {
  const std::string last = LastFile();
  if (!atStart) {
    return {.kind = DialogKind::OpenFile,
            .title = "Open Existing Quorvane Project",
            .text = "",
            .preset = last,
            .folder = ParentFolder(last),
            .defaultExtension = ".ini"};
  }
  const std::string folder = ParentFolder(race_.ProjectFile);
  const bool there = folder.empty() || FolderExists(folder);
  return {.kind = DialogKind::SaveFile,
          .title = "Open New Quorvane Project",
          .text = "",
          .preset = (there ? folder : door_.System().HomeFolder()) + TodaysName(),
          .folder = door_.System().Settings().GetSetting("DiskFile", "InitDir", DefaultFolder()),
          .defaultExtension = ".ini"};
}

bool ProjectChooser::Ask(bool atStart) {
  std::string file;
  do {
    const DialogAnswer answer = door_.Ask(FileBox(atStart));
    if (answer.word != DialogAnswer::Word::File || answer.text.empty()) return false;
    // A race that began behind the box belongs to the project that is open.
    if (!atStart && race_.AtStake()) return false;
    file = answer.text;
  } while (!Open(file));
  SettingsStore& settings = door_.System().Settings();
  settings.SaveSetting("DiskFile", "InitDir", ParentFolder(file));
  settings.SaveSetting("DiskFile", "FileName", file);
  return true;
}

// Tells why, where the file does not become the project.
bool ProjectChooser::Open(const std::string& file) {
  const std::string trouble = WhyNotOpened(file);
  // Locks, rights and folders are nothing that a replay could find out.
  door_.NoteProject(file, trouble.empty());
  if (trouble.empty()) return true;
  door_.Ask({DialogKind::Ok, "Open Project", trouble, DialogIcon::Exclamation});
  return false;
}

std::string ProjectChooser::WhyNotOpened(const std::string& file) {
  const std::string folder = ParentFolder(file);
  MakeFolderPath(folder);
  if (!folder.empty() && !FolderExists(folder)) {
    return "This folder is not there and cannot be made:\r\r" + folder + "\r\rChoose another place.";
  }
  switch (project_.Open(file)) {
    case Project::Opened::HeldElsewhere:
      // Two consoles on one file would take each other's races for their own.
      return "This project is open in another console:\r\r" + file +
             "\r\rChoose another file, or close that console.";
    case Project::Opened::NoProject:
      return "This file is no project:\r\r" + file + "\r\rIt stays as it is. Choose another file.";
    case Project::Opened::Unreadable:
      return project_.OpenProblem() + "\r\rChoose another file.";
    default:
      return "";
  }
}

}  // namespace quorvane
