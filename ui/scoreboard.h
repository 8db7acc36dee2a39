#pragma once

#include <QTimer>
#include <QWidget>

#include "console/score.h"
#include "ui/program_windows.h"
#include "ui/window_place.h"

class QComboBox;
class QScreen;

namespace quorvane {

class ScoreView;

// A window for a screen that is turned to the public, opened by "Scoreboard" in the console's menu. It
// follows the race at most 25 times a second, after the console's own windows have been shown, and takes no
// part in it: no key, no event. Between two races it shows the result of the last.
class Scoreboard : public QWidget {
 public:
  Scoreboard(Program& program, ProgramWindows& windows);
  ~Scoreboard() override { program_.judge().mnuScoreboard.onClick = {}; }

  // On the screen chosen last, else on one without the console; full screen where that is another one.
  void Open();
  void SetFullScreen(bool full);
  void MoveToScreen(int index);
  const Score& Shown() const { return shown_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent*) override { SetFullScreen(!isFullScreen()); }

 private:
  void Fill();
  QWidget* NewBar();
  void ListScreens();
  QScreen* ScreenToOpenOn() const;
  void Follow();

  Program& program_;
  ScoreKeeper keeper_;
  ProgramWindows& windows_;
  SettingsStore& settings_;
  WindowPlace* place_;
  // Null until it is first opened.
  ScoreView* view_ = nullptr;
  QComboBox* screens_ = nullptr;
  QWidget* bar_ = nullptr;
  QTimer soon_;
  Score shown_;
};

}  // namespace quorvane
