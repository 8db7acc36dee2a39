#include "journal/journal_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <set>
#include <utility>

#include "base/text.h"

namespace quorvane {
namespace {

using Kind = JournalRecord::Kind;

// A hexadecimal number of exactly these digits, none for anything else.
std::optional<unsigned> HexNumber(std::string_view digits, std::size_t count) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  const bool whole = error == std::errc() && end == digits.data() + digits.size() && digits.size() == count;
  return whole ? std::optional(value) : std::nullopt;
}

// The words of one line, from the left. What does not fit throws UnreadableJournal with what was expected.
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

  std::string Word(const char* expected, const auto& fits) {
    const std::string_view word = Word(expected);
    if (!fits(word)) Fail(expected, word);
    return std::string(word);
  }

  int Number(int lowest, int highest, const char* expected) {
    const std::string_view word = Word(expected);
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = error == std::errc() && end == word.data() + word.size();
    if (!whole || value < lowest || value > highest) Fail(expected, word);
    return value;
  }

  LocalDateTime Moment(const char* expected) {
    LocalDateTime at;
    Word(expected, [&](std::string_view word) {
      int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
      std::sscanf(std::string(word).c_str(), "%4d-%2d-%2dT%2d:%2d:%2d", &year, &month, &day, &hour, &minute,
                  &second);
      at = MomentOf(year, month, day, hour, minute, second);
      return year >= 1900 && MomentText(at) == word;
    });
    return at;
  }

