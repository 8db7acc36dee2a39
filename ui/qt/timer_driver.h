#pragma once

#include <QTimer>
#include <functional>
#include <optional>

#include "forms/door.h"

namespace quorvane {

// Fires the program's timers when they are due by the console clock. Arm it after every event.
class TimerDriver {
 public:
  explicit TimerDriver(Door& door);
  void Arm();

  // This timer only shows what the stopwatch says: it alone may wait for the next multiple of so many ms of
  // the console clock. It fires earlier when another timer is due anyway.
  void Coarsen(const Control& display, std::function<int()> granularity);

 private:
  std::optional<std::int64_t> NextWake() const;

  Door& door_;
  const Control* display_ = nullptr;
  std::function<int()> granularity_;
  QTimer timer_;
};

}  // namespace quorvane
