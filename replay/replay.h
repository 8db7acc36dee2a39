#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "console/program.h"
#include "files/file_ops.h"
#include "journal/journal_text.h"
#include "replay/virtual_platform.h"

namespace quorvane {

inline constexpr std::size_t kMostReplayed = std::size_t{1} << 30;  // bytes of a file

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

  std::error_code Sync(const TempFile&) override { return {}; }
  std::error_code Rename(const std::string& from, const std::string& to) override;
  std::error_code SyncFolder(const std::string&) override { return {}; }

  // Whether another console is to hold the file from now on.
  void Hold(const std::string& path, bool held) { held_[WholePath(path)] = held; }
  LockResult Lock(const std::string& target, FileLock& lock) override;

 private:
  std::function<std::int64_t()> clock_;
  std::map<std::string, bool> held_;
  std::vector<Version> versions_;
};

// Where a replay finds the files that its journal names. The session's own are not to be touched, so each
// gets a copy in a fresh temporary folder, which begins as the journal says that the file was found.
class ReplayFolder {
 public:
  struct Copy {
    std::string original;
    std::string path;
  };

  explicit ReplayFolder(const SessionJournal& journal) : journal_(journal) {}

  // The copy of this file, made at the first call; on request of the file as it stands, if none was kept.
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
  std::string folder_;  // with its last separator; empty until the first copy
  std::vector<Copy> copies_;
};

struct ReplayOptions {
  // Stands in the settings as the last project; empty: a copy of the journal's own in a temporary folder.
  std::string project = {};
  bool inPlace = false;  // the files that the journal's answers name are used where they stand
  // For a comparison: every content of the project files is kept, and a box that is open at the end of a
  // journal without end record is not cancelled, as the program was killed then.
  bool verify = false;
};

// Runs a journal through the whole program on a virtual clock. The journal must outlive it.
class Replay {
 public:
  struct Frame {
    std::int64_t ms;
    std::vector<std::uint8_t> bytes;
    bool operator==(const Frame&) const = default;
  };

  Replay(const SessionJournal& journal, const ReplayOptions& options);

  void Run();

  // The title and text of the box that could not be left, when that has ended the replay.
  const std::string& StuckIn() const { return stuckIn_; }
  // Records that name no control or form of the program, as lines for the operator. They have done nothing.
  const std::vector<std::string>& Notes() const { return notes_; }
  const std::vector<Frame>& Sent() const { return made_.frames; }
  // The project files that have been opened.
  const std::set<std::string>& Projects() const { return made_.projects; }

  // ms of the console clock.
  std::int64_t Now() { return platform_.ClockMs(); }
  Program& program() { return program_; }
  const VirtualPlatform& platform() const { return platform_; }
  const ReplayFiles& files() const { return files_; }
  ReplayFolder& folder() { return folder_; }

 private:
  struct Made : Journal {
    void Sent(std::int64_t ms, const std::vector<std::uint8_t>& frame) override {
      frames.push_back({ms, frame});
    }
    void ProjectOpened(std::int64_t, const std::string& path, bool taken) override {
      if (taken) projects.insert(path);
    }
    std::vector<Frame> frames;
    std::set<std::string> projects;
  };

  bool Step();
  void Take(const JournalRecord& record);
  std::string PathFor(const std::string& named);
  void PutKeptRaces(const std::string& original, const std::string& copy);
  void TakeEvent(const JournalRecord& record);
  bool Names(const Event& event);
  void WhileOpen();

  const SessionJournal& journal_;
  const ReplayOptions options_;
  VirtualPlatform platform_;
  VirtualSerial serial_;
  ReplayFiles files_;
  ReplayFolder folder_;
  Made made_;
  Program program_;
  std::size_t next_ = 0;  // record
  bool loaded_ = false;
  std::string stuckIn_;
  std::vector<std::string> notes_;
};

// ---- What a replay leaves behind, as text.

// One JSON object: `time`, `race`, `lanes`, `controls`.
std::string StateJson(Replay& replay);
// A tx record for each frame sent.
std::string FrameRecords(const std::vector<Replay::Frame>& frames);
// A line for each dialog box that was answered: `ms` at which it opened, `kind`, `title`, `text`, `answer`.
std::string DialogLines(const std::vector<VirtualPlatform::Shown>& shown);
// INI text, one section after the other in the order of their names.
std::string SettingsText(const MemorySettings& settings);

struct Verdict {
  bool same = false;
  std::string text;                // one line for the operator, with the time of the first difference
  std::vector<std::string> notes;  // what could not be compared
};

// Compares what a replay (with verify) has sent and saved with the session's tx records, and with its project
// files as they now stand on the disk; `project`, if given, stands in for the one that was open at the end.
Verdict Verify(const SessionJournal& journal, Replay& replay, const std::string& project);

}  // namespace quorvane
