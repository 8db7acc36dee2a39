#include "base/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "base/checked.h"

namespace quorvane {
namespace {

constexpr char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The number of bytes of the well-formed UTF-8 character at the start of `text`, 0 if there is none.
// Surrogates, overlong forms and values above U+10FFFF are not well formed.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  const unsigned second = byte(1);
  const bool bad = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                   (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
  return bad ? 0 : length;
}

bool IsAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

bool IsUtf8(std::string_view text) {
  if (std::ranges::all_of(text, IsAscii)) return true;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

// Where Windows-1252 differs from Latin-1; its five unused places stand for the control characters.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

double LeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  // from_chars would also take "inf", "nan" and a second sign.
  if (text.empty() || (text[0] != '.' && (text[0] < '0' || text[0] > '9'))) return 0.0;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    // Too small reads as 0, too large as a number that fits no whole-number type.
    value = std::find(text.data(), end, '-') != end ? 0.0 : HUGE_VAL;
  }
  return negative ? -value : value;
}

std::int16_t LeadingInteger(std::string_view text) {
  return RoundTo<std::int16_t>(LeadingNumber(text));
}
std::int32_t LeadingLong(std::string_view text) {
  return RoundTo<std::int32_t>(LeadingNumber(text));
}

std::string FormatRatio(std::int64_t numerator, std::int64_t denominator, int decimals) {
  std::int64_t scale = 1;
  for (int i = 0; i < decimals; ++i) scale *= 10;
  const std::int64_t magnitude = std::abs(numerator);
  const std::int64_t rest = (magnitude % denominator * scale * 2 + denominator) / (denominator * 2);
  const std::int64_t scaled = magnitude / denominator * scale + rest;
  const char* sign = numerator < 0 && scaled != 0 ? "-" : "";
  if (decimals == 0) return fmt::format("{}{}", sign, scaled);
  return fmt::format("{}{}.{:0{}}", sign, scaled / scale, scaled % scale, decimals);
}

std::string FormatSeconds(std::int32_t ms) {
  return ms >= 1 ? FormatRatio(ms, 1000, 2) : "nt";
}

std::string FormatTenths(std::int32_t ms) {
  return FormatRatio(ms, 1000, 1);
}

std::string FormatMinutes(const std::string& text) {
  const double ms = LeadingNumber(text) * 1000.0;
  if (!(ms > 60000.0) || ms > 9.0e15) return text;
  const auto minutes = static_cast<std::int64_t>(std::floor(ms / 60000.0));
  const std::int64_t rest = static_cast<std::int64_t>(std::nearbyint(ms)) % 60000;
  const std::string seconds = FormatRatio(rest, 1000, 2);
  return std::to_string(minutes) + ":" + (rest < 10000 && seconds.size() < 5 ? "0" : "") + seconds;
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> fields;
  if (text.empty()) return fields;
  for (;;) {
    const std::size_t at = text.find(separator);
    fields.emplace_back(text.substr(0, at));
    if (at == std::string_view::npos) return fields;
    text.remove_prefix(at + 1);
  }
}

std::string Join(const std::vector<std::string>& fields, char separator) {
  return fmt::format("{}", fmt::join(fields, std::string_view(&separator, 1)));
}

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string Replaced(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, done)) {
    result.append(text.substr(done, at - done)).append(to);
    done = at + from.size();
  }
  return result.append(text.substr(done));
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = Lower(c);
  return lower;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Lower, Lower);
}

void AppendUtf8(std::string& text, char32_t code) {
  const auto byte = [&](char32_t value) { text += static_cast<char>(value & 0xFFU); };
  if (code < 0x80) return byte(code);
  const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;  // bytes after the first
  byte(0xFF00U >> (more + 1) | code >> 6 * more);              // begins with a one for each byte
  for (int i = more - 1; i >= 0; --i) byte(0x80U | (code >> 6 * i & 0x3FU));
}

std::string TextFromBytes(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte <= 0x9F ? kWindows1252[byte - 0x80] : byte);
  }
  return text;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  std::size_t end = 0;
  for (; end < text.size() && count > 0; --count) {
    end += std::max<std::size_t>(CharacterLength(text.substr(end)), 1);
  }
  return text.substr(0, end);
}

std::filesystem::path PathOf(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

std::string Utf8Of(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string JsonString(std::string_view text, bool asAscii) {
  constexpr std::string_view kMarked = "\"\\\n\r\t";
  constexpr std::string_view kMarks = "\"\\nrt";
  std::string json = "\"";
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (const std::size_t at = kMarked.find(c); at != std::string_view::npos) {
      json += '\\';
      json += kMarks[at];
    } else if (code < 0x20 || (asAscii && code > 126)) {
      json += fmt::format("\\u{:04X}", code);
    } else {
      json += c;
    }
  }
  return json + "\"";
}

}  // namespace quorvane
