#include "files/background_files.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::size_t kLargest = std::size_t{4} << 20;
constexpr int kEndMs = 1000;
constexpr std::chrono::milliseconds kLong{1000};
constexpr std::chrono::milliseconds kRetry{1000};
constexpr std::chrono::milliseconds kNextDisk{20};

std::error_code Replace(FileOps& files, const std::string& path, const std::string& bytes) {
  std::string target;
  FileStamp seen;
  std::error_code error = files.Resolve(path, target);
  if (!error) error = files.Look(target, seen);
  return error ? error : ReplaceFile(files, target, bytes, seen);
}

std::error_code TakeAway(FileOps& files, const std::string& path) {
  const std::error_code error = files.Remove(path);
  return error ? error : files.SyncFolder(path);
}

// Without bytes the file goes.
std::error_code Put(FileOps& files, const std::string& path, const std::optional<std::string>& bytes) {
  return bytes ? Replace(files, path, *bytes) : TakeAway(files, path);
}

}  // namespace

// Only the usual ending goes: "contest.txt" in the same folder is another contest.
std::string BesideProject(const std::string& project, const char* ending) {
  constexpr std::string_view kUsual = ".ini";
  const std::size_t base = project.size() - std::min(project.size(), kUsual.size());
  const bool usual = EqualsIgnoringCase(std::string_view(project).substr(base), kUsual);
  return project.substr(0, usual ? base : std::string::npos) + ending;
}

struct BackgroundFiles::Writer {
  struct Job {
    std::string path;
    std::optional<std::string> bytes;  // none: the file goes
    std::string replaced = {};         // goes after it
  };

  explicit Writer(FileOps& ops) : files(ops) {}

  void Work();

  FileOps& files;
  mutable std::mutex mutex;
  mutable std::condition_variable changed;
  std::deque<Job> jobs;  // the first one is in hand while `busy`
  std::string problem;
  std::chrono::steady_clock::time_point begun;  // the job in hand
  unsigned told = 0;                            // changes with every new job
  bool busy = false;
  bool started = false;
  bool ends = false;
  bool ended = false;
};

// A job that fails waits behind those of other disks, unless a newer content of its file has come meanwhile.
void BackgroundFiles::Writer::Work() {
  std::unique_lock lock(mutex);
  std::size_t failures = 0;  // in succession
  while (true) {
    changed.wait(lock, [&] { return ends || !jobs.empty(); });
    if (jobs.empty()) break;
    Job job = jobs.front();
    busy = true;
    begun = std::chrono::steady_clock::now();
    lock.unlock();
    const std::error_code error = Put(files, job.path, job.bytes);
    lock.lock();
    busy = false;
    const std::string replaced = std::move(jobs.front().replaced);  // what is still to go
    jobs.pop_front();
    const auto newer = std::ranges::find(jobs, job.path, &Job::path);
    if (!error && !replaced.empty()) jobs.push_front({replaced, std::nullopt});
    if (error && newer != jobs.end()) {
      if (newer->replaced.empty()) newer->replaced = replaced;
    } else if (error) {
      jobs.push_back({job.path, std::move(job.bytes), replaced});
    }
    failures = error ? failures + 1 : 0;
    if (error || jobs.empty()) problem = error ? error.message() : "";
    changed.notify_all();
    if (!error) continue;
    if (ends && failures >= jobs.size()) break;
    const auto pause = failures % jobs.size() == 0 ? kRetry : kNextDisk;
    // What has come meanwhile is not to wait for a disk that has failed before.
    if (changed.wait_for(lock, pause, [&, seen = told] { return ends || told != seen; })) failures = 0;
  }
  ended = true;
  changed.notify_all();
}

BackgroundFiles::BackgroundFiles(FileOps& files, Way way)
    : files_(files), way_(way), writer_(std::make_shared<Writer>(files)) {}

BackgroundFiles::~BackgroundFiles() {
  std::unique_lock lock(writer_->mutex);
  writer_->ends = true;
  writer_->changed.notify_all();
  if (!writer_->started) return;
  writer_->changed.wait_for(lock, std::chrono::milliseconds(kEndMs), [&] { return writer_->ended; });
}

void BackgroundFiles::Do(const std::string& path, std::optional<std::string> bytes,
                         const std::string& replaced) {
  if (way_ == Way::InMemory) {
    if (!bytes) return void(memory_.erase(path));
    memory_[path] = *std::move(bytes);
    memory_.erase(replaced);
    return;
  }
  const std::scoped_lock lock(writer_->mutex);
  if (way_ == Way::AtOnce) {
    std::error_code error = Put(files_, path, bytes);
    if (!error && !replaced.empty()) error = TakeAway(files_, replaced);
    writer_->problem = error ? error.message() : "";
    return;
  }
  ++writer_->told;
  auto& jobs = writer_->jobs;
  const bool lastWaits = jobs.size() > (writer_->busy ? 1 : 0);
  for (Writer::Job& job : jobs) {
    if (job.replaced == path) job.replaced.clear();
  }
  Writer::Job next{path, std::move(bytes), replaced};
  if (lastWaits && jobs.back().path == path) {
    if (next.replaced.empty()) next.replaced = std::move(jobs.back().replaced);
    jobs.pop_back();
  }
  jobs.push_back(std::move(next));
  writer_->changed.notify_all();
  if (std::exchange(writer_->started, true)) return;
  // Left to itself: nothing ends a thread that waits for a disk.
  std::thread([writer = writer_] { writer->Work(); }).detach();
}

void BackgroundFiles::Keep(const std::string& path, std::string bytes, const std::string& replaced) {
  Do(path, std::move(bytes), replaced);
}

void BackgroundFiles::Remove(const std::string& path) {
  Do(path, std::nullopt);
}

std::optional<std::string> BackgroundFiles::Read(const std::string& path) {
  if (way_ == Way::InMemory) {
    const auto found = memory_.find(path);
    return found == memory_.end() ? std::nullopt : std::optional(found->second);
  }
  Wait(kEndMs);
  std::string bytes;
  FileStamp stamp;
  if (files_.ReadFile(path, kLargest, bytes, stamp)) return std::nullopt;
  return bytes;
}

bool BackgroundFiles::Move(const std::string& path, const std::string& name) {
  if (way_ == Way::InMemory) {
    auto kept = memory_.extract(path);
    if (kept.empty()) return false;
    memory_[name] = std::move(kept.mapped());
    return true;
  }
  Wait(kEndMs);
  return !files_.Rename(path, name) && !files_.SyncFolder(name);
}

std::string BackgroundFiles::Problem() const {
  const std::scoped_lock lock(writer_->mutex);
  const bool takesLong = writer_->busy && std::chrono::steady_clock::now() - writer_->begun > kLong;
  if (!takesLong || !writer_->problem.empty()) return writer_->problem;
  return "Writing " + writer_->jobs.front().path + " takes long";
}

bool BackgroundFiles::Wait(int longestMs) const {
  std::unique_lock lock(writer_->mutex);
  return writer_->changed.wait_for(lock, std::chrono::milliseconds(longestMs),
                                   [&] { return writer_->jobs.empty(); });
}

}  // namespace quorvane
