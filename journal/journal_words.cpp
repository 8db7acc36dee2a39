#include "journal/journal_words.h"

#include <charconv>

#include "journal/journal_reader.h"

namespace quorvane {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& text, char32_t code) {
  const auto byte = [&](char32_t value) { text += static_cast<char>(static_cast<unsigned char>(value)); };
  if (code < 0x80) {
    byte(code);
  } else if (code < 0x800) {
    byte(0xC0 | code >> 6);
    byte(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    byte(0xE0 | code >> 12);
    byte(0x80 | (code >> 6 & 0x3F));
    byte(0x80 | (code & 0x3F));
  } else {
    byte(0xF0 | code >> 18);
    byte(0x80 | (code >> 12 & 0x3F));
    byte(0x80 | (code >> 6 & 0x3F));
    byte(0x80 | (code & 0x3F));
  }
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

}  // namespace

// Quotes a short piece of what was found; the message has to stay one line.
void JournalWords::Fail(const std::string& expected, std::string_view found) const {
  std::string shown;
  for (const char c : found.substr(0, 40)) {
    const auto code = static_cast<unsigned char>(c);
    shown += code < 0x20 || code == 0x7F ? '?' : c;
  }
  throw UnreadableJournal(
      line_, "expected " + expected + (found.empty() ? ", found nothing" : ", found \"" + shown + "\""));
}

void JournalWords::SkipBlanks() {
  while (!rest_.empty() && IsBlank(rest_.front())) rest_.remove_prefix(1);
}

bool JournalWords::AtEnd() {
  SkipBlanks();
  return rest_.empty();
}

void JournalWords::End() {
  if (!AtEnd()) Fail("the end of the line", rest_);
}

std::string_view JournalWords::Word(const char* expected) {
  if (AtEnd()) Fail(expected, {});
  const std::string_view word = rest_.substr(0, rest_.find_first_of(" \t"));
  rest_.remove_prefix(word.size());
  return word;
}

std::int64_t JournalWords::Number(std::int64_t lowest, std::int64_t highest, const char* expected) {
  const std::string_view word = Word(expected);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size() || value < lowest || value > highest) {
    Fail(expected, word);
  }
  return value;
}

std::vector<std::uint8_t> JournalWords::Hex() {
  constexpr const char* kExpected = "bytes as pairs of hexadecimal digits";
  const std::string_view word = Word(kExpected);
  if (word.size() % 2 != 0) Fail(kExpected, word);
  std::vector<std::uint8_t> bytes;
  bytes.reserve(word.size() / 2);
  for (std::size_t i = 0; i < word.size(); i += 2) {
    const int high = HexValue(word[i]);
    const int low = HexValue(word[i + 1]);
    if (high < 0 || low < 0) Fail(kExpected, word);
    bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
  }
  return bytes;
}

std::string JournalWords::WordOrQuoted(const char* expected) {
  if (!AtEnd() && rest_.front() == '"') return Quoted(expected);
  return std::string(Word(expected));
}

char JournalWords::Next(const char* expected) {
  if (rest_.empty()) Fail(expected, {});
  const char c = rest_.front();
  rest_.remove_prefix(1);
  return c;
}

std::string JournalWords::Quoted(const char* expected) {
  if (AtEnd() || rest_.front() != '"') Fail(expected, rest_);
  rest_.remove_prefix(1);
  std::string text;
  for (;;) {
    const char c = Next("a closing quote");
    if (c == '"') break;
    if (static_cast<unsigned char>(c) < 0x20) Fail("control characters written as escapes", rest_);
    if (c == '\\') {
      Escape(text);
    } else {
      text += c;
    }
  }
  if (!rest_.empty() && !IsBlank(rest_.front())) Fail("a blank after the quote", rest_);
  return text;
}

void JournalWords::Escape(std::string& text) {
  constexpr std::string_view kNames = "\"\\/bfnrt";
  constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
  constexpr const char* kExpected = R"(one of "\/bfnrtu after a backslash)";
  const char c = Next(kExpected);
  if (c == 'u') {
    AppendUtf8(text, CodePoint());
    return;
  }
  const std::size_t at = kNames.find(c);
  if (at == std::string_view::npos) Fail(kExpected, std::string_view(&c, 1));
  text += kMeanings[at];
}

unsigned JournalWords::Unit() {
  constexpr const char* kExpected = "four hexadecimal digits after \\u";
  unsigned unit = 0;
  for (int i = 0; i < 4; ++i) {
    const char c = Next(kExpected);
    if (HexValue(c) < 0) Fail(kExpected, std::string_view(&c, 1));
    unit = unit * 16 + static_cast<unsigned>(HexValue(c));
  }
  return unit;
}

// A character outside the first 65536 comes as two escapes. Half of such a pair is no character.
char32_t JournalWords::CodePoint() {
  const unsigned first = Unit();
  if (first < 0xD800 || first > 0xDFFF) return first;
  if (first > 0xDBFF || !rest_.starts_with("\\u")) return kReplacement;
  const std::string_view before = rest_;
  rest_.remove_prefix(2);
  const unsigned second = Unit();
  if (second < 0xDC00 || second > 0xDFFF) {
    rest_ = before;
    return kReplacement;
  }
  return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

}  // namespace quorvane
