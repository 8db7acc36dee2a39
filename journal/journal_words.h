#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The words of one journal line, taken off one by one from the left. What does not fit throws
// UnreadableJournal with what was expected.
class JournalWords {
 public:
  JournalWords(std::string_view text, int line) : rest_(text), line_(line) {}

  bool AtEnd();  // nothing but blanks is left
  std::string_view Word(const char* expected);
  std::int64_t Number(std::int64_t lowest, std::int64_t highest, const char* expected);
  std::vector<std::uint8_t> Hex();
  std::string Quoted(const char* expected);  // a JSON string
  std::string WordOrQuoted(const char* expected);
  void End();  // nothing may follow

  [[noreturn]] void Fail(const std::string& expected, std::string_view found) const;

 private:
  void SkipBlanks();
  char Next(const char* expected);
  void Escape(std::string& text);
  unsigned Unit();
  char32_t CodePoint();

  std::string_view rest_;
  int line_;
};

}  // namespace quorvane
