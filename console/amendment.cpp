#include "console/amendment.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace quorvane {

void Amendment::Begin(const std::string& section) {
  section_ = section;
  timestamp_ = project_.GetProjectValue(section, "Timestamp", "");
  for (std::size_t i = 0; i < lanes_.size(); ++i) logs_[i] = lanes_[i]->Events().Revision();
  race_.Amending = true;
}

// What was there before stays beside it, under a number for each amendment. Lanes that were not touched keep
// what the file says of them.
int Amendment::Save(const std::string& comments, const LocalDateTime& now) {
  const Project::Group group(project_);
  const double before = LeadingNumber(project_.GetProjectValue(section_, "Amendments", ""));
  const int number = 1 + static_cast<int>(std::clamp(before, 0.0, 9999.0));
  const auto keep = [&](const std::string& section, const std::string& key, const std::string& value) {
    constexpr const char* kNone = "\x01";
    const std::string before = project_.GetProjectValue(section, key, kNone);
    if (before == value) return;
    if (before != kNone) project_.SetProjectValue(section, fmt::format("Was{}_{}", number, key), before);
    project_.SetProjectValue(section, key, value);
  };
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    const bool corrected = lanes_[i]->Events().Revision() != logs_[i];
    lanes_[i]->SaveLane(section_, [&](const auto& section, const auto& key, const auto& value) {
      if (corrected || key == "Placing" || key == "Position") keep(section, key, value);
    });
  }
  keep(section_, "Comments", comments);
  project_.SetProjectValue(section_, "Amendments", std::to_string(number));
  project_.SetProjectValue(section_, fmt::format("Amended{}", number), TimestampText(now));
  return number;
}

}  // namespace quorvane
