#include "ui/qt/qt_settings.h"

#include <QString>

namespace quorvane {
namespace {

QString Name(const std::string& section, const std::string& key) {
  return QString::fromStdString(section + "/" + key);
}

}  // namespace

QtSettings::QtSettings(const std::string& file)
    : settings_(file.empty() ? QSettings(QStringLiteral("Quorvane"), QStringLiteral("Quorvane"))
                             : QSettings(QString::fromStdString(file), QSettings::IniFormat)) {
  settings_.setFallbacksEnabled(false);
}

std::string QtSettings::GetSetting(const std::string& section, const std::string& key,
                                   const std::string& fallback) const {
  const QString name = Name(section, key);
  if (!settings_.contains(name)) return fallback;
  // A comma in a value written by hand reads as a list.
  return settings_.value(name).toStringList().join(QLatin1Char(',')).toStdString();
}

std::vector<JournalSetting> QtSettings::All() const {
  std::vector<JournalSetting> all;
  for (const QString& name : settings_.allKeys()) {
    const qsizetype slash = name.indexOf(QLatin1Char('/'));
    if (slash < 1) continue;  // without a section: none of ours
    all.push_back({name.left(slash).toStdString(), name.mid(slash + 1).toStdString(), {}});
    all.back().value = GetSetting(all.back().section, all.back().key, "");
  }
  return all;
}

// On the disk at once: the console may be switched off at any moment.
void QtSettings::SaveSetting(const std::string& section, const std::string& key, const std::string& value) {
  const QString name = Name(section, key);
  const QString text = QString::fromStdString(value);
  if (settings_.contains(name) && settings_.value(name).toString() == text) return;
  settings_.setValue(name, text);
  settings_.sync();
}

}  // namespace quorvane
