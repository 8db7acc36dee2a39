#pragma once

#include <QMap>
#include <QSettings>
#include <vector>

#include "forms/platform.h"
#include "journal/journal_recorder.h"
#include "ui/work_thread.h"

namespace quorvane {

// The settings store as the user's settings of the application "Quorvane", or as an INI file of its own. It
// is read once; what changes goes to the disk at once, by a thread of its own: no window waits for that, and
// the destructor does for a second.
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
