#include "journal/journal_reader.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

#include "journal/journal_text.h"
#include "journal/journal_words.h"

namespace quorvane {
namespace {

using Kind = JournalRecord::Kind;

constexpr int kLastPort = 31;
constexpr int kFirstLineError = 1000;

// "2026-11-21T09:00:00"
LocalDateTime ReadMoment(JournalWords& words) {
  constexpr const char* kExpected = "a date and time like 2026-11-21T09:00:00";
  const std::string_view word = words.Word(kExpected);
  constexpr std::string_view kPattern = "dddd-dd-ddTdd:dd:dd";
  bool fits = word.size() == kPattern.size();
  for (std::size_t i = 0; fits && i < word.size(); ++i) {
    fits = kPattern[i] == 'd' ? word[i] >= '0' && word[i] <= '9' : word[i] == kPattern[i];
  }
  if (!fits) words.Fail(kExpected, word);
  const auto number = [&](std::size_t at, std::size_t digits) {
    int value = 0;
    std::from_chars(word.data() + at, word.data() + at + digits, value);
    return value;
  };
  const LocalDateTime moment{number(0, 4),  number(5, 2),  number(8, 2),
                             number(11, 2), number(14, 2), number(17, 2)};
  const bool valid = moment.year >= 1900 && moment.month >= 1 && moment.month <= 12 && moment.day >= 1 &&
                     moment.day <= 31 && AddMilliseconds(moment, 0) == moment;
  if (!valid) words.Fail(kExpected, word);
  return moment;
}

std::string ReadKey(JournalWords& words) {
  static constexpr std::string_view kKeys[] = {"F1", "F2",  "F3",  "F4",  "F5", "F6", "F7", "F8",
                                               "F9", "F10", "F11", "F12", "7",  "8",  "9",  "0"};
  constexpr const char* kExpected = "a key: F1 to F12, 7, 8, 9 or 0";
  const std::string_view key = words.Word(kExpected);
  if (std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys)) words.Fail(kExpected, key);
  return std::string(key);
}

// A form's name, dot, a control's name, perhaps with an index. Whether there is such a control, the program
// has to say.
std::string ReadControl(JournalWords& words) {
  constexpr const char* kExpected = "a control like frmJudge.cmdStart";
  const std::string_view name = words.Word(kExpected);
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) words.Fail(kExpected, name);
  return std::string(name);
}

std::string ReadForm(JournalWords& words) {
  constexpr const char* kExpected = "a form like frmJudge";
  const std::string_view name = words.Word(kExpected);
  if (name.find('.') != std::string_view::npos) words.Fail(kExpected, name);
  return std::string(name);
}

std::vector<int> ReadPorts(JournalWords& words) {
  std::vector<int> ports;
  while (!words.AtEnd()) {
    ports.push_back(static_cast<int>(words.Number(1, kLastPort, "port numbers from 1 to 31")));
  }
  std::sort(ports.begin(), ports.end());
  ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
  return ports;
}

