#pragma once

#include <algorithm>
#include <array>
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
// These make its lines, each with its line feed. docs/journal.md describes the format.
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

// By EventKind. That a text box got the focus selects its text and changes nothing that counts: not kept.
inline constexpr std::array<std::string_view, 15> kEventVerbs = {
    "load",  "click",  "type", "choose", "hover", "",     "key",  "activate",
    "close", "resize", "rx",   "line",   "ports", "quit", "timer"};
// By DialogAnswer::Word; after "text" and "file" it follows, quoted.
inline constexpr std::array<std::string_view, 6> kAnswerWords = {"ok", "cancel", "yes", "no", "text", "file"};

// What every journal begins with.
std::string StartRecords(const LocalDateTime& start, bool timersRecorded);
std::string SettingRecord(const JournalSetting& setting);
// Empty for the events that a journal does not keep.
std::string EventRecord(std::int64_t ms, const Event& event);
std::string AnswerRecord(std::int64_t ms, const DialogAnswer& answer);
std::string SentRecord(std::int64_t ms, const std::vector<std::uint8_t>& frame);
// Number 0: the port can be opened again.
std::string BusyRecord(std::int64_t ms, int port, int number, const std::string& description);
// What the computer's clock shows.
std::string ClockRecord(std::int64_t ms, const LocalDateTime& shown);
// The project file can be opened, or cannot, because another console holds it.
std::string HeldRecord(std::int64_t ms, const std::string& path, bool held);
std::string EndRecord(std::int64_t ms);
// The operator has switched the recording off; nothing follows, though the session goes on.
std::string StoppedComment(std::int64_t ms);
// An error has ended an event.
std::string ErrorComment(std::int64_t ms, const std::string& error);

// Comment lines that keep a project file as it was found. Every byte above 126 becomes an escape, so that
// any file can be kept.
std::string ProjectComments(const std::string& path, std::string_view bytes);
// The path leads to the file that was named by the other one before.
std::string SameFileComment(const std::string& path, const std::string& before);

std::string AnswerText(const DialogAnswer& answer);  // `yes`, `text "..."`

// ---- Reading.

// One record of a journal after its header.
struct JournalRecord {
  enum class Kind : std::uint8_t {
    Input,   // event
    Answer,  // answer
    Busy,    // port, number, text: opening it fails so from now on; number 0: no longer
    Held,    // held, event.text: whether another console holds this project file from now on
    Clock,   // moment: what the computer's clock shows from now on
    Sent,    // event.bytes: a frame that went out
    End,
  };
  Kind kind = Kind::Input;
  std::int64_t ms = 0;  // of the console clock
  int line = 0;         // in the file, from 1
  Event event = {};
  DialogAnswer answer = {};
  int port = 0;
  bool held = false;
  LocalDateTime moment = {};
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

// Reads the text of a journal. Throws UnreadableJournal. A last line
// without its line feed is left out, as a recording that was cut off ends in one, unless it could not have
// gone on.
SessionJournal ReadJournal(std::string_view text);

}  // namespace quorvane
