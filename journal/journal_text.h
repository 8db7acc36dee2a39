#pragma once

#include <array>
#include <cstdint>
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

}  // namespace quorvane
