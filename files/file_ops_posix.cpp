#ifndef _WIN32

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

#include "files/file_ops.h"

namespace quorvane {

namespace {

std::error_code LastError() {
  return {errno, std::generic_category()};
}

std::error_code ErrorIf(bool failed) {
  return failed ? LastError() : std::error_code();
}

int Descriptor(std::intptr_t handle) {
  return static_cast<int>(handle);
}

FileStamp StampFrom(const struct stat& found) {
  FileStamp stamp;
  stamp.kind = S_ISREG(found.st_mode)   ? FileStamp::Kind::File
               : S_ISDIR(found.st_mode) ? FileStamp::Kind::Folder
                                        : FileStamp::Kind::Other;
  stamp.device = static_cast<uint64_t>(found.st_dev);
  stamp.number = static_cast<uint64_t>(found.st_ino);
  stamp.modified_ns = int64_t{found.st_mtim.tv_sec} * 1'000'000'000 + found.st_mtim.tv_nsec;
  stamp.size = static_cast<uint64_t>(found.st_size);
  return stamp;
}

std::error_code WhyNotRead(FileStamp::Kind kind) {
  using Kind = FileStamp::Kind;
  if (kind == Kind::File) return {};
  return std::make_error_code(kind == Kind::Missing  ? std::errc::no_such_file_or_directory
                              : kind == Kind::Folder ? std::errc::is_a_directory
                                                     : std::errc::operation_not_supported);
}

std::error_code ReadAll(int descriptor, size_t limit, size_t expected, std::string& bytes) {
  bytes.resize(expected + 1);  // one more, so that the end of the file is seen without growing
  size_t length = 0;
  for (;;) {
    if (length == bytes.size()) bytes.resize(length * 2);
    const ssize_t got = read(descriptor, bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return LastError();
    if (got == 0) break;
    length += static_cast<size_t>(got);
    if (length > limit) return std::make_error_code(std::errc::file_too_large);
  }
  bytes.resize(length);
  return {};
}

// Takes the lock and keeps the descriptor, or closes it.
LockResult LockDescriptor(int descriptor, std::intptr_t& handle) {
  if (descriptor < 0) return LockResult::Unavailable;
  if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    handle = descriptor;
    return LockResult::Locked;
  }
  const bool held = errno == EWOULDBLOCK;
  close(descriptor);
  return held ? LockResult::HeldElsewhere : LockResult::Unavailable;
}

// A lock on the file that stands at `path`. Nothing where there is no file yet, or no such locks.
LockResult LockContent(const std::string& path, std::intptr_t& handle) {
  struct stat found = {};
  if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return LockResult::Unavailable;
  return LockDescriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC), handle);
}

}  // namespace

std::error_code FileOps::Look(const std::string& path, FileStamp& stamp) {
  struct stat found = {};
  stamp = {};
  if (stat(path.c_str(), &found) != 0) {
    return ErrorIf(errno != ENOENT && errno != ENOTDIR);
  }
  stamp = StampFrom(found);
  return {};
}

std::error_code FileOps::ReadFile(const std::string& path, size_t limit, std::string& bytes,
                                  FileStamp& stamp) {
  bytes.clear();
  // Asked before opening, because opening alone can set a device going; and once more afterwards, because
  // another file may have taken the place.
  std::error_code error = Look(path, stamp);
  if (!error) error = WhyNotRead(stamp.kind);
  if (error) return error;
  const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return LastError();
  struct stat found = {};
  error = ErrorIf(fstat(descriptor, &found) != 0);
  stamp = StampFrom(found);
  if (!error) error = WhyNotRead(stamp.kind);
  if (!error && stamp.size > limit) error = std::make_error_code(std::errc::file_too_large);
  if (!error) error = ReadAll(descriptor, limit, static_cast<size_t>(stamp.size), bytes);
  close(descriptor);
  if (error) bytes.clear();
  return error;
}

std::error_code FileOps::MayWrite(const std::string& target) {
  if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0) return {};
  return ErrorIf(errno != ENOENT);
}

std::error_code FileOps::CreateNew(const std::string& path, std::intptr_t& handle) {
  handle = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
  return ErrorIf(handle < 0);
}

