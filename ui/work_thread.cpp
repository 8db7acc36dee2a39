#include "ui/work_thread.h"

#include <QCoreApplication>
#include <QEvent>
#include <deque>
#include <mutex>
#include <utility>

namespace quorvane {

// Lives on the thread. The jobs wait under a lock of our own: the thread sanitizer cannot see into Qt's.
class WorkThread::Worker : public QObject {
 public:
  void Add(std::function<void()> job) {
    {
      const std::lock_guard guard(lock_);
      jobs_.push_back(std::move(job));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::User) return QObject::event(event);
    std::function<void()> job;
    {
      const std::lock_guard guard(lock_);
      job = std::move(jobs_.front());
      jobs_.pop_front();
    }
    job();
    return true;
  }

 private:
  std::mutex lock_;
  std::deque<std::function<void()>> jobs_;
};

void WorkThread::Do(std::function<void()> job) {
  if (thread_ == nullptr) {
    thread_ = new QThread;
    worker_ = new Worker;
    worker_->moveToThread(thread_);
    thread_->start();
  }
  worker_->Add(std::move(job));
}

// The thread is ended by a last job: quit() from here would pass the jobs that still wait.
void WorkThread::End(int longestMs) {
  QThread* thread = std::exchange(thread_, nullptr);
  if (thread == nullptr) return;
  Worker* worker = std::exchange(worker_, nullptr);
  worker->Add([thread, worker] {
    worker->deleteLater();
    thread->quit();
  });
  if (!thread->wait(longestMs)) {
    anyLeftBehind_ = true;
    return;
  }
  delete thread;
}

}  // namespace quorvane
