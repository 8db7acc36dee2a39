#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "console/program.h"
#include "journal/journal_reader.h"
#include "replay/replay_files.h"
#include "replay/virtual_platform.h"

namespace quorvane {

struct ReplayOptions {
  // The project file that stands in the settings store as the last project. Empty: a copy of the journal's
  // own in a temporary folder.
  std::string project = {};
  bool inPlace = false;       // the files that the journal's answers name are used where they stand
  bool keepVersions = false;  // every content of the project files, for a comparison
  // A box without an answer at the end of a journal that has no end record ends the replay instead of being
  // cancelled: the program was killed with the box open.
  bool stopInOpenBox = false;
};

// Runs a journal through the whole program on a virtual clock. The journal must outlive it.
//
// The files that a journal names are those of a contest, or anybody's: copies are used in their place.
class Replay {
 public:
  struct Frame {
    std::int64_t ms;
    std::vector<std::uint8_t> bytes;
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

  void Prepare();
  bool Step();
  bool FireTimerBefore(std::int64_t ms);
  void Take(const JournalRecord& record);
  std::string PathFor(const std::string& named);
  void TakeEvent(const JournalRecord& record);
  void TakePorts(const Event& event);
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

}  // namespace quorvane
