#pragma once

#include <map>
#include <string>

#include "files/file_ops.h"

namespace quorvane {

// Files in memory, for tests that save thousands of races and ask nothing of the disk.
class MemoryFiles : public FileOps {
 public:
  std::map<std::string, std::string> files;

  std::error_code Look(const std::string& path, FileStamp& stamp) override {
    stamp = {};
    const auto found = files.find(path);
    if (found == files.end()) return {};
    stamp.kind = FileStamp::Kind::File;
    stamp.size = found->second.size();
    stamp.modified_ns = version_[path];
    return {};
  }
  std::error_code ReadFile(const std::string& path, size_t, std::string& bytes, FileStamp& stamp) override {
    if (!files.contains(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
    bytes = files[path];
    return Look(path, stamp);
  }
  std::error_code Resolve(const std::string& path, std::string& target) override {
    target = path;
    return {};
  }
  std::error_code MayWrite(const std::string&) override { return {}; }
  std::error_code CreateTemp(const std::string& target, TempFile& temp) override {
    temp.path = target + "~";
    return Put(temp.path, {});
  }
  std::error_code KeepMode(const TempFile&, const std::string&) override { return {}; }
  std::error_code Write(const TempFile& temp, std::string_view bytes) override {
    return Put(temp.path, std::string(bytes));
  }
  std::error_code Sync(const TempFile&) override { return {}; }
  std::error_code StampOf(const TempFile& temp, FileStamp& stamp) override {
    const std::error_code error = Look(temp.path, stamp);
    stamp.modified_ns = clock_ + 1;  // what the rename is about to give it
    return error;
  }
  std::error_code Close(TempFile&) override { return {}; }
  std::error_code Rename(const std::string& from, const std::string& to) override {
    const std::string bytes = files[from];
    files.erase(from);
    return Put(to, bytes);
  }
  std::error_code SyncFolder(const std::string&) override { return {}; }
  std::error_code Remove(const std::string& path) override {
    files.erase(path);
    return {};
  }
  void RemoveLeftovers(const std::string&) override {}
  LockResult Lock(const std::string&, FileLock& lock) override {
    lock.handle = 1;
    return LockResult::Locked;
  }
  void Unlock(FileLock& lock) override { lock.handle = -1; }
  void FollowLock(const std::string&, FileLock&) override {}

 private:
  std::error_code Put(const std::string& path, std::string bytes) {
    files[path] = std::move(bytes);
    version_[path] = ++clock_;
    return {};
  }

  std::map<std::string, std::int64_t> version_;
  std::int64_t clock_ = 0;
};

}  // namespace quorvane
