#include "ui/qt/qt_platform.h"

#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QGuiApplication>
#include <QLibrary>
#include <QSysInfo>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>

#include "ui/windows.h"

namespace quorvane {

namespace {

// See ui/sound/. Null, and says why, where it is not there.
std::unique_ptr<QObject> NewSound(const QString& file) {
  QLibrary library(SharedFolder(QStringLiteral("../lib/quorvane/sound/libquorvane-sound")));
  const auto play = reinterpret_cast<QObject* (*)(const QString&)>(library.resolve("QuorvanePlayWave"));
  if (play != nullptr) return std::unique_ptr<QObject>(play(file));
  std::fprintf(stderr, "%s: %s\n", "quorvane: no sound", library.errorString().toLocal8Bit().constData());
  return nullptr;
}

}  // namespace

QString SharedFolder(const QString& name) {
  return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/") + name);
}

LocalDateTime QtPlatform::LocalNow() {
  const QDateTime now = QDateTime::currentDateTime();
  return LocalDateTime(std::chrono::seconds(now.toSecsSinceEpoch() + now.offsetFromUtc()));
}

ComputerTime QtPlatform::Computer() {
  ComputerTime time;
  time.utcMs = QDateTime::currentMSecsSinceEpoch();
  timespec now{};
  if (clock_gettime(CLOCK_BOOTTIME, &now) == 0) {
    time.boot = QSysInfo::bootUniqueId().toStdString();
    time.sinceBootMs = std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
  }
  return time;
}

// The smallest step seen between two looks at the clock.
StopwatchFigures QtPlatform::MeasureStopwatch() {
  using Clock = std::chrono::steady_clock;
  constexpr int kLooks = 2000;
  Clock::duration least = Clock::duration::max();
  Clock::time_point last = Clock::now();
  const Clock::time_point end = last + std::chrono::milliseconds(5);
  for (int i = 0; i < kLooks && last < end; ++i) {
    const Clock::time_point now = Clock::now();
    if (now > last) least = std::min(least, now - last);
    last = now;
  }
  StopwatchFigures figures{.frequencyHz = Clock::period::den / Clock::period::num};
  if (least != Clock::duration::max()) figures.resolutionNs = std::chrono::nanoseconds(least).count();
  return figures;
}

DialogAnswer QtPlatform::ShowDialog(const DialogBox& box) {
  if (box.chosen) return {DialogAnswer::Word::File, box.preset};
  if (answerer_) {
    if (const auto answer = answerer_(box)) return *answer;
  }
  return ShowQtDialog(box, windows_ == nullptr ? nullptr : windows_->DialogParent());
}

void QtPlatform::RepaintWindows() {
  if (windows_ != nullptr) windows_->Paint();
}

void QtPlatform::BringForward(Form& form) {
  if (windows_ != nullptr) windows_->BringForward(form);
}

void QtPlatform::PlayWave(const std::string& path) {
  if (!sound_) sound_ = std::make_shared<std::unique_ptr<QObject>>();
  sounds_.Do([sound = sound_, file = QString::fromStdString(path)] { *sound = NewSound(file); });
}

void QtPlatform::StopWave() {
  if (sound_) sounds_.Do([sound = sound_] { sound->reset(); });
}

void QtPlatform::CopyText(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

std::string QtPlatform::ProgramFolder() {
  return SharedFolder(QStringLiteral("quorvane")).toStdString() + '/';
}

std::string QtPlatform::HomeFolder() {
  return QDir::homePath().toStdString() + '/';
}

// Not quit(), which asks every window to close first, and they leave that to the race logic.
void QtPlatform::EndProgram() {
  QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
}

}  // namespace quorvane
