#pragma once

#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "forms/platform.h"
#include "ui/work_thread.h"

class QObject;
class QWidget;

namespace quorvane {

class Windows;

// A folder of what comes with the program. Built or installed, the programs lie in a
// folder "bin", and this one, such as "quorvane" or "doc/quorvane/manual", in "share" beside it.
QString SharedFolder(const QString& name);

// Shows the box over its parent (null: mid-screen) until it is answered; other events go on meanwhile.
DialogAnswer ShowQtDialog(const DialogBox& box, QWidget* parent);

// The platform with real windows, real time and real sound.
class QtPlatform : public Platform {
 public:
  explicit QtPlatform(SettingsStore& settings) : settings_(settings) { clock_.start(); }
  ~QtPlatform() override { StopWave(); }

  // Null before the windows exist and after they are gone.
  void SetWindows(Windows* windows) { windows_ = windows; }
  // Answers boxes in the operator's place; no box is shown where it gives an answer.
  using Answerer = std::function<std::optional<DialogAnswer>(const DialogBox&)>;
  void SetAnswerer(Answerer answerer) { answerer_ = std::move(answerer); }

  std::int64_t ClockMs() override { return clock_.elapsed(); }
  std::int64_t ClockNs() const { return clock_.nsecsElapsed(); }
  LocalDateTime LocalNow() override;
  ComputerTime Computer() override;
  StopwatchFigures MeasureStopwatch() override;
  DialogAnswer ShowDialog(const DialogBox& box) override;
  void RepaintWindows() override;
  void BringForward(Form& form) override;
  void PlayWave(const std::string& path) override;
  void StopWave() override;
  void CopyText(const std::string& text) override;
  SettingsStore& Settings() override { return settings_; }
  std::string ProgramFolder() override;
  std::string HomeFolder() override;
  void EndProgram() override;

 private:
  SettingsStore& settings_;
  Windows* windows_ = nullptr;
  Answerer answerer_;
  // A sound device takes a while to find and a server may hang: sounds have a thread of their own.
  std::shared_ptr<std::unique_ptr<QObject>> sound_;
  WorkThread sounds_;
  QElapsedTimer clock_;
};

}  // namespace quorvane