std::error_code FileOps::KeepMode(const TempFile& temp, const std::string& target) {
  struct stat old = {};
  struct stat made = {};
  if (stat(target.c_str(), &old) != 0) return ErrorIf(errno != ENOENT);
  if (fstat(Descriptor(temp.handle), &made) != 0) return LastError();
  if (old.st_uid != made.st_uid || old.st_gid != made.st_gid) {
    // Only a few users may give files away; for the others the file simply becomes their own.
    if (fchown(Descriptor(temp.handle), old.st_uid, old.st_gid) != 0) errno = 0;
  }
  constexpr mode_t kRights = 0777;
  if ((old.st_mode & kRights) == (made.st_mode & kRights)) return {};
  return ErrorIf(fchmod(Descriptor(temp.handle), old.st_mode & kRights) != 0);
}

std::error_code FileOps::Write(const TempFile& temp, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(Descriptor(temp.handle), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return LastError();
    if (written == 0) return std::make_error_code(std::errc::io_error);
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return {};
}

std::error_code FileOps::Sync(const TempFile& temp) {
  return ErrorIf(fsync(Descriptor(temp.handle)) != 0);
}

std::error_code FileOps::Close(TempFile& temp, FileStamp& stamp) {
  const int descriptor = Descriptor(std::exchange(temp.handle, -1));
  struct stat found = {};
  const std::error_code error = ErrorIf(fstat(descriptor, &found) != 0);
  stamp = StampFrom(found);
  const std::error_code closed = ErrorIf(close(descriptor) != 0 && errno != EINTR);
  return error ? error : closed;
}

std::error_code FileOps::Rename(const std::string& from, const std::string& to) {
  return ErrorIf(rename(from.c_str(), to.c_str()) != 0);
}

std::error_code FileOps::SyncFolder(const std::string& target) {
  const std::string folder = target.substr(0, target.rfind('/') + 1) + ".";
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // A folder that may be written but not listed cannot be synced by anyone, nor can one on some network and
  // memory card file systems. That is no reason to call the file unsaved for ever.
  if (descriptor < 0) return ErrorIf(errno != EACCES && errno != EPERM);
  std::error_code error;
  if (fsync(descriptor) != 0) error = ErrorIf(errno != EINVAL && errno != ENOTSUP && errno != EBADF);
  close(descriptor);
  return error;
}

LockResult FileOps::Lock(const std::string& target, FileLock& lock) {
  constexpr int kHow = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
  lock.path = HiddenBeside(target) + ".lock";
  for (;;) {
    int descriptor = open(lock.path.c_str(), O_RDWR | O_CREAT | kHow, 0666);
    if (descriptor < 0) descriptor = open(lock.path.c_str(), O_RDONLY | kHow);
    const LockResult result = LockDescriptor(descriptor, lock.handle);
    if (result != LockResult::Locked) return result;
    // Whoever held it before may have removed the file in between: then this lock is on a file that nobody
    // else sees.
    struct stat ours = {};
    struct stat there = {};
    if (fstat(descriptor, &ours) == 0 && stat(lock.path.c_str(), &there) == 0 &&
        ours.st_ino == there.st_ino && ours.st_dev == there.st_dev) {
      break;
    }
    close(descriptor);
    lock.handle = -1;
  }
  if (LockContent(target, lock.content) != LockResult::HeldElsewhere) return LockResult::Locked;
  Unlock(lock);
  return LockResult::HeldElsewhere;
}

void FileOps::Unlock(FileLock& lock) {
  if (!lock.held()) return;
  unlink(lock.path.c_str());  // while it is still locked, so that nobody can hold the file that goes
  for (std::intptr_t* handle : {&lock.handle, &lock.content}) {
    if (*handle != -1) close(Descriptor(*handle));
    *handle = -1;
  }
}

void FileOps::FollowLock(const std::string& target, FileLock& lock) {
  if (!lock.held()) return;
  std::intptr_t followed = -1;
  LockContent(target, followed);
  if (lock.content != -1) close(Descriptor(lock.content));
  lock.content = followed;
}

void OutliveWriteErrors() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

std::vector<std::string> CommandLineWords(int argc, char** argv) {
  return {argv + 1, argv + argc};
}

}  // namespace quorvane

#endif
