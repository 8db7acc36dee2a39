#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "files/file_ops.h"
#include "journal/journal_reader.h"

namespace quorvane {

// The real files, but without waiting for the disk after each save: a replay that is lost in a power failure
// is run again. Keeps, on request, every content that was saved, with its time.
class ReplayFiles : public FileOps {
 public:
  struct Version {
    std::int64_t ms;
    std::string path;
    std::string bytes;
  };

  void KeepVersions(std::function<std::int64_t()> clock) { clock_ = std::move(clock); }
  const std::vector<Version>& Versions() const { return versions_; }

  std::error_code Write(const TempFile& temp, std::string_view bytes) override;
  std::error_code Sync(const TempFile&) override { return {}; }
  std::error_code Rename(const std::string& from, const std::string& to) override;
  std::error_code SyncFolder(const std::string&) override { return {}; }

  // Whether another console is to hold the file from now on.
  void Hold(const std::string& path, bool held);
  LockResult Lock(const std::string& target, FileLock& lock) override;

 private:
  std::function<std::int64_t()> clock_;
  std::map<std::string, std::string> unnamed_;  // content of temporary files
  std::set<std::string> held_;
  std::vector<Version> versions_;
};

// Where a replay finds the files that its journal names. The session's own project files are not to be
// touched by replaying it, so each gets a copy in a fresh temporary folder, which begins as the journal says
// that the file was found.
class ReplayFolder {
 public:
  struct Copy {
    std::string original;
    std::string path;
  };

  explicit ReplayFolder(const SessionJournal& journal) : journal_(journal) {}

  // Made at the first call. Ends with a separator.
  const std::string& Path();
  // The copy of this file, a new one at the first call for it. Of a file of which the journal keeps nothing
  // it is as the file now stands, on request.
  const std::string& CopyOf(const std::string& original, bool asItStands = false);
  bool HasCopyOf(const std::string& original) const { return Find(original) != nullptr; }
  // Makes `path` the copy of `original`. A file that exists stays as it is.
  const std::string& Use(const std::string& path, const std::string& original);
  const std::vector<Copy>& Copies() const { return copies_; }
  // Removes the temporary folder with all copies in it.
  void Remove();

 private:
  const Copy* Find(const std::string& original) const;

  const SessionJournal& journal_;
  std::string folder_;
  std::vector<Copy> copies_;
};

}  // namespace quorvane
