#pragma once

#include <QMap>
#include <QSettings>
#include <vector>

#include "forms/platform.h"
#include "journal/journal_recorder.h"
#include "ui/work_thread.h"

namespace quorvane {

// The settings of the application "Quorvane" for the user, or an INI file. Read once; changes go to the disk
// at once, by a thread for which no window waits, and the destructor a second.
class QtSettings : public SettingsStore {
 public:
  explicit QtSettings(const std::string& file = {});

  std::string GetSetting(const std::string& section, const std::string& key,
                         const std::string& fallback) const override;
  void SaveSetting(const std::string& section, const std::string& key, const std::string& value) override;

  std::vector<JournalSetting> All() const;

 private:
  const QString file_;
  QMap<QString, QString> values_;
  WorkThread writing_;
};

}  // namespace quorvane
