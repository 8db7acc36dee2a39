#include "console/amendment.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "results/race_records.h"

namespace quorvane {

void Amendment::Begin(const std::string& section) {
  section_ = section;
  version_ = Version(section);
  race_.Amending = true;
}

// The mode is not that of the console but the one in which the race was flown.
void Amendment::Resume(const KeptRace& kept) {
  const auto read = [&](const std::string& section, const std::string& key, const std::string& fallback) {
    return key == "RaceMode" ? project_.GetProjectValue(section_, key, fallback)
                             : kept.Reader()(section, key, fallback);
  };
  for (const auto& lane : lanes_) lane->LoadLane(kRunningSection, read);
}

std::string Amendment::Version(const std::string& section) {
  return project_.GetProjectValue(section, "Timestamp", "") + "; " +
         project_.GetProjectValue(section, "Amendments", "0");
}

void Amendment::Describe(RunningRace& race) const {
  if (!race_.Amending) return;
  race.amends = section_;
  race.version = version_;
}

// What was there before stays beside it, numbered by the amendment. Lanes not touched keep what the file
// says.
int Amendment::Save(const std::string& comments, const LocalDateTime& now) {
  const Project::Group group(project_);
  const double made = LeadingNumber(project_.GetProjectValue(section_, "Amendments", ""));
  const int number = 1 + static_cast<int>(std::clamp(made, 0.0, 9999.0));
  const auto keep = [&](const std::string& section, const std::string& key, const std::string& value) {
    constexpr const char* kNone = "\x01";
    const std::string before = project_.GetProjectValue(section, key, kNone);
    if (before == value) return;
    if (before != kNone) project_.SetProjectValue(section, fmt::format("Was{}_{}", number, key), before);
    project_.SetProjectValue(section, key, value);
  };
  const ReadValue there = OpenProject(project_, race_).read;
  for (const auto& lane : lanes_) {
    const auto corrections = [](const LaneLog& log) { return log.Corrections().size(); };
    const bool corrected = corrections(lane->Events()) != corrections(lane->LogIn(section_, there));
    const auto keepThose = [&](const auto& section, const auto& key, const auto& value) {
      if (corrected || key == "Placing" || key == "Position") keep(section, key, value);
    };
    lane->SaveLane(section_, keepThose, there);
  }
  keep(section_, "Comments", comments);
  project_.SetProjectValue(section_, "Amendments", std::to_string(number));
  project_.SetProjectValue(section_, fmt::format("Amended{}", number), TimestampText(now));
  return number;
}

}  // namespace quorvane
