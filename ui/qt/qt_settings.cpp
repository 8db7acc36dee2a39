#include "ui/qt/qt_settings.h"

#include <QString>

namespace quorvane {
namespace {

QString Name(const std::string& section, const std::string& key) {
  return QString::fromStdString(section + "/" + key);
}

QSettings Kept(const QString& file) {
  return file.isEmpty() ? QSettings(QStringLiteral("Quorvane"), QStringLiteral("Quorvane"))
                        : QSettings(file, QSettings::IniFormat);
}

}  // namespace

QtSettings::QtSettings(const std::string& file) : file_(QString::fromStdString(file)) {
  QSettings kept = Kept(file_);
  kept.setFallbacksEnabled(false);
  // A comma in a value written by hand reads as a list.
  for (const QString& name : kept.allKeys()) {
    values_[name] = kept.value(name).toStringList().join(QLatin1Char(','));
  }
}

std::string QtSettings::GetSetting(const std::string& section, const std::string& key,
                                   const std::string& fallback) const {
  const auto found = values_.constFind(Name(section, key));
  return found == values_.constEnd() ? fallback : found->toStdString();
}

std::vector<JournalSetting> QtSettings::All() const {
  std::vector<JournalSetting> all;
  for (const auto [name, value] : values_.asKeyValueRange()) {
    const qsizetype slash = name.indexOf(QLatin1Char('/'));
    if (slash < 1) continue;  // without a section: none of ours
    all.push_back({name.left(slash).toStdString(), name.mid(slash + 1).toStdString(), value.toStdString()});
  }
  return all;
}

// The console may be switched off at any moment.
void QtSettings::SaveSetting(const std::string& section, const std::string& key, const std::string& value) {
  const QString name = Name(section, key);
  const QString text = QString::fromStdString(value);
  if (const auto found = values_.constFind(name); found != values_.constEnd() && *found == text) return;
  values_[name] = text;
  writing_.Do([file = file_, name, text] {
    QSettings kept = Kept(file);
    kept.setValue(name, text);
    kept.sync();
  });
}

}  // namespace quorvane
