#pragma once

#include <functional>
#include <memory>

namespace quorvane {

// A thread for what has to ask the disk, where the caller can wait a moment but not for a disk that takes
// seconds. It comes with the first job and does one at a time.
//
// From one thread only. A job that hangs at the end is left behind: what it uses has to belong to it, or to
// outlive the program.
class DiskThread {
 public:
  DiskThread();
  ~DiskThread();
  DiskThread(const DiskThread&) = delete;
  DiskThread& operator=(const DiskThread&) = delete;

  // False: the job before it, or this one, was not over after so many ms. This one then goes on, or was not
  // taken: `Busy` tells when the thread is free again.
  bool Do(std::function<void()> job, int longestMs);
  bool Busy() const { return !Wait(0); }
  bool Wait(int longestMs) const;  // true: free

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace quorvane
