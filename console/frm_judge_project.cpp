// The project: choosing it, saving a race into it, showing a race from it.

#include <algorithm>
#include <filesystem>

#include "base/text.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

constexpr const char* kEventFormat = "Lap, Station, EventType, Pylon, Time";

}  // namespace

std::string frmJudge::DefaultFolder() const {
#ifdef _WIN32
  return "c:\\Quorvane\\";
#else
  return door_.System().HomeFolder() + "Quorvane/";
#endif
}

std::string frmJudge::TodaysProjectName() const {
  return ProjectDate(door_.LocalNow()) + ".ini";
}

void frmJudge::mnuSelectFile_Click() {
  if (RaceBeingFlown()) return;
  // A finished race belongs to the project it was flown in.
  cmdSave_Click();
  ChooseProject(false);
}

// False: nothing was chosen; at start-up the program then ends.
bool frmJudge::ChooseProject(bool atStart) {
  std::error_code ignored;
  const std::filesystem::path folder = std::filesystem::current_path(ignored);
  if (!(atStart ? OpenAtStart() : AskProjectFile(false))) {
    if (atStart) door_.System().EndProgram();
    return false;
  }
  ShowOpenProject();
  std::filesystem::current_path(folder, ignored);
  return true;
}

std::string frmJudge::ProjectAtStart() const {
  if (!startupProject_.empty()) return startupProject_;
  return door_.System().Settings().GetSetting("DiskFile", "FileName", DefaultFolder() + TodaysProjectName());
}

bool frmJudge::OpenAtStart() {
  if (!startupProject_.empty()) {
    race_.ProjectFile = startupProject_;
    const std::string trouble = TroubleOpening(startupProject_);
    return trouble.empty() || AskAgain(trouble, true);
  }
  const std::string file = ProjectAtStart();
  race_.ProjectFile = file;
  if (FileExists(file)) {
    const std::string title = project_.ReadProfileString("Current", "Title", "", file);
    const DialogBox box{DialogKind::YesNoCancel, "Open Project",
                        "Open previous project? (" + title + ")\r\r" + file};
    const DialogAnswer::Word word = door_.Ask(box).word;
    if (word == DialogAnswer::Word::Cancel) return false;
    if (word == DialogAnswer::Word::No) return AskProjectFile(true);
  }
  const std::string trouble = TroubleOpening(file);
  return trouble.empty() || AskAgain(trouble, true);
}

std::string frmJudge::TroubleOpening(const std::string& file) {
  std::string trouble = WhyNotOpened(file);
  // Locks, rights and folders are nothing that a replay could find out.
  door_.NoteProject(file, trouble.empty());
  return trouble;
}

// Makes the file the project; or says why not, and what to do.
std::string frmJudge::WhyNotOpened(const std::string& file) {
  const std::string folder = ParentFolder(file);
  MakeFolderPath(folder);
  if (!folder.empty() && !FolderExists(folder)) {
    return "This folder is not there and cannot be made:\r\r" + folder + "\r\rChoose another place.";
  }
  switch (project_.Open(file)) {
    case Project::Opened::Yes:
      break;
    case Project::Opened::HeldElsewhere:
      // Two consoles on one file would take each other's races for their own.
      return "This project is open in another console:\r\r" + file +
             "\r\rChoose another file, or close that console.";
    case Project::Opened::NoProject:
      return "This file is no project:\r\r" + file + "\r\rIt stays as it is. Choose another file.";
    case Project::Opened::Unreadable:
      return project_.OpenProblem() + "\r\rChoose another file.";
  }
  return "";
}

bool frmJudge::AskAgain(const std::string& trouble, bool atStart) {
  door_.Ask({DialogKind::Ok, "Open Project", trouble, DialogIcon::Exclamation});
  return AskProjectFile(atStart);
}

