#include "ui/work_thread.h"

#include <utility>

namespace quorvane {
void WorkThread::Do(std::function<void()> job) {
  if (thread_ == nullptr) {
    thread_ = new QThread;
    worker_ = new QObject;
    worker_->moveToThread(thread_);
    thread_->start();
  }
  QMetaObject::invokeMethod(worker_, std::move(job), Qt::QueuedConnection);
}

// The thread is ended by a last job: quit() from here would pass the jobs that still wait.
void WorkThread::End(int longestMs) {
  QThread* thread = std::exchange(thread_, nullptr);
  if (thread == nullptr) return;
  QObject* worker = std::exchange(worker_, nullptr);
  const auto last = [thread, worker] {
    worker->deleteLater();
    thread->quit();
  };
  QMetaObject::invokeMethod(worker, last, Qt::QueuedConnection);
  if (!thread->wait(longestMs)) {
    anyLeftBehind_ = true;
    return;
  }
  delete thread;
}

}  // namespace quorvane