DialogAnswer ReadAnswer(JournalWords& words) {
  using Word = DialogAnswer::Word;
  constexpr const char* kExpected = "yes, no, cancel, ok, text \"...\" or file \"...\"";
  const std::string_view word = words.Word(kExpected);
  if (word == "yes") return {Word::Yes, {}};
  if (word == "no") return {Word::No, {}};
  if (word == "cancel") return {Word::Cancel, {}};
  if (word == "ok") return {Word::Ok, {}};
  if (word == "text") return {Word::Text, words.Quoted("a quoted text")};
  if (word == "file") return {Word::File, words.Quoted("a quoted path")};
  words.Fail(kExpected, word);
}

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {
    if (rest_.starts_with("\xEF\xBB\xBF")) rest_.remove_prefix(3);
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
    if (!begun_) JournalWords("", std::max(line_, 1)).Fail(FirstLine(), {});
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
    JournalWords words(line, line_);
    if (!begun_) {
      if (line != kJournalFirstLine) words.Fail(FirstLine(), line);
      begun_ = true;
      return;
    }
    if (line.starts_with('#')) {
      ReadComment(line);
      return;
    }
    if (words.AtEnd()) return;
    if (journal_.hasEnd) words.Fail("nothing after the end", line);
    const std::int64_t ms = words.Number(0, kLastJournalMs, "a time in whole milliseconds");
    if (ms < lastMs_) {
      words.Fail("a time not before " + std::to_string(lastMs_) + " ms", std::to_string(ms));
    }
    lastMs_ = ms;
    ReadRecord(ms, words);
    words.End();
  }

  // The console keeps project files in comments; anything else that begins like one is a comment.
  void ReadComment(std::string_view line) {
    lastMayGoOn_ = true;
    try {
      if (line.starts_with(kProjectComment)) {
        JournalWords words(line.substr(kProjectComment.size()), line_);
        journal_.projects.push_back({words.Quoted("a path"), {}});
      } else if (line.starts_with(kContentComment) && !journal_.projects.empty()) {
        JournalWords words(line.substr(kContentComment.size()), line_);
        AppendBytes(words.Quoted("a line"), journal_.projects.back().bytes);
      } else if (line.starts_with(kSameComment)) {
        JournalWords words(line.substr(kSameComment.size()), line_);
        const std::string path = words.Quoted("a path");
        journal_.sameFiles[path] = words.Quoted("a path");
      } else if (line.starts_with(kStoppedComment)) {
        JournalWords words(line.substr(kStoppedComment.size()), line_);
        journal_.stoppedMs = words.Number(lastMs_, kLastJournalMs, "a time");
      }
    } catch (const UnreadableJournal&) {
    }
  }

  // The characters of the text stand for the bytes of the same numbers.
  static void AppendBytes(std::string_view utf8, std::string& bytes) {
    for (std::size_t i = 0; i < utf8.size(); ++i) {
      const auto lead = static_cast<unsigned char>(utf8[i]);
      if (lead >= 0xC2 && lead <= 0xC3 && i + 1 < utf8.size()) {
        const auto next = static_cast<unsigned char>(utf8[++i]);
        bytes += static_cast<char>(static_cast<unsigned char>((lead & 3U) << 6 | (next & 0x3FU)));
      } else {
        bytes += utf8[i];
      }
    }
  }

  void ReadRecord(std::int64_t ms, JournalWords& words) {
    const std::string_view verb = words.Word("a verb");
    lastMayGoOn_ = true;
    if (!started_) {
      if (verb != "start" || ms != 0) words.Fail("\"0 start\" with the date and time first", verb);
      started_ = true;
      journal_.start = ReadMoment(words);
      return;
    }
    if (ReadHeader(verb, words)) return;
    JournalRecord record;
    record.ms = ms;
    record.line = line_;
    ReadArguments(verb, words, record);
    journal_.records.push_back(std::move(record));
  }

  // Records about what the program finds at its start.
  bool ReadHeader(std::string_view verb, JournalWords& words) {
    if (verb == "start") words.Fail("\"start\" only once", verb);
    if (verb == "timers") {
      if (timersGiven_ || loaded_) words.Fail("\"timers\" once, before \"load\"", verb);
      timersGiven_ = true;
      const std::string_view mode = words.Word("virtual or recorded");
      if (mode != "virtual" && mode != "recorded") words.Fail("virtual or recorded", mode);
      journal_.timersRecorded = mode == "recorded";
      lastMayGoOn_ = false;
      return true;
    }
    if (verb == "setting") {
      if (loaded_) words.Fail("\"setting\" before \"load\"", verb);
      SessionJournal::Setting setting;
      setting.section = words.WordOrQuoted("a section");
      setting.key = words.WordOrQuoted("a key");
      setting.value = words.Quoted("a quoted value");
      journal_.settings.push_back(std::move(setting));
      return true;
    }
    return false;
  }

  void ReadArguments(std::string_view verb, JournalWords& words, JournalRecord& record) {
    if (verb == "answer") {
      record.kind = Kind::Answer;
      record.answer = ReadAnswer(words);
      lastMayGoOn_ = false;
    } else if (verb == "busy") {
      record.kind = Kind::Busy;
      record.port = static_cast<int>(words.Number(1, kLastPort, "a port number from 1 to 31"));
      record.event.number = static_cast<int>(words.Number(0, kLastJournalMs, "an error number"));
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
      record.event.bytes = words.Hex();
    } else if (verb == "end") {
      record.kind = Kind::End;
      lastMayGoOn_ = false;
      journal_.hasEnd = true;
    } else {
      ReadEvent(verb, words, record.event);
    }
  }

  void ReadEvent(std::string_view verb, JournalWords& words, Event& event) {
    static const std::map<std::string_view, EventKind> kVerbs = [] {
      std::map<std::string_view, EventKind> verbs;
      for (int kind = 0; kind <= static_cast<int>(EventKind::Timer); ++kind) {
        const auto value = static_cast<EventKind>(kind);
        if (!EventVerb(value).empty()) verbs.emplace(EventVerb(value), value);
      }
      return verbs;
    }();
    const auto found = kVerbs.find(verb);
    if (found == kVerbs.end()) words.Fail("a known verb", verb);
    event.kind = found->second;
    if (!loaded_ && event.kind != EventKind::Ports && event.kind != EventKind::Load) {
      words.Fail("\"load\" before anything happens", verb);
    }
    ReadEventArguments(words, event);
  }

  void ReadEventArguments(JournalWords& words, Event& event) {
    switch (event.kind) {
      case EventKind::Load:
        if (std::exchange(loaded_, true)) words.Fail("\"load\" only once", "load");
        lastMayGoOn_ = false;
        return;
      case EventKind::Quit:
        lastMayGoOn_ = false;
        return;
      case EventKind::Bytes:
        event.bytes = words.Hex();
        return;
      case EventKind::LineError:
        event.number = static_cast<int>(words.Number(kFirstLineError, 65535, "a line error from 1000 up"));
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

  void ReadControlEvent(JournalWords& words, Event& event) {
    event.target = ReadControl(words);
    if (event.kind == EventKind::Type) event.text = words.Quoted("a quoted text");
    if (event.kind == EventKind::Choose) {
      event.number = static_cast<int>(words.Number(0, 32767, "the number of a list entry, from 0"));
    }
    if (event.kind == EventKind::Timer && !journal_.timersRecorded) {
      words.Fail("timer records only after \"timers recorded\"", "timer");
    }
  }

  std::string_view rest_;
  int line_ = 0;
  SessionJournal journal_;
  std::int64_t lastMs_ = 0;
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
