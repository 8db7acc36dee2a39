#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "files/disk_thread.h"
#include "files/file_ops.h"
#include "files/output_guard.h"
#include "records/profile_file.h"

namespace quorvane {

// In bytes. No contest comes near this, and reading a file beyond it would stall the console.
inline constexpr std::size_t kLargestProject = std::size_t{256} << 20;

// A value that was written to a project and is not on the disk yet.
struct KeptChange {
  std::string section;
  std::string key;
  std::string value;
};

// Of a text of such values.
enum class PendingTaken : std::uint8_t {
  All,
  NotAll,  // what had no sense was left out
  OtherContest,
};

// One project file on disk.
//
// Reads and writes report nothing, like the profile calls they stand for: a file that cannot be read is
// empty, and a write that fails is no error of the caller. But nothing written is lost. It stays in memory,
// reads show it, Saved() is false with the reason in Problem(), and every later write and Retry() tries again
// to bring all of it to the disk.
//
// The file is replaced whole in one step, so it is complete at any moment. What other programs change is read
// again first, and the own changes are made in their text. A file that disappears or is emptied is written
// again whole by the next write. One that cannot be read, or has taken a project's place and is none, is
// never replaced; and what was kept in memory, or belongs to the race being flown, never goes into another
// contest's file, nor over a race that has come into it meanwhile: it takes the next free number (TakeMoved).
class ProjectStore {
 public:
  // The file need not exist. Gives up the lock, and whatever could not be saved, at its end.
  explicit ProjectStore(const std::string& path, FileOps& files = SystemFiles());
  ~ProjectStore();
  ProjectStore(const ProjectStore&) = delete;
  ProjectStore& operator=(const ProjectStore&) = delete;

  const std::string& Path() const { return path_; }  // absolute

  // Takes the file for this program alone; others can still read and write it. Unavailable where there is no
  // place for a lock: no reason to refuse the file.
  LockResult TryLock();
  void Unlock() { files_.Unlock(lock_); }

  // `mayLook` is asked before each look of a Read at the disk. `raceAtStake` is asked when another file
  // stands there than was seen last: whether a race of the contest seen last is flown or waits to be written.
  void SetOwner(std::function<bool()> mayLook, std::function<bool()> raceAtStake) {
    mayLook_ = std::move(mayLook);
    raceAtStake_ = std::move(raceAtStake);
  }
  // From now on a call waits for the disk only for as many ms as `patience` says at that moment. What takes
  // longer goes on behind: reads show what was known before, and a write counts as not saved until a Retry()
  // finds it done. `files` then has to outlive the program, because what hangs is left behind at the end.
  void SetPatience(std::function<int()> patience) { patience_ = std::move(patience); }

  // Why the file that stands there is not to be read or replaced; empty when it is, or there is none.
  const std::string& Unreadable() const { return unreadable_; }
  // What kind of file was there when it was last read: Empty when there is none.
  FileKind Kind() const { return kind_; }

  // See ProfileString. Looks first whether another program has changed the file, except inside a group.
  std::string Read(std::string_view section, std::string_view key, std::string_view fallback);

  // Sets a value. On the disk when this returns, or when the group in progress ends.
  void Write(std::string_view section, std::string_view key, std::string_view value);

  // For WriteGroup. Groups may be nested; only the outermost counts.
  void Begin();
  void End();

  // False while something written is not on the disk for certain; then why, in words for the operator.
  bool Saved() const { return problem_.empty(); }
  const std::string& Problem() const { return problem_; }

  // How many values are written and not on the disk; all of them as a text for a later run of the program.
  std::size_t Pending() const { return pending_.size(); }
  std::string PendingText() const;
  PendingTaken TakePending(const std::string& text);

  // Appends what was given another number because its own was taken, in words for the operator, each once.
  void TakeMoved(std::vector<std::string>& moved);

  // The whole file as it was before another program took a flight out of it, or put another file in its
  // place: for the first time since this was asked last. Empty when none has.
  std::string TakeReplaced() { return std::exchange(replaced_, {}); }

  // Tries once more what could not be saved. Returns Saved().
  bool Retry();

 private:
  struct Replacement;

  bool Refresh();
  bool Behind(std::function<void()> job);
  bool BeginReplacement();
  std::error_code EndReplacement();
  bool FitsIn(const ProfileFile& file);
  void TakeIn(std::string bytes);
  void Commit();
  std::string ReplaceOnDisk();

  FileOps& files_;
  const std::string path_;
  ProfileFile text_;                 // the file as last seen, with `pending_` in it
  std::vector<KeptChange> pending_;  // what was written since the disk last had everything
  bool differs_ = false;             // `text_` differs from the file as last seen
  FileStamp seen_;
  bool looked_ = false;
  std::string title_;    // of the contest, as the file has it
  std::string foreign_;  // why the file that stands there is not this project; empty when it is
  std::vector<std::string> moved_;
  std::string replaced_;
  std::string unreadable_;
  FileKind kind_ = FileKind::Empty;
  std::function<bool()> mayLook_ = [] { return true; };
  std::function<bool()> raceAtStake_ = [] { return false; };
  std::string problem_;
  int groups_ = 0;
  FileLock lock_;
  std::function<int()> patience_;  // empty: without end, and no thread
  DiskThread disk_;
  std::uint64_t revision_ = 0;           // of `text_`, counted in writes
  std::shared_ptr<Replacement> saving_;  // in hand, or over and not looked at yet
};

// Gathers the writes of its lifetime into one replacement of the file, also when an error ends it early.
class WriteGroup {
 public:
  explicit WriteGroup(ProjectStore& store) : store_(store) { store_.Begin(); }
  ~WriteGroup() { store_.End(); }
  WriteGroup(const WriteGroup&) = delete;
  WriteGroup& operator=(const WriteGroup&) = delete;

 private:
  ProjectStore& store_;
};

// One value as the Windows API's profile read gives it through a buffer of 2048 characters: at most 2047 of
// them, and the fallback, without its trailing blanks, when the section or the key is missing.
std::string ProfileString(const ProfileFile& file, std::string_view section, std::string_view key,
                          std::string_view fallback);

}  // namespace quorvane
