#pragma once

#include <QTimer>

#include "common/door.h"

namespace quorvane {

// Fires the program's timers when they are due by the console clock. Arm it after every event.
class TimerDriver {
 public:
  explicit TimerDriver(Door& door);
  void Arm();

 private:
  Door& door_;
  QTimer timer_;
};

}  // namespace quorvane
