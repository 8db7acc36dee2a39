#pragma once

#include <QSettings>
#include <vector>

#include "forms/platform.h"
#include "journal/journal_recorder.h"

namespace quorvane {

// The settings store as the user's settings of the application "Quorvane", or as an INI file of its own.
class QtSettings : public SettingsStore {
 public:
  explicit QtSettings(const std::string& file = {});

  std::string GetSetting(const std::string& section, const std::string& key,
                         const std::string& fallback) const override;
  void SaveSetting(const std::string& section, const std::string& key, const std::string& value) override;

  std::vector<JournalSetting> All() const;

 private:
  QSettings settings_;
};

}  // namespace quorvane
