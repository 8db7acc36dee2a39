#include "journal/journal_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

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

// ---- Reading.

namespace {

using Kind = JournalRecord::Kind;

constexpr int kLastPort = 31;
constexpr int kFirstLineError = 1000;

// A hexadecimal number of exactly these digits, none for anything else.
std::optional<unsigned> HexNumber(std::string_view digits, std::size_t count) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  const bool whole = error == std::errc() && end == digits.data() + digits.size() && digits.size() == count;
  return whole ? std::optional(value) : std::nullopt;
}

// The words of one line, taken off one by one from the left. What does not fit throws UnreadableJournal with
// what was expected.
class Words {
 public:
  Words(std::string_view text, int line) : rest_(text), line_(line) {}

  // Quotes a short piece of what was found; the message has to stay one line.
  [[noreturn]] void Fail(const std::string& expected, std::string_view found) const {
    std::string shown(found.substr(0, 40));
    std::replace_if(
        shown.begin(), shown.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }, '?');
    throw UnreadableJournal(
        line_, "expected " + expected + ", found " + (found.empty() ? "nothing" : '"' + shown + '"'));
  }

  // Nothing but blanks is left.
  bool AtEnd() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
    return rest_.empty();
  }

  void End() {
    if (!AtEnd()) Fail("the end of the line", rest_);
  }

  std::string_view Word(const char* expected) {
    if (AtEnd()) Fail(expected, {});
    const std::string_view word = rest_.substr(0, rest_.find_first_of(" \t"));
    rest_.remove_prefix(word.size());
    return word;
  }

  int Number(int lowest, int highest, const char* expected) {
    const std::string_view word = Word(expected);
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = error == std::errc() && end == word.data() + word.size();
    if (!whole || value < lowest || value > highest) Fail(expected, word);
    return value;
  }

  std::vector<std::uint8_t> Bytes() {
    constexpr const char* kExpected = "bytes as pairs of hexadecimal digits";
    const std::string_view word = Word(kExpected);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(word.size() / 2);
    for (std::size_t i = 0; i < word.size(); i += 2) {
      const auto byte = HexNumber(word.substr(i, 2), 2);
      if (!byte) Fail(kExpected, word);
      bytes.push_back(static_cast<std::uint8_t>(*byte));
    }
    return bytes;
  }

  std::string WordOrQuoted(const char* expected) {
    if (!AtEnd() && rest_.front() == '"') return Quoted(expected);
    return std::string(Word(expected));
  }

  // A JSON string. Read by hand: a journal may hold any bytes and half of a pair of escapes, which a library
  // refuses, and says itself what is wrong with it.
  std::string Quoted(const char* expected) {
    if (AtEnd() || rest_.front() != '"') Fail(expected, rest_);
    rest_.remove_prefix(1);
    std::string text;
    for (char c = Next("a closing quote"); c != '"'; c = Next("a closing quote")) {
      if (static_cast<unsigned char>(c) < 0x20) Fail("control characters written as escapes", rest_);
      if (c == '\\') {
        Escape(text);
      } else {
        text += c;
      }
    }
    if (!rest_.empty() && rest_.front() != ' ' && rest_.front() != '\t')
      Fail("a blank after the quote", rest_);
    return text;
  }

 private:
  char Next(const char* expected) {
    if (rest_.empty()) Fail(expected, {});
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  void Escape(std::string& text) {
    constexpr std::string_view kNames = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    constexpr const char* kExpected = R"(one of "\/bfnrtu after a backslash)";
    const char c = Next(kExpected);
    if (c == 'u') return AppendUtf8(text, CodePoint());
    const std::size_t at = kNames.find(c);
    if (at == std::string_view::npos) Fail(kExpected, std::string_view(&c, 1));
    text += kMeanings[at];
  }

  unsigned Unit() {
    const std::string_view digits = rest_.substr(0, 4);
    const auto unit = HexNumber(digits, 4);
    if (!unit) {
      const std::size_t bad = digits.find_first_not_of("0123456789ABCDEFabcdef");
      Fail("four hexadecimal digits after \\u", digits.substr(std::min(bad, digits.size()), 1));
    }
    rest_.remove_prefix(4);
    return *unit;
  }

  // A character outside the first 65536 comes as two escapes. Half of such a pair is no character.
  char32_t CodePoint() {
    constexpr char32_t kReplacement = 0xFFFD;
    const unsigned first = Unit();
    if (first < 0xD800 || first > 0xDFFF) return first;
    if (first > 0xDBFF || !rest_.starts_with("\\u")) return kReplacement;
    const std::string_view before = rest_;
    rest_.remove_prefix(2);
    const unsigned second = Unit();
    if (second >= 0xDC00 && second <= 0xDFFF) return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    rest_ = before;
    return kReplacement;
  }

  std::string_view rest_;
  int line_;
};

