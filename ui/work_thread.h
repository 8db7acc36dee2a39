#pragma once

#include <QThread>
#include <functional>

namespace quorvane {

// A thread that does one job after the other, for what may take long or hang: printers, sound, files on a
// distant disk. It comes with its first job and has an event loop. To be used from the window's thread only.
class WorkThread {
 public:
  WorkThread() = default;
  WorkThread(const WorkThread&) = delete;
  WorkThread& operator=(const WorkThread&) = delete;
  ~WorkThread() { End(1000); }

  // The job may outlive everything but the application object: what it uses must belong to it.
  void Do(std::function<void()> job);
  // Waits that long for the jobs given. Whatever hangs is left: no thread is ended from outside without harm.
  void End(int longestMs);

  // Whether a thread was left behind. The program then ends by std::_Exit: else it takes what that stands on.
  static bool AnyLeftBehind() { return anyLeftBehind_; }

 private:
  class Worker;

  inline static bool anyLeftBehind_ = false;
  QThread* thread_ = nullptr;
  Worker* worker_ = nullptr;
};

}  // namespace quorvane
