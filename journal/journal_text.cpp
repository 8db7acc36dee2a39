#include "journal/journal_text.h"

#include <array>
#include <cstdio>

#include "base/text.h"

namespace quorvane {
namespace {

std::string Record(std::int64_t ms, std::string_view verb, const std::string& arguments) {
  std::string line = std::to_string(ms) + " ";
  line += verb;
  if (!arguments.empty()) line += " " + arguments;
  return line + "\n";
}

std::string Moment(const LocalDateTime& at) {
  std::array<char, 80> moment{};
  std::snprintf(moment.data(), moment.size(), "%04d-%02d-%02dT%02d:%02d:%02d", at.year, at.month, at.day,
                at.hour, at.minute, at.second);
  return moment.data();
}

std::string HexOf(const std::vector<std::uint8_t>& bytes) {
  std::string digits;
  digits.reserve(bytes.size() * 2);
  for (const std::uint8_t byte : bytes) digits += Hex2(byte);
  return digits;
}

std::string NumberList(const std::vector<int>& numbers) {
  std::string list;
  for (const int number : numbers) list += (list.empty() ? "" : " ") + std::to_string(number);
  return list;
}

// A word as it stands when it is one, otherwise quoted.
std::string Word(const std::string& text) {
  const bool plain = !text.empty() && text.find_first_of(" \t\r\n\"\\") == std::string::npos;
  return plain ? text : JsonString(text);
}

std::string Arguments(const Event& event) {
  switch (event.kind) {
    case EventKind::Type:
      return event.target + " " + JsonString(event.text);
    case EventKind::Choose:
      return event.target + " " + std::to_string(event.number);
    case EventKind::Key:
      return event.text;
    case EventKind::Bytes:
      return HexOf(event.bytes);
    case EventKind::LineError:
      return std::to_string(event.number);
    case EventKind::Ports:
      return NumberList(event.numbers);
    default:
      return event.target;
  }
}

// Bytes as the characters of the same numbers, so that a quoted text can carry any of them.
std::string QuotedBytes(std::string_view bytes) {
  std::string quoted = "\"";
  for (const char c : bytes) {
    const auto code = static_cast<std::uint8_t>(c);
    if (code < 127) {
      const std::string one = JsonString(std::string_view(&c, 1));
      quoted.append(one, 1, one.size() - 2);
    } else {
      quoted += "\\u00" + Hex2(code);
    }
  }
  return quoted + "\"";
}

}  // namespace

std::string_view EventVerb(EventKind kind) {
  switch (kind) {
    case EventKind::Load:
      return "load";
    case EventKind::Click:
      return "click";
    case EventKind::Type:
      return "type";
    case EventKind::Choose:
      return "choose";
    case EventKind::Hover:
      return "hover";
    case EventKind::GotFocus:
      return {};  // selects a text and changes nothing that counts
    case EventKind::Key:
      return "key";
    case EventKind::Activate:
      return "activate";
    case EventKind::Close:
      return "close";
    case EventKind::Resize:
      return "resize";
    case EventKind::Bytes:
      return "rx";
    case EventKind::LineError:
      return "line";
    case EventKind::Ports:
      return "ports";
    case EventKind::Quit:
      return "quit";
    case EventKind::Timer:
      return "timer";
  }
  return {};
}

std::string StartRecords(const LocalDateTime& start, bool timersRecorded) {
  return std::string(kJournalFirstLine) + "\n" + Record(0, "start", Moment(start)) +
         Record(0, "timers", timersRecorded ? "recorded" : "virtual");
}

std::string SettingRecord(const std::string& section, const std::string& key, const std::string& value) {
  return Record(0, "setting", Word(section) + " " + Word(key) + " " + JsonString(value));
}

std::string EventRecord(std::int64_t ms, const Event& event) {
  const std::string_view verb = EventVerb(event.kind);
  return verb.empty() ? std::string() : Record(ms, verb, Arguments(event));
}

std::string AnswerWords(const DialogAnswer& answer) {
  switch (answer.word) {
    case DialogAnswer::Word::Ok:
      return "ok";
    case DialogAnswer::Word::Cancel:
      return "cancel";
    case DialogAnswer::Word::Yes:
      return "yes";
    case DialogAnswer::Word::No:
      return "no";
    case DialogAnswer::Word::Text:
      return "text " + JsonString(answer.text);
    case DialogAnswer::Word::File:
      return "file " + JsonString(answer.text);
  }
  return {};
}

std::string AnswerRecord(std::int64_t ms, const DialogAnswer& answer) {
  return Record(ms, "answer", AnswerWords(answer));
}

std::string SentRecord(std::int64_t ms, const std::vector<std::uint8_t>& frame) {
  return Record(ms, "tx", HexOf(frame));
}

std::string BusyRecord(std::int64_t ms, int port, int number, const std::string& description) {
  return Record(ms, "busy",
                std::to_string(port) + " " + std::to_string(number) + " " + JsonString(description));
}

std::string ClockRecord(std::int64_t ms, const LocalDateTime& shown) {
  return Record(ms, "clock", Moment(shown));
}

std::string HeldRecord(std::int64_t ms, const std::string& path, bool held) {
  return Record(ms, held ? "held" : "free", JsonString(path));
}

std::string StoppedComment(std::int64_t ms) {
  return std::string(kStoppedComment) + std::to_string(ms) + "\n";
}

std::string ErrorComment(std::int64_t ms, const std::string& error) {
  return "# error " + std::to_string(ms) + " " + JsonString(error) + "\n";
}

std::string EndRecord(std::int64_t ms) {
  return Record(ms, "end", {});
}

std::string ProjectComments(const std::string& path, std::string_view bytes) {
  std::string comments = std::string(kProjectComment) + JsonString(path) + "\n";
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    const std::size_t length = end == std::string_view::npos ? bytes.size() : end + 1;
    comments += std::string(kContentComment) + QuotedBytes(bytes.substr(0, length)) + "\n";
    bytes.remove_prefix(length);
  }
  return comments;
}

std::string SameFileComment(const std::string& path, const std::string& before) {
  return std::string(kSameComment) + JsonString(path) + " " + JsonString(before) + "\n";
}

}  // namespace quorvane
