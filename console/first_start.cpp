#include "console/first_start.h"

#include <algorithm>

#include "base/text.h"
#include "console/open_project.h"
#include "link/port_numbers.h"

namespace quorvane {
namespace {

constexpr const char* kPractice = "Practice";
constexpr const char* kAtStart = "AtStart";
constexpr std::string_view kOdd = "\\/:*?\"<>|";

// Without what some system does not have in a name.
std::string AsFileName(const std::string& text) {
  constexpr std::size_t kLongest = 80;  // characters
  std::string name;
  for (const char c : FirstCharacters(text, kLongest)) {
    const bool odd = static_cast<unsigned char>(c) < 0x20 || kOdd.find(c) != std::string_view::npos;
    name += odd ? '-' : c;
  }
  return std::string(Trimmed(name, ". "));
}

}  // namespace

bool NothingConfigured(const std::vector<std::string>& sections) {
  return std::ranges::all_of(sections, [](const std::string& name) { return name == kPortsSection; });
}

std::string FirstProject(const std::string& folder, const std::string& eventName, const LocalDateTime& now) {
  const std::string name = AsFileName(eventName);
  return folder + name + (name.empty() ? "" : " ") + ProjectDate(now) + ".ini";
}

FoundProject LookForProject(const std::string& file) {
  FoundProject found;
  if (file.empty() || FileNameOf(file).empty()) {
    found.trouble = "Name a file.";
    return found;
  }
  if (FolderExists(file)) {
    found.trouble = "This is a folder. Name a file in it.";
    return found;
  }
  ProjectStore store(file);
  if (!store.Unreadable().empty()) {
    found.trouble = store.Unreadable();
  } else if (store.Kind() == FileKind::Project) {
    found.exists = true;
    found.title = store.Read("Current", "Title", "");
    const double heats = LeadingNumber(store.Read("Current", "HeatsPerRound", "0"));
    if (heats >= kLeastHeats && heats <= INT16_MAX) found.heatsPerRound = static_cast<int>(heats);
  } else if (store.Kind() != FileKind::Empty) {
    found.trouble = "This file is no project. It stays as it is: choose another one.";
  }
  return found;
}

std::string PrepareFirstStart(const FirstAnswers& answers, SettingsStore& settings) {
  RaceState race;
  Project project(race);
  if (std::string trouble = OpenAsProject(project, answers.project); !trouble.empty()) return trouble;
  const FoundProject found = LookForProject(answers.project);
  {
    const Project::Group group(project);
    if (found.title.empty()) project.SetProjectValue("Current", "Title", answers.eventName);
    if (found.heatsPerRound == 0) {
      project.SetProjectValue("Current", "HeatsPerRound", std::to_string(answers.heatsPerRound));
    }
  }
  if (!project.Saved()) return project.Problem();
  settings.SaveSetting("DiskFile", "InitDir", ParentFolder(answers.project));
  settings.SaveSetting("DiskFile", "FileName", answers.project);
  SaveRadioPort(settings, answers.radio == FirstAnswers::Radio::kPort ? answers.port : kNoPort);
  if (answers.radio == FirstAnswers::Radio::kPractice) settings.SaveSetting(kPractice, kAtStart, "True");
  return "";
}

void DeclineFirstStart(SettingsStore& settings) {
  settings.SaveSetting("FirstStart", "Asked", "True");
}

bool TakePracticeAtStart(SettingsStore& settings) {
  if (settings.GetSetting(kPractice, kAtStart, "False") != "True") return false;
  settings.SaveSetting(kPractice, kAtStart, "False");
  return true;
}

}  // namespace quorvane
