#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "files/output_guard.h"
#include "forms/event.h"
#include "forms/platform.h"

namespace quorvane {

// The session journal is a text file, UTF-8, one record a line: ms of the console clock, a verb, arguments.
// docs/journal.md describes the format.
inline constexpr std::string_view kProjectComment = "# project ";  // the path follows, quoted
inline constexpr std::string_view kContentComment = "# = ";        // a line of that file follows, quoted
inline constexpr std::string_view kSameComment = "# same ";        // two paths follow, quoted
inline constexpr std::string_view kStoppedComment = "# stopped ";  // the time in ms follows

// A value of the settings store at the start of the session.
struct JournalSetting {
  std::string section;
  std::string key;
  std::string value;
};

// One record of a journal after its header.
struct JournalRecord {
  enum class Kind : std::uint8_t {
    Input,     // event
    Answer,    // answer
    Busy,      // port, number, text: opening it fails so from now on; number 0: no longer
    Held,      // event.text: another console holds this project file from now on
    Free,      // event.text: none does any more
    Clock,     // moment: what the computer's clock shows from now on
    Computer,  // computer: what the computer's own clocks said when they were looked at
    Sent,      // event.bytes: a frame that went out
    End,
  };
  Kind kind = Kind::Input;
  std::int64_t ms = 0;  // of the console clock
  int line = 0;         // in the file, from 1
  Event event = {};
  DialogAnswer answer = {};
  int port = 0;
  LocalDateTime moment = {};
  ComputerTime computer = {};
};

// A journal as data.
struct SessionJournal {
  // A project file as the session found it, kept by the console in comments.
  struct KeptProject {
    std::string path;
    std::string bytes;
  };
  LocalDateTime start = {};
  bool timersRecorded = false;
  std::vector<JournalSetting> settings = {};
  std::vector<KeptProject> projects = {};
  std::map<std::string, std::string> sameFiles = {};  // another name of a project file, and its first one
  std::vector<JournalRecord> records = {};
  bool hasEnd = false;
  bool cutOff = false;  // the last line was unfinished and has been left out
  // ms at which the operator switched the recording off, though the session went on; -1: has not
  std::int64_t stoppedMs = -1;

  // The last moment that the journal tells of, in ms.
  std::int64_t LastMs() const { return std::max(stoppedMs, records.empty() ? 0 : records.back().ms); }
};

// The longest session that is read: race times are 32-bit numbers of ms.
inline constexpr std::int32_t kLastJournalMs = 2147483647;

// Why a journal cannot be read: what() says what was expected in that line.
class UnreadableJournal : public std::runtime_error {
 public:
  UnreadableJournal(int line, const std::string& expected) : std::runtime_error(expected), line_(line) {}
  int Line() const { return line_; }

 private:
  int line_;
};

// Throws UnreadableJournal. A last line without its line feed is left out, as a recording that was cut off
// ends in one, unless it could not have gone on.
SessionJournal ReadJournal(std::string_view text);

// What every journal begins with. These make whole lines, each with its line feed.
std::string StartRecords(const LocalDateTime& start, bool timersRecorded);
std::string SettingRecord(const JournalSetting& setting);
std::string RecordText(const JournalRecord& record);
// Comments that keep a project file as it was found, whatever its bytes: those above 126 become escapes.
std::string ProjectComments(const std::string& path, std::string_view bytes);

std::string AnswerText(const DialogAnswer& answer);  // `yes`, `text "..."`

}  // namespace quorvane
