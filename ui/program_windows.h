#pragma once

#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <limits>
#include <set>
#include <vector>

#include "console/program.h"
#include "ui/key_router.h"
#include "ui/qt/qt_platform.h"
#include "ui/windows.h"

namespace quorvane {

inline constexpr QSize kLeastConsole{940, 600};  // leaves room for a frame and a task bar on a small screen

// Fires the program's timers when they are due by the console clock. Arm it after every event. No timer of
// the toolkit: up to a millisecond late, it would fire the display of the race clock two or three times over.
class TimerDriver {
 public:
  // The display timer only shows what the stopwatch says: it alone may wait for the next multiple of so many
  // ms of the console clock. It fires earlier when another timer is due anyway.
  TimerDriver(Door& door, const QtPlatform& platform, const Control& display,
              std::function<int()> granularity);
  TimerDriver(const TimerDriver&) = delete;
  TimerDriver& operator=(const TimerDriver&) = delete;
  ~TimerDriver();
  void Arm();

 private:
  Door& door_;
  const QtPlatform& platform_;
  const Control& display_;
  const std::function<int()> granularity_;
  static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
  std::int64_t armed_ = kNever;  // when it fires next, by the console clock
  const int timer_;
  QSocketNotifier fired_;
};

// The windows of the program's forms: the console with its four lane panels, the station link and the small
// forms. Keeps them up to date and the program's timers going for as long as it lives.
class ProgramWindows {
 public:
  ProgramWindows(Program& program, QtPlatform& platform);
  ~ProgramWindows();

  FormWindow& Console() { return *console_; }
  void GiveMenuKeys(QWidget& window) const;
  QRect ClockOnScreen() const;
  FormWindow& Link() { return *link_; }
  Windows& All() { return windows_; }

  // Called after every event, when the windows have been told.
  void SetAfterEvent(std::function<void()> afterEvent) { afterEvent_ = std::move(afterEvent); }
  // Called after every event, before the windows are told. It must be quick, and live as long as this.
  void AddFollower(std::function<void()> follower) { followers_.push_back(std::move(follower)); }

 private:
  void AddSmallWindow(Form& form, FormDesign (*design)());
  void Follow();
  void PlaceWindows();
  void PlaceInCorner(const Form& form);

  Program& program_;
  QtPlatform& platform_;
  Windows windows_;
  FormWindow* console_ = nullptr;
  FormWindow* link_ = nullptr;
  bool detailShown_ = true;
  bool placed_ = false;
  std::set<const Form*> inCorner_;  // have been placed there
  KeyRouter keys_;
  TimerDriver timers_;
  std::vector<std::function<void()>> followers_;
  std::function<void()> afterEvent_;
};

}  // namespace quorvane