  std::vector<std::uint8_t> Bytes(const char* expected) {
    const std::string_view word = Word(expected);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(word.size() / 2);
    for (std::size_t i = 0; i < word.size(); i += 2) {
      const auto byte = HexNumber(word.substr(i, 2), 2);
      if (!byte) Fail(expected, word);
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

// By DialogAnswer::Word; after "text" and "file" it follows, quoted.
constexpr std::array<std::string_view, 6> kAnswerWords = {"ok", "cancel", "yes", "no", "text", "file"};

DialogAnswer ReadAnswer(Words& words, const char* expected) {
  const auto* found = kAnswerWords.end();
  words.Word(expected, [&](std::string_view word) {
    found = std::ranges::find(kAnswerWords, word);
    return found != kAnswerWords.end();
  });
  DialogAnswer answer{static_cast<DialogAnswer::Word>(found - kAnswerWords.begin())};
  if (answer.word == DialogAnswer::Word::Text) answer.text = words.Quoted("a quoted text");
  if (answer.word == DialogAnswer::Word::File) answer.text = words.Quoted("a quoted path");
  return answer;
}

// A word as it stands when it is one, otherwise quoted.
std::string WordOrQuoted(const std::string& text) {
  const bool plain = !text.empty() && text.find_first_of(" \t\r\n\"\\") == std::string::npos;
  return plain ? text : JsonString(text);
}

using Record = JournalRecord;

// How one argument of a record is written, and read.
struct Argument {
  const char* expected;
  std::string (*write)(const Record& record);
  void (*read)(Words& words, const char* expected, Record& record);
};

std::string Target(const Record& record) {
  return record.event.target;
}
template <bool (*kFits)(std::string_view)>
void ReadTarget(Words& words, const char* expected, Record& record) {
  record.event.target = words.Word(expected, kFits);
}
// With a control's name behind its dot. Whether there is such a control, the program has to say.
bool IsControl(std::string_view name) {
  return name.find('.') > 0 && name.find('.') < name.size() - 1;
}
bool IsForm(std::string_view name) {
  return name.find('.') == std::string_view::npos;
}
constexpr Argument kControl{"a control like frmJudge.cmdStart", Target, ReadTarget<IsControl>};
constexpr Argument kForm{"a form like frmJudge", Target, ReadTarget<IsForm>};

std::string Text(const Record& record) {
  return JsonString(record.event.text);
}
void ReadText(Words& words, const char* expected, Record& record) {
  record.event.text = words.Quoted(expected);
}
constexpr Argument kText{"a quoted text", Text, ReadText};
constexpr Argument kErrorText{"a quoted error text", Text, ReadText};
constexpr Argument kPath{"a quoted path", Text, ReadText};

std::string Number(const Record& record) {
  return std::to_string(record.event.number);
}
template <int kLowest, int kHighest>
void ReadNumber(Words& words, const char* expected, Record& record) {
  record.event.number = words.Number(kLowest, kHighest, expected);
}
constexpr Argument kEntry{"the number of a list entry, from 0", Number, ReadNumber<0, 32767>};
constexpr Argument kLineError{"a line error from 1000 up", Number, ReadNumber<1000, 65535>};
constexpr Argument kError{"an error number", Number, ReadNumber<0, kLastJournalMs>};

constexpr int kLastPort = 31;
constexpr Argument kPort{"a port number from 1 to 31",
                         [](const Record& record) { return std::to_string(record.port); },
                         [](Words& words, const char* expected, Record& record) {
                           record.port = words.Number(1, kLastPort, expected);
                         }};
constexpr Argument kFieldPort{"a port number from 1 to 31, or 0", Number, ReadNumber<0, kLastPort>};
constexpr Argument kPorts{
    "port numbers from 1 to 31",
    [](const Record& record) { return fmt::format("{}", fmt::join(record.event.numbers, " ")); },
    [](Words& words, const char* expected, Record& record) {
      std::set<int> ports;
      while (!words.AtEnd()) ports.insert(words.Number(1, kLastPort, expected));
      record.event.numbers.assign(ports.begin(), ports.end());
    }};
constexpr Argument kKey{
    "a key: F1 to F12, 7, 8, 9 or 0", [](const Record& record) { return record.event.text; },
    [](Words& words, const char* expected, Record& record) {
      const auto known = [](std::string_view key) { return std::ranges::count(kKeyNames, key) > 0; };
      record.event.text = words.Word(expected, known);
    }};
constexpr Argument kBytes{
    "bytes as pairs of hexadecimal digits",
    [](const Record& record) { return fmt::format("{:02X}", fmt::join(record.event.bytes, "")); },
    [](Words& words, const char* expected, Record& record) { record.event.bytes = words.Bytes(expected); }};
constexpr Argument kMoment{
    "a date and time like 2026-11-21T09:00:00",
    [](const Record& record) { return MomentText(record.moment); },
    [](Words& words, const char* expected, Record& record) { record.moment = words.Moment(expected); }};
template <std::int64_t ComputerTime::*kField>
constexpr Argument kClockMs{"a clock in whole milliseconds",
                            [](const Record& record) { return std::to_string(record.computer.*kField); },
                            [](Words& words, const char* expected, Record& record) {
                              words.Word(expected, [&](std::string_view word) {
                                const char* const last = word.data() + word.size();
                                const auto [end, error] =
                                    std::from_chars(word.data(), last, record.computer.*kField);
                                return error == std::errc() && end == last;
                              });
                            }};
constexpr Argument kBoot{"a quoted name of the computer's run",
                         [](const Record& record) { return JsonString(record.computer.boot); },
                         [](Words& words, const char* expected, Record& record) {
                           record.computer.boot = words.Quoted(expected);
                         }};
constexpr Argument kAnswer{
    "yes, no, cancel, ok, text \"...\" or file \"...\"",
    [](const Record& record) { return AnswerText(record.answer); },
    [](Words& words, const char* expected, Record& record) { record.answer = ReadAnswer(words, expected); }};

struct Verb {
  std::string_view name;
  Kind kind;
  EventKind event = EventKind::Load;  // of an Input
  std::vector<Argument> arguments = {};
  bool closed = false;  // it could not go on, so its line is taken without a line feed; of keys, F1 could
};

const Verb kVerbs[] = {
    {"load", Kind::Input, EventKind::Load, {}, true},
    {"click", Kind::Input, EventKind::Click, {kControl}},
    {"type", Kind::Input, EventKind::Type, {kControl, kText}},
    {"choose", Kind::Input, EventKind::Choose, {kControl, kEntry}},
    {"hover", Kind::Input, EventKind::Hover, {kControl}},
    {"key", Kind::Input, EventKind::Key, {kKey}, true},
    {"activate", Kind::Input, EventKind::Activate, {kForm}},
    {"close", Kind::Input, EventKind::Close, {kForm}},
    {"resize", Kind::Input, EventKind::Resize, {kForm}},
    {"rx", Kind::Input, EventKind::Bytes, {kBytes}},
    {"line", Kind::Input, EventKind::LineError, {kLineError}},
    {"ports", Kind::Input, EventKind::Ports, {kPorts}},
    {"field", Kind::Input, EventKind::Field, {kFieldPort, kErrorText}},
    {"quit", Kind::Input, EventKind::Quit, {}, true},
    {"timer", Kind::Input, EventKind::Timer, {kControl}},
    {"answer", Kind::Answer, {}, {kAnswer}, true},
    {"busy", Kind::Busy, {}, {kPort, kError, kErrorText}},
    {"held", Kind::Held, {}, {kPath}},
    {"free", Kind::Free, {}, {kPath}},
    {"clock", Kind::Clock, {}, {kMoment}},
    {"computer",
     Kind::Computer,
     {},
     {kClockMs<&ComputerTime::utcMs>, kBoot, kClockMs<&ComputerTime::sinceBootMs>}},
    {"tx", Kind::Sent, {}, {kBytes}},
    {"end", Kind::End, {}, {}, true},
};

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
    if (line_ == 0) Words("", 1).Fail(FirstLine(), {});
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
      if (line_ == 1) throw;
    }
    journal_ = before;
    journal_.cutOff = true;
  }