LocalDateTime ReadMoment(Words& words) {
  constexpr const char* kExpected = "a date and time like 2026-11-21T09:00:00";
  const std::string_view word = words.Word(kExpected);
  const auto number = [&](std::size_t at, std::size_t digits) {
    int value = 0;
    if (at < word.size())
      std::from_chars(word.data() + at, word.data() + std::min(at + digits, word.size()), value);
    return value;
  };
  const LocalDateTime moment{number(0, 4),  number(5, 2),  number(8, 2),
                             number(11, 2), number(14, 2), number(17, 2)};
  const bool valid = moment.year >= 1900 && moment.month >= 1 && moment.month <= 12 && moment.day >= 1 &&
                     moment.day <= 31 && AddMilliseconds(moment, 0) == moment;
  if (!valid || MomentText(moment) != word) words.Fail(kExpected, word);
  return moment;
}

std::string ReadKey(Words& words) {
  constexpr const char* kExpected = "a key: F1 to F12, 7, 8, 9 or 0";
  const std::string_view key = words.Word(kExpected);
  if (std::find(kKeyNames.begin(), kKeyNames.end(), key) == kKeyNames.end()) words.Fail(kExpected, key);
  return std::string(key);
}

// A form's name, dot, a control's name, perhaps with an index. Whether there is such a control, the program
// has to say.
std::string ReadControl(Words& words) {
  constexpr const char* kExpected = "a control like frmJudge.cmdStart";
  const std::string_view name = words.Word(kExpected);
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) words.Fail(kExpected, name);
  return std::string(name);
}

std::string ReadForm(Words& words) {
  constexpr const char* kExpected = "a form like frmJudge";
  const std::string_view name = words.Word(kExpected);
  if (name.find('.') != std::string_view::npos) words.Fail(kExpected, name);
  return std::string(name);
}

std::vector<int> ReadPorts(Words& words) {
  std::vector<int> ports;
  while (!words.AtEnd()) ports.push_back(words.Number(1, kLastPort, "port numbers from 1 to 31"));
  std::sort(ports.begin(), ports.end());
  ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
  return ports;
}

DialogAnswer ReadAnswer(Words& words) {
  constexpr const char* kExpected = "yes, no, cancel, ok, text \"...\" or file \"...\"";
  const std::string_view word = words.Word(kExpected);
  const auto found = std::find(kAnswerWords.begin(), kAnswerWords.end(), word);
  if (found == kAnswerWords.end()) words.Fail(kExpected, word);
  DialogAnswer answer{static_cast<DialogAnswer::Word>(found - kAnswerWords.begin())};
  if (word == "text") answer.text = words.Quoted("a quoted text");
  if (word == "file") answer.text = words.Quoted("a quoted path");
  return answer;
}

