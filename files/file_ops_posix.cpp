#ifndef _WIN32

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>

#include "files/file_ops.h"

namespace quorvane {

namespace {

constexpr std::string_view kTempEnding = ".tmp";
constexpr int kMostLinks = 40;

std::error_code LastError() {
  return {errno, std::generic_category()};
}

std::error_code ErrorIf(bool failed) {
  return failed ? LastError() : std::error_code();
}

int Descriptor(std::intptr_t handle) {
  return static_cast<int>(handle);
}

// The path up to and including its last slash; empty for a bare name.
std::string_view FolderPart(std::string_view path) {
  return path.substr(0, path.rfind('/') + 1);
}

// A hidden name beside `target`. Long names are cut, so that the longer name is still a legal one.
std::string HiddenBeside(const std::string& target) {
  constexpr size_t kNameLimit = 200;
  const std::string folder(FolderPart(target));
  return folder + "." + target.substr(folder.size(), kNameLimit);
}

FileStamp StampFrom(const struct stat& found) {
  FileStamp stamp;
  stamp.kind = S_ISREG(found.st_mode)   ? FileStamp::Kind::File
               : S_ISDIR(found.st_mode) ? FileStamp::Kind::Folder
                                        : FileStamp::Kind::Other;
  stamp.device = static_cast<uint64_t>(found.st_dev);
  stamp.number = static_cast<uint64_t>(found.st_ino);
#ifdef __APPLE__
  const timespec& modified = found.st_mtimespec;
#else
  const timespec& modified = found.st_mtim;
#endif
  stamp.modified_ns = int64_t{modified.tv_sec} * 1'000'000'000 + modified.tv_nsec;
  stamp.size = static_cast<uint64_t>(found.st_size);
  return stamp;
}

std::error_code NotARegularFile(FileStamp::Kind kind) {
  return std::make_error_code(kind == FileStamp::Kind::Folder ? std::errc::is_a_directory
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

// A lock on the file that stands at `path`. Nothing where there is no file yet, or no such locks.
LockResult LockContent(const std::string& path, std::intptr_t& handle) {
  struct stat found = {};
  if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return LockResult::Unavailable;
  const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return LockResult::Unavailable;
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    const bool held = errno == EWOULDBLOCK;
    close(descriptor);
    return held ? LockResult::HeldElsewhere : LockResult::Unavailable;
  }
  handle = descriptor;
  return LockResult::Locked;
}

}  // namespace

std::error_code SystemFileOps::Look(const std::string& path, FileStamp& stamp) {
  struct stat found = {};
  stamp = {};
  if (stat(path.c_str(), &found) != 0) {
    return ErrorIf(errno != ENOENT && errno != ENOTDIR);
  }
  stamp = StampFrom(found);
  return {};
}

std::error_code SystemFileOps::ReadFile(const std::string& path, size_t limit, std::string& bytes,
                                        FileStamp& stamp) {
  bytes.clear();
  // Asked before opening, because opening alone can set a device going; and once more afterwards, because
  // another file may have taken the place.
  std::error_code error = Look(path, stamp);
  if (error) return error;
  if (stamp.kind == FileStamp::Kind::Missing) {
    return std::make_error_code(std::errc::no_such_file_or_directory);
  }
  if (stamp.kind != FileStamp::Kind::File) return NotARegularFile(stamp.kind);
  const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return LastError();
  struct stat found = {};
  error = ErrorIf(fstat(descriptor, &found) != 0);
  stamp = StampFrom(found);
  if (!error && stamp.kind != FileStamp::Kind::File) error = NotARegularFile(stamp.kind);
  if (!error && stamp.size > limit) error = std::make_error_code(std::errc::file_too_large);
  if (!error) error = ReadAll(descriptor, limit, static_cast<size_t>(stamp.size), bytes);
  close(descriptor);
  if (error) bytes.clear();
  return error;
}

std::error_code SystemFileOps::Resolve(const std::string& path, std::string& target) {
  target = path;
  if (path.empty() || path.find('\0') != std::string::npos) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  for (int links = 0; links < kMostLinks; ++links) {
    std::array<char, 4096> buffer;
    const ssize_t length = readlink(target.c_str(), buffer.data(), buffer.size());
    if (length < 0) return ErrorIf(errno != EINVAL && errno != ENOENT && errno != ENOTDIR);
    if (static_cast<size_t>(length) == buffer.size()) break;
    const std::string_view link(buffer.data(), static_cast<size_t>(length));
    target = (link.starts_with('/') ? std::string() : std::string(FolderPart(target))) + std::string(link);
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::error_code SystemFileOps::MayWrite(const std::string& target) {
  if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0) return {};
  return ErrorIf(errno != ENOENT);
}

std::error_code SystemFileOps::CreateTemp(const std::string& target, TempFile& temp) {
  static std::atomic<unsigned> made{0};
  const std::string beginning = HiddenBeside(target) + "." + std::to_string(getpid()) + "-";
  do {
    temp.path = beginning + std::to_string(++made) + std::string(kTempEnding);
    temp.handle = open(temp.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
  } while (temp.handle < 0 && errno == EEXIST);  // left by a process of the same number that was killed
  return ErrorIf(temp.handle < 0);
}

std::error_code SystemFileOps::KeepMode(const TempFile& temp, const std::string& target) {
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

std::error_code SystemFileOps::Write(const TempFile& temp, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(Descriptor(temp.handle), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return LastError();
    if (written == 0) return std::make_error_code(std::errc::io_error);
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return {};
}

std::error_code SystemFileOps::Sync(const TempFile& temp) {
  return ErrorIf(fsync(Descriptor(temp.handle)) != 0);
}

std::error_code SystemFileOps::StampOf(const TempFile& temp, FileStamp& stamp) {
  struct stat found = {};
  if (fstat(Descriptor(temp.handle), &found) != 0) return LastError();
  stamp = StampFrom(found);
  return {};
}

std::error_code SystemFileOps::Close(TempFile& temp) {
  const int descriptor = Descriptor(temp.handle);
  temp.handle = -1;
  return ErrorIf(close(descriptor) != 0 && errno != EINTR);
}

std::error_code SystemFileOps::Rename(const std::string& from, const std::string& to) {
  return ErrorIf(rename(from.c_str(), to.c_str()) != 0);
}

std::error_code SystemFileOps::SyncFolder(const std::string& target) {
  const std::string folder = std::string(FolderPart(target)) + ".";
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // A folder that may be written but not listed cannot be synced by anyone, nor can one on some network and
  // memory card file systems. That is no reason to call the file unsaved for ever.
  if (descriptor < 0) return ErrorIf(errno != EACCES && errno != EPERM);
  std::error_code error;
  if (fsync(descriptor) != 0) error = ErrorIf(errno != EINVAL && errno != ENOTSUP && errno != EBADF);
  close(descriptor);
  return error;
}

std::error_code SystemFileOps::Remove(const std::string& path) {
  return ErrorIf(unlink(path.c_str()) != 0);
}

void SystemFileOps::RemoveLeftovers(const std::string& target) {
  const std::string beginning = HiddenBeside(target) + ".";
  const std::string folder(FolderPart(target));
  DIR* listing = opendir((folder + ".").c_str());
  if (listing == nullptr) return;
  while (const dirent* entry = readdir(listing)) {
    const std::string path = folder + entry->d_name;
    if (!path.starts_with(beginning) || !path.ends_with(kTempEnding)) continue;
    if (path.size() <= beginning.size() + kTempEnding.size()) continue;
    const std::string_view middle =
        std::string_view(path).substr(beginning.size(), path.size() - beginning.size() - kTempEnding.size());
    if (middle.find_first_not_of("0123456789-") == std::string_view::npos) unlink(path.c_str());
  }
  closedir(listing);
}

LockResult SystemFileOps::Lock(const std::string& target, FileLock& lock) {
  lock.path = HiddenBeside(target) + ".lock";
  for (;;) {
    int descriptor = open(lock.path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (descriptor < 0) descriptor = open(lock.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0) return LockResult::Unavailable;
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
      const bool held = errno == EWOULDBLOCK;
      close(descriptor);
      return held ? LockResult::HeldElsewhere : LockResult::Unavailable;
    }
    // Whoever held it before may have removed the file in between: then this lock is on a file that nobody
    // else sees.
    struct stat ours = {};
    struct stat there = {};
    if (fstat(descriptor, &ours) == 0 && stat(lock.path.c_str(), &there) == 0 &&
        ours.st_ino == there.st_ino && ours.st_dev == there.st_dev) {
      lock.handle = descriptor;
      if (LockContent(target, lock.content) != LockResult::HeldElsewhere) return LockResult::Locked;
      Unlock(lock);
      return LockResult::HeldElsewhere;
    }
    close(descriptor);
  }
}

void SystemFileOps::Unlock(FileLock& lock) {
  if (!lock.held()) return;
  unlink(lock.path.c_str());  // while it is still locked, so that nobody can hold the file that goes
  close(Descriptor(lock.handle));
  lock.handle = -1;
  if (lock.content != -1) close(Descriptor(lock.content));
  lock.content = -1;
}

void SystemFileOps::FollowLock(const std::string& target, FileLock& lock) {
  if (!lock.held()) return;
  std::intptr_t followed = -1;
  LockContent(target, followed);
  if (lock.content != -1) close(Descriptor(lock.content));
  lock.content = followed;
}

}  // namespace quorvane

#endif
