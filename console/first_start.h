#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/platform.h"
#include "records/project.h"

namespace quorvane {

// A project that says less has not been told yet, and is asked again at every start.
inline constexpr int kLeastHeats = 2;

// What is asked in one form where nothing is configured yet.
struct FirstAnswers {
  enum class Radio : std::uint8_t { kNone, kPort, kPractice };
  std::string eventName;
  int heatsPerRound = 4;
  std::string project;
  Radio radio = Radio::kNone;
  int port = 0;  // kPort: its number
};

// `sections` of the settings store: true while the program has numbered the serial ports there at the most.
bool NothingConfigured(const std::vector<std::string>& sections);

// A name for the project of that event, in the folder (with its last separator).
std::string FirstProject(const std::string& folder, const std::string& eventName, const LocalDateTime& now);

// What stands where the project is to be.
struct FoundProject {
  bool exists = false;    // as a project, which is opened as it is
  std::string title;      // as far as it has them
  int heatsPerRound = 0;  // 0: it does not say
  std::string trouble;    // why it can be no project, in words for the operator
};
FoundProject LookForProject(const std::string& file);

// Makes the project, or completes the one that stands there, and settings with which the console has nothing
// left to ask. Returns why it could not; then no setting has changed.
std::string PrepareFirstStart(const FirstAnswers& answers, SettingsStore& settings);
// The form was left without an answer: it does not come again.
void DeclineFirstStart(SettingsStore& settings);

// Whether the first start asked for practice, once.
bool TakePracticeAtStart(SettingsStore& settings);

}  // namespace quorvane