// The characters of the text stand for the bytes of the same numbers.
std::string BytesOf(std::string_view utf8) {
  std::string bytes;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    if (lead >= 0xC2 && lead <= 0xC3 && i + 1 < utf8.size()) {
      bytes += static_cast<char>((lead & 3U) << 6 | (static_cast<unsigned char>(utf8[++i]) & 0x3FU));
    } else {
      bytes += utf8[i];
    }
  }
  return bytes;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
  }

  SessionJournal Read() {
    while (!rest_.empty()) {
      const std::size_t end = rest_.find('\n');
      const bool whole = end != std::string_view::npos;
      std::string_view line = rest_.substr(0, end);
      rest_.remove_prefix(whole ? end + 1 : rest_.size());
      if (whole && line.ends_with('\r')) line.remove_suffix(1);
      ++line_;
      if (whole) {
        ReadLine(line);
      } else {
        ReadUnfinished(line);
      }
    }
    if (!begun_) Words("", std::max(line_, 1)).Fail(FirstLine(), {});
    return std::move(journal_);
  }

 private:
  static std::string FirstLine() { return "\"" + std::string(kJournalFirstLine) + "\""; }

  // Whoever writes a journal by hand may forget the last line feed; a recording that was cut off ends
  // anywhere. Only what cannot be the beginning of a longer record is taken.
  void ReadUnfinished(std::string_view line) {
    const SessionJournal before = journal_;
    try {
      ReadLine(line);
      if (line.ends_with('"') || line.ends_with(')') || !lastMayGoOn_) return;
    } catch (const UnreadableJournal&) {
      if (!begun_) throw;
    }
    journal_ = before;
    journal_.cutOff = true;
  }

  void ReadLine(std::string_view line) {
    Words words(line, line_);
    if (!begun_) {
      if (line != kJournalFirstLine) words.Fail(FirstLine(), line);
      begun_ = true;
      return;
    }
    if (line.starts_with('#')) return ReadComment(line);
    if (words.AtEnd()) return;
    if (journal_.hasEnd) words.Fail("nothing after the end", line);
    const int ms = words.Number(0, kLastJournalMs, "a time in whole milliseconds");
    if (ms < lastMs_) {
      words.Fail("a time not before " + std::to_string(lastMs_) + " ms", std::to_string(ms));
    }
    lastMs_ = ms;
    ReadRecord(words);
    words.End();
  }

  // The console keeps project files in comments; anything else that begins like one is a comment.
  void ReadComment(std::string_view line) {
    lastMayGoOn_ = true;
    std::string_view mark;
    for (const auto kept : {kProjectComment, kContentComment, kSameComment, kStoppedComment}) {
      if (line.starts_with(kept)) mark = kept;
    }
    Words words(line.substr(mark.size()), line_);
    try {
      if (mark == kProjectComment) {
        journal_.projects.push_back({words.Quoted("a path"), {}});
      } else if (mark == kContentComment && !journal_.projects.empty()) {
        journal_.projects.back().bytes += BytesOf(words.Quoted("a line"));
      } else if (mark == kSameComment) {
        const std::string path = words.Quoted("a path");
        journal_.sameFiles[path] = words.Quoted("a path");
      } else if (mark == kStoppedComment) {
        journal_.stoppedMs = words.Number(lastMs_, kLastJournalMs, "a time");
      }
    } catch (const UnreadableJournal&) {
    }
  }

  void ReadRecord(Words& words) {
    const std::string_view verb = words.Word("a verb");
    lastMayGoOn_ = true;
    if (!started_) {
      if (verb != "start" || lastMs_ != 0) words.Fail("\"0 start\" with the date and time first", verb);
      started_ = true;
      journal_.start = ReadMoment(words);
    } else if (verb == "start") {
      words.Fail("\"start\" only once", verb);
    } else if (verb == "timers") {
      ReadTimers(words);
    } else if (verb == "setting") {
      if (loaded_) words.Fail("\"setting\" before \"load\"", verb);
      journal_.settings.push_back(
          {words.WordOrQuoted("a section"), words.WordOrQuoted("a key"), words.Quoted("a quoted value")});
    } else {
      JournalRecord record;
      record.ms = lastMs_;
      record.line = line_;
      ReadArguments(verb, words, record);
      journal_.records.push_back(std::move(record));
    }
  }

  void ReadTimers(Words& words) {
    if (timersGiven_ || loaded_) words.Fail("\"timers\" once, before \"load\"", "timers");
    timersGiven_ = true;
    const std::string_view mode = words.Word("virtual or recorded");
    if (mode != "virtual" && mode != "recorded") words.Fail("virtual or recorded", mode);
    journal_.timersRecorded = mode == "recorded";
    lastMayGoOn_ = false;
  }

  void ReadArguments(std::string_view verb, Words& words, JournalRecord& record) {
    if (verb == "answer") {
      record.kind = Kind::Answer;
      record.answer = ReadAnswer(words);
      lastMayGoOn_ = false;
    } else if (verb == "busy") {
      record.kind = Kind::Busy;
      record.port = words.Number(1, kLastPort, "a port number from 1 to 31");
      record.event.number = words.Number(0, kLastJournalMs, "an error number");
      record.event.text = words.Quoted("a quoted error text");
    } else if (verb == "held" || verb == "free") {
      record.kind = Kind::Held;
      record.held = verb == "held";
      record.event.text = words.Quoted("a quoted path");
    } else if (verb == "clock") {
      record.kind = Kind::Clock;
      record.moment = ReadMoment(words);
    } else if (verb == "tx") {
      record.kind = Kind::Sent;
      record.event.bytes = words.Bytes();
    } else if (verb == "end") {
      record.kind = Kind::End;
      lastMayGoOn_ = false;
      journal_.hasEnd = true;
    } else {
      ReadEvent(verb, words, record.event);
    }
  }

  void ReadEvent(std::string_view verb, Words& words, Event& event) {
    const auto found = std::find(kEventVerbs.begin(), kEventVerbs.end(), verb);
    if (found == kEventVerbs.end()) words.Fail("a known verb", verb);
    event.kind = static_cast<EventKind>(found - kEventVerbs.begin());
    if (!loaded_ && event.kind != EventKind::Ports && event.kind != EventKind::Load) {
      words.Fail("\"load\" before anything happens", verb);
    }
    switch (event.kind) {
      case EventKind::Load:
        if (std::exchange(loaded_, true)) words.Fail("\"load\" only once", verb);
        lastMayGoOn_ = false;
        return;
      case EventKind::Quit:
        lastMayGoOn_ = false;
        return;
      case EventKind::Bytes:
        event.bytes = words.Bytes();
        return;
      case EventKind::LineError:
        event.number = words.Number(kFirstLineError, 65535, "a line error from 1000 up");
        return;
      case EventKind::Ports:
        event.numbers = ReadPorts(words);
        return;
      case EventKind::Key:
        event.text = ReadKey(words);
        lastMayGoOn_ = event.text == "F1";
        return;
      case EventKind::Activate:
      case EventKind::Close:
      case EventKind::Resize:
        event.target = ReadForm(words);
        return;
      default:
        ReadControlEvent(words, event);
    }
  }

  void ReadControlEvent(Words& words, Event& event) {
    event.target = ReadControl(words);
    if (event.kind == EventKind::Type) event.text = words.Quoted("a quoted text");
    if (event.kind == EventKind::Choose) {
      event.number = words.Number(0, 32767, "the number of a list entry, from 0");
    }
    if (event.kind == EventKind::Timer && !journal_.timersRecorded) {
      words.Fail("timer records only after \"timers recorded\"", "timer");
    }
  }

  std::string_view rest_;
  int line_ = 0;
  SessionJournal journal_;
  int lastMs_ = 0;
  bool begun_ = false;
  bool started_ = false;
  bool timersGiven_ = false;
  bool loaded_ = false;
  bool lastMayGoOn_ = true;  // the record read last could be the beginning of a longer one
};

}  // namespace

SessionJournal ReadJournal(std::string_view text) {
  return Reader(text).Read();
}

}  // namespace quorvane