bool frmJudge::AskProjectFile(bool atStart) {
  SettingsStore& settings = door_.System().Settings();
  DialogBox box;
  if (atStart) {
    box.kind = DialogKind::SaveFile;
    box.title = "Open New Quorvane Project";
    const std::string folder = ParentFolder(race_.ProjectFile);
    const bool there = folder.empty() || FolderExists(folder);
    box.preset = (there ? folder : door_.System().HomeFolder()) + TodaysProjectName();
    box.folder = settings.GetSetting("DiskFile", "InitDir", DefaultFolder());
  } else {
    const std::string last =
        settings.GetSetting("DiskFile", "FileName", DefaultFolder() + TodaysProjectName());
    box.kind = DialogKind::OpenFile;
    box.title = "Open Existing Quorvane Project";
    box.preset = last;
    box.folder = ParentFolder(last);
  }
  box.defaultExtension = ".ini";
  const DialogAnswer answer = door_.Ask(box);
  if (answer.word != DialogAnswer::Word::File || answer.text.empty()) return false;
  if (!atStart && RaceAtStake()) return false;
  const std::string file = answer.text;
  if (const std::string trouble = TroubleOpening(file); !trouble.empty()) return AskAgain(trouble, atStart);
  settings.SaveSetting("DiskFile", "InitDir", ParentFolder(file));
  settings.SaveSetting("DiskFile", "FileName", file);
  return true;
}

void frmJudge::ShowOpenProject() {
  projectOpen_ = true;
  race_.ProjectBaseName = WithoutExtension(race_.ProjectFile);
  race_.ResultsFile = race_.ProjectBaseName + ".csv";
  CreateResultsFile(race_.ResultsFile);
  eventName_ = GetProjectValue("Current", "Title", "");
  race_.RaceNumber = std::max<std::int16_t>(StoredInteger("Race", "1"), 1);
  race_.HeatsPerRound = StoredInteger("HeatsPerRound", "1");
  mnuAutoPrint.SetChecked(LeadingNumber(GetProjectValue("Current", "AutoPrint", "False")) != 0.0);
  SkipRacesRun();
  ShowCurrentRace();
  race_.NumberReflys = StoredInteger("NumberReflys", "0");
  {
    const Project::Group group(project_);
    SetProjectValue("Current", "NumberReflys", std::to_string(race_.NumberReflys));
    SetProjectValue("Current", "EventFormat", kEventFormat);
  }
  if (race_.HeatsPerRound < 2) mnuHeatsPerRound_Click();
  if (eventName_.empty()) {
    mnuSetEventName_Click();
  } else {
    SetCaption();
  }
  if (RaceAtStake()) return;
  cmdReset.SetEnabled(false);
  cmdSave.SetEnabled(false);
}

// A number of a hand-edited file that does not fit reads as the fallback, so that the rest of the project
// still opens.
std::int16_t frmJudge::StoredInteger(const std::string& key, const std::string& fallback) {
  try {
    return LeadingInteger(GetProjectValue("Current", key, fallback));
  } catch (const OverflowError&) {
    return LeadingInteger(fallback);
  }
}

void frmJudge::mnuAutoPrint_Click() {
  mnuAutoPrint.SetChecked(!mnuAutoPrint.Checked());
  SetProjectValue("Current", "AutoPrint", mnuAutoPrint.Checked() ? "True" : "False");
}

void frmJudge::mnuRecordSession_Click() {
  mnuRecordSession.SetChecked(!mnuRecordSession.Checked());
  door_.System().Settings().SaveSetting(Name(), "RecordSession",
                                        mnuRecordSession.Checked() ? "True" : "False");
}

// Saving concludes the race: the reset at the end would otherwise find it active and record it a second time.
// What it writes, and the move to the next race, are one replacement of the file.
void frmJudge::cmdSave_Click() {
  if (!cmdSave.Enabled()) return;
  const Project::Group group(project_);
  race_.RaceActive = false;
  race_.ManualStart = false;
  IssueRaceEvent(true);
  SettleResult();
  WriteRace();
  txtComments.SetText("No comments");
  race_.ReflyMode = false;
  cmdSave.SetEnabled(false);
  cmdReset_Click();
}

