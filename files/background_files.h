#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "files/file_ops.h"

namespace quorvane {

// The endings of the files that keep races beside their project: the one that is flown, the last one that was
// thrown away, and what was saved but could not be written.
inline constexpr const char* kRunningEnding = ".running";
inline constexpr const char* kDroppedEnding = ".dropped";
inline constexpr const char* kUnsavedEnding = ".unsaved";
// The project as it was before another program took a race out of it.
inline constexpr const char* kReplacedEnding = ".before";
inline constexpr std::array kKeptRaces = {kRunningEnding, kDroppedEnding, kUnsavedEnding};
// "contest.running" for "contest.ini", "contest.txt.running" for "contest.txt".
std::string BesideProject(const std::string& project, const char* ending);

// Small files that must be on the disk within a moment, but must never make the caller wait: the race on the
// console, kept beside its project while it is flown. A thread of its own replaces each file in one step and
// goes on trying, each file once a second, until the newest text is on the disk.
//
// From one thread only. `files` is used on the thread of the writer, and has to outlive the program where a
// disk may hang: what hangs is left behind at the end.
class BackgroundFiles {
 public:
  enum class Way : std::uint8_t {
    OwnThread,
    AtOnce,    // each call writes before it returns, and tries once
    InMemory,  // nothing reaches a disk: for replays, whose project may be anybody's
  };

  explicit BackgroundFiles(FileOps& files, Way way);
  // Waits up to a second for what is still to be written.
  ~BackgroundFiles();
  BackgroundFiles(const BackgroundFiles&) = delete;
  BackgroundFiles& operator=(const BackgroundFiles&) = delete;

  // The file has this content from now on; of several that wait in a row for one file only the newest is
  // written. `replaced` goes when that is on the disk, not before, unless it is told something new itself.
  void Keep(const std::string& path, std::string bytes, const std::string& replaced = {});
  void Remove(const std::string& path);
  // What the file holds, with all that was told before: waits for it, but not longer than a second. Nothing
  // when there is none that can be read.
  std::optional<std::string> Read(const std::string& path);

  // Gives the file another name, whatever it is; that must be free. False: there is none, or it stays.
  bool Move(const std::string& path, const std::string& name);

  // Why the newest content is not on the disk, in words for the operator; empty while all is well. A disk
  // that takes longer than a second over one file is a reason.
  std::string Problem() const;
  // True: everything is on the disk. Waits so long at the most.
  bool Wait(int longestMs) const;

 private:
  struct Writer;

  void Do(const std::string& path, std::optional<std::string> bytes, const std::string& replaced = {});

  FileOps& files_;
  const Way way_;
  std::map<std::string, std::string> memory_;
  std::shared_ptr<Writer> writer_;  // shared with its thread, which may outlive this
};

}  // namespace quorvane
