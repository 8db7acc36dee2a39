#include "files/disk_thread.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace quorvane {

struct DiskThread::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  std::function<void()> job;  // empty: free
  bool started = false;
  bool ends = false;

  void Work();
};

void DiskThread::Shared::Work() {
  std::unique_lock lock(mutex);
  while (true) {
    changed.wait(lock, [this] { return ends || job; });
    if (!job) return;
    lock.unlock();
    job();
    lock.lock();
    job = nullptr;
    changed.notify_all();
  }
}

DiskThread::DiskThread() : shared_(std::make_shared<Shared>()) {}

DiskThread::~DiskThread() {
  const std::scoped_lock lock(shared_->mutex);
  shared_->ends = true;
  shared_->changed.notify_all();
}

bool DiskThread::Do(std::function<void()> job, int longestMs) {
  if (!Wait(longestMs)) return false;
  {
    const std::scoped_lock lock(shared_->mutex);
    shared_->job = std::move(job);
    shared_->changed.notify_all();
  }
  if (!std::exchange(shared_->started, true)) {
    std::thread([shared = shared_] { shared->Work(); }).detach();
  }
  return Wait(longestMs);
}

bool DiskThread::Wait(int longestMs) const {
  std::unique_lock lock(shared_->mutex);
  return shared_->changed.wait_for(lock, std::chrono::milliseconds(longestMs),
                                   [this] { return !shared_->job; });
}

}  // namespace quorvane