// One more than the file counts. A file that counts wrong must not cost a refly that is recorded already.
std::int16_t frmJudge::NextRefly() {
  const std::int16_t counted = StoredInteger("NumberReflys", "0");
  std::int16_t number = counted == INT16_MAX ? std::int16_t{1} : AddInteger(counted, 1);
  while (LeadingNumber(GetProjectValue("Refly" + std::to_string(number), "Timestamp", "0")) != 0.0) {
    number = AddInteger(number, 1);
  }
  return number;
}

// Another program may have put a race where this one was to go, or the whole project may have come only
// after the start. What was flown before stays; this race takes the next number that is free.
void frmJudge::TakeFreeNumber() {
  const int wanted = race_.RaceNumber;
  const std::string taken = "Race " + std::to_string(wanted) + " is in the project already: saved as ";
  for (int step = 0; step < kLastRace; ++step) {
    const std::int16_t race = ToInteger((wanted - 1 + step) % kLastRace + 1);
    if (HasTimestamp(race)) continue;
    if (race == wanted) return;
    race_.RaceNumber = race_.LastRaceRun = race;
    DeriveHeat();
    ShowNotice(taken + std::to_string(race));
    return;
  }
  race_.ReflyMode = true;
  ShowNotice(taken + "its refly, because no other number is free");
}

// The places and the number that the race is printed and saved with. The operator may have given only some of
// the places.
void frmJudge::SettleResult() {
  const Project::Group group(project_);
  RankLanes();
  if (!race_.ReflyMode) TakeFreeNumber();
}

void frmJudge::WriteRace() {
  const Project::Group group(project_);
  std::string section = RaceSection(race_.RaceNumber);
  if (race_.ReflyMode) {
    race_.NumberReflys = NextRefly();
    const std::string number = std::to_string(race_.NumberReflys);
    SetProjectValue("Current", "NumberReflys", number);
    SetProjectValue(section, "ReflyID", number + " (index to refly entry for this race");
    section = "Refly" + number;
  }
  SetProjectValue(section, "Timestamp", TimestampText(door_.LocalNow()));
  SetProjectValue(section, "CurrentRace",
                  std::to_string(race_.RaceNumber) + " (h=" + std::to_string(heat_) +
                      ", r=" + std::to_string(round_) + ")");
  SetProjectValue(section, "RaceMode", std::to_string(race_.RaceMode) + ", " + lblRaceMode.Caption());
  SetProjectValue(section, "Comments", txtComments.Text());
  for (int i = 0; i < 4; ++i) {
    Lane(i).SaveLane(section);
    Lane(i).chkNovice.SetValue(0);
  }
}

std::string frmJudge::ShownSection() {
  const double id = LeadingNumber(GetProjectValue(RaceSection(race_.RaceNumber), "ReflyID", "0"));
  if (id == 0.0) return RaceSection(race_.RaceNumber);
  return "Refly" + std::to_string(RoundTo<std::int32_t>(id));
}

void frmJudge::LoadRaceHeader() {
  std::string section = RaceSection(race_.RaceNumber);
  try {
    section = ShownSection();
  } catch (const OverflowError&) {
    // No refly has such a number: the race itself is shown.
  }
  shownSection_ = section;
  fraHeatControl.SetCaption("Race " + std::to_string(race_.RaceNumber) +
                            (section.starts_with("Refly") ? " REFLY" : ""));
  fraHeatControl.SetForeColor(kButtonText);
  txtComments.SetText(GetProjectValue(section, "Comments", "No comments"));
  race_.RaceLoaded = true;
}

void frmJudge::ShowRaceLanes() {
  if (HasRun(race_.RaceNumber)) {
    for (const auto& lane : lanes_) lane->LoadLane(shownSection_);
  } else {
    InitializeLanes(LaneStartOffset_);
  }
  Lane(3).SetVisible(Lane(3).Flies());
}

}  // namespace quorvane
