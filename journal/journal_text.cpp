#include "journal/journal_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace quorvane {
namespace {

std::string Record(std::int64_t ms, std::string_view verb, const std::string& arguments = {}) {
  return fmt::format("{} {}{}{}\n", ms, verb, arguments.empty() ? "" : " ", arguments);
}

std::string HexOf(const std::vector<std::uint8_t>& bytes) {
  return fmt::format("{:02X}", fmt::join(bytes, ""));
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
      return fmt::format("{} {}", event.target, event.number);
    case EventKind::Key:
      return event.text;
    case EventKind::Bytes:
      return HexOf(event.bytes);
    case EventKind::LineError:
      return std::to_string(event.number);
    case EventKind::Ports:
      return fmt::format("{}", fmt::join(event.numbers, " "));
    default:
      return event.target;
  }
}

}  // namespace

std::string StartRecords(const LocalDateTime& start, bool timersRecorded) {
  return std::string(kJournalFirstLine) + "\n" + Record(0, "start", MomentText(start)) +
         Record(0, "timers", timersRecorded ? "recorded" : "virtual");
}

std::string SettingRecord(const JournalSetting& setting) {
  return Record(0, "setting",
                Word(setting.section) + " " + Word(setting.key) + " " + JsonString(setting.value));
}

std::string EventRecord(std::int64_t ms, const Event& event) {
  const std::string_view verb = kEventVerbs[static_cast<std::size_t>(event.kind)];
  return verb.empty() ? std::string() : Record(ms, verb, Arguments(event));
}

std::string AnswerText(const DialogAnswer& answer) {
  const std::string word(kAnswerWords[static_cast<std::size_t>(answer.word)]);
  return answer.word < DialogAnswer::Word::Text ? word : word + " " + JsonString(answer.text);
}

std::string AnswerRecord(std::int64_t ms, const DialogAnswer& answer) {
  return Record(ms, "answer", AnswerText(answer));
}

std::string SentRecord(std::int64_t ms, const std::vector<std::uint8_t>& frame) {
  return Record(ms, "tx", HexOf(frame));
}

std::string BusyRecord(std::int64_t ms, int port, int number, const std::string& description) {
  return Record(ms, "busy", fmt::format("{} {} {}", port, number, JsonString(description)));
}

std::string ClockRecord(std::int64_t ms, const LocalDateTime& shown) {
  return Record(ms, "clock", MomentText(shown));
}

std::string HeldRecord(std::int64_t ms, const std::string& path, bool held) {
  return Record(ms, held ? "held" : "free", JsonString(path));
}

std::string StoppedComment(std::int64_t ms) {
  return fmt::format("{}{}\n", kStoppedComment, ms);
}

std::string ErrorComment(std::int64_t ms, const std::string& error) {
  return fmt::format("# error {} {}\n", ms, JsonString(error));
}

std::string EndRecord(std::int64_t ms) {
  return Record(ms, "end");
}

std::string ProjectComments(const std::string& path, std::string_view bytes) {
  std::string comments = fmt::format("{}{}\n", kProjectComment, JsonString(path));
  while (!bytes.empty()) {
    const std::string_view line = bytes.substr(0, std::min(bytes.find('\n'), bytes.size() - 1) + 1);
    comments += fmt::format("{}{}\n", kContentComment, JsonString(line, true));
    bytes.remove_prefix(line.size());
  }
  return comments;
}

std::string SameFileComment(const std::string& path, const std::string& before) {
  return fmt::format("{}{} {}\n", kSameComment, JsonString(path), JsonString(before));
}

}  // namespace quorvane