  void ReadLine(std::string_view line) {
    Words words(line, line_);
    if (line_ == 1) {
      if (line != kJournalFirstLine) words.Fail(FirstLine(), line);
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
        journal_.projects.push_back({words.Quoted(""), {}});
      } else if (mark == kContentComment && !journal_.projects.empty()) {
        journal_.projects.back().bytes += BytesOf(words.Quoted(""));
      } else if (mark == kSameComment) {
        const std::string path = words.Quoted("");
        journal_.sameFiles[path] = words.Quoted("");
      } else if (mark == kStoppedComment) {
        journal_.stoppedMs = words.Number(lastMs_, kLastJournalMs, "");
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
      journal_.start = words.Moment(kMoment.expected);
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
    const auto known = [](std::string_view mode) { return mode == "virtual" || mode == "recorded"; };
    journal_.timersRecorded = words.Word("virtual or recorded", known) == "recorded";
    lastMayGoOn_ = false;
  }

  void ReadArguments(std::string_view name, Words& words, JournalRecord& record) {
    const auto* verb = std::ranges::find(kVerbs, name, &Verb::name);
    if (verb == std::end(kVerbs)) words.Fail("a known verb", name);
    record.kind = verb->kind;
    record.event.kind = verb->event;
    const bool early = verb->kind != Kind::Input || verb->event == EventKind::Ports || name == "load";
    if (!loaded_ && !early) words.Fail("\"load\" before anything happens", name);
    if (name == "load" && std::exchange(loaded_, true)) words.Fail("\"load\" only once", name);
    for (const Argument& argument : verb->arguments) argument.read(words, argument.expected, record);
    if (name == "timer" && !journal_.timersRecorded) {
      words.Fail("timer records only after \"timers recorded\"", name);
    }
    journal_.hasEnd = verb->kind == Kind::End;
    lastMayGoOn_ = !verb->closed || record.event.text == "F1";
  }

  std::string_view rest_;
  int line_ = 0;
  SessionJournal journal_;
  int lastMs_ = 0;
  bool started_ = false;
  bool timersGiven_ = false;
  bool loaded_ = false;
  bool lastMayGoOn_ = true;  // the record read last could be the beginning of a longer one
};

}  // namespace

SessionJournal ReadJournal(std::string_view text) {
  return Reader(text).Read();
}

std::string StartRecords(const LocalDateTime& start, bool timersRecorded) {
  return fmt::format("{}\n0 start {}\n0 timers {}\n", kJournalFirstLine, MomentText(start),
                     timersRecorded ? "recorded" : "virtual");
}

std::string SettingRecord(const JournalSetting& setting) {
  return fmt::format("0 setting {} {} {}\n", WordOrQuoted(setting.section), WordOrQuoted(setting.key),
                     JsonString(setting.value));
}

std::string RecordText(const JournalRecord& record) {
  const auto* verb = std::ranges::find_if(kVerbs, [&](const Verb& known) {
    return known.kind == record.kind && (known.kind != Kind::Input || known.event == record.event.kind);
  });
  std::string text = fmt::format("{} {}", record.ms, verb->name);
  for (const Argument& argument : verb->arguments) {
    const std::string written = argument.write(record);
    text += (written.empty() ? "" : " ") + written;
  }
  return text + "\n";
}

std::string AnswerText(const DialogAnswer& answer) {
  const std::string word(kAnswerWords[static_cast<std::size_t>(answer.word)]);
  return answer.word < DialogAnswer::Word::Text ? word : word + " " + JsonString(answer.text);
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

}  // namespace quorvane
