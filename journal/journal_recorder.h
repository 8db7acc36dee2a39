#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "forms/event.h"
#include "forms/platform.h"
#include "journal/journal_text.h"

namespace quorvane {

class JournalFile;

// What the program finds at its start and what a replay therefore has to begin with.
struct SessionStart {
  LocalDateTime start = {};  // local date and time at 0 ms of the console clock: Door::LocalStart
  std::vector<JournalSetting> settings = {};  // the whole settings store
  std::vector<int> ports = {};                // the serial ports that exist
  std::string project = {};                   // the project file that is opened, or asked about, at the start
  bool projectUnasked = false;                // it was named on the command line, so no question is asked
};

// Keeps the journal of a session and writes it to a file while it is told to. A session can only be replayed
// from its beginning, so everything is kept in memory as well and recording may begin at any time.
//
// Hand it to Door::SetJournal. Never throws and never waits for a disk. From the thread of the door only.
class SessionRecorder : public Journal {
 public:
  explicit SessionRecorder(std::size_t mostBytes = std::size_t{128} << 20);
  ~SessionRecorder() override;

  // Before the Load event enters.
  void Begin(const SessionStart& start);

  // Writes the session so far, and all that follows, to this file, which must be a new one, or to `out`.
  // False when the session has grown beyond what is kept (see Problem).
  bool Record(const std::filesystem::path& path, std::unique_ptr<std::ostream> out = nullptr);
  // The file ends with a mark that says up to where it goes.
  void Stop();
  bool Recording() const { return file_ != nullptr; }

  // Why the recording has stopped by itself, in the system's words. To be looked at after each event.
  std::string Problem() const;

  // The console ends: writes the last record and closes the file.
  void End(std::int64_t ms);

  // A serial port could not be opened (number and description of the failure), or could (number 0). At once.
  void NoteOpened(int port, int number, const std::string& description);

  void ClockSet(std::int64_t ms, const LocalDateTime& shown) override;
  void ComputerLooked(std::int64_t ms, const ComputerTime& time) override;
  void Entered(std::int64_t ms, const Event& event) override;
  void Answered(std::int64_t ms, const DialogBox& box, const DialogAnswer& answer) override;
  void Sent(std::int64_t ms, const std::vector<std::uint8_t>& frame) override;
  void ProjectOpened(std::int64_t ms, const std::string& path, bool taken) override;
  void Failed(std::int64_t ms, const std::string& error) override;
  void Corrected(std::int64_t ms, const std::string& what) override;

 private:
  void Close();
  void AddInput(const JournalRecord& record);
  void Add(const std::string& text);
  void InsertBeforeLatest(JournalRecord record);
  void Keep(const std::string& text);
  void Count(const std::string& text);
  void KeepProject(const std::string& path);
  void KeepFile(const std::string& path);

  const std::size_t mostBytes_;
  // From the start up to what is latest, many records in each, so that it grows without being copied and
  // takes no more room than its text; empty once it has grown too long.
  std::deque<std::string> session_;
  std::size_t bytes_ = 0;
  bool begun_ = false;
  bool tooLong_ = false;
  std::vector<std::string> latest_;  // the last record that a replay acts on, and what followed from it
  std::int64_t latestMs_ = 0;
  std::set<std::string> projectsKept_;
  std::map<int, std::pair<int, std::string>> busyPorts_;  // with number and description of the failure
  std::set<std::string> heldProjects_;
  std::unique_ptr<JournalFile> file_;
  std::string problem_;
};

}  // namespace quorvane
