#include "base/text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "base/checked.h"

namespace quorvane {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// The length of the number that starts at the beginning of the text, 0 when there is none.
std::size_t NumberLength(std::string_view text) {
  const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  std::size_t end = SkipDigits(text, sign);
  std::size_t digits = end - sign;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = SkipDigits(text, end + 1);
    digits += fraction - end - 1;
    end = fraction;
  }
  if (digits == 0) return 0;
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    std::size_t exponent = end + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const std::size_t exponentEnd = SkipDigits(text, exponent);
    if (exponentEnd > exponent) end = exponentEnd;
  }
  return end;
}

char HexDigit(unsigned value) {
  return "0123456789ABCDEF"[value & 15U];
}

}  // namespace

double LeadingNumber(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return 0.0;
  text.remove_prefix(start);
  text = text.substr(0, NumberLength(text));
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return 0.0;
  double value = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too small reads as 0, too large as a number that fits no whole-number type.
    const bool tiny = text.find('-', 1) != std::string_view::npos;
    return tiny ? 0.0 : std::copysign(HUGE_VAL, text.front() == '-' ? -1.0 : 1.0);
  }
  return value;
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
  const bool negative = numerator < 0;
  const std::int64_t magnitude = negative ? -numerator : numerator;
  const std::int64_t whole = magnitude / denominator;
  const std::int64_t rest = (magnitude % denominator * scale * 2 + denominator) / (denominator * 2);
  const std::int64_t scaled = whole * scale + rest;
  std::string text = std::to_string(scaled / scale);
  if (decimals > 0) {
    std::string fraction = std::to_string(scaled % scale);
    fraction.insert(0, static_cast<std::size_t>(decimals) - fraction.size(), '0');
    text += "." + fraction;
  }
  return negative && scaled != 0 ? "-" + text : text;
}

std::string Hex(std::uint8_t value) {
  return value < 16 ? std::string(1, HexDigit(value)) : std::string{HexDigit(value / 16U), HexDigit(value)};
}

std::string Hex2(std::uint8_t value) {
  return (value < 16 ? "0" : "") + Hex(value);
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
  std::string text;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) text += separator;
    text += fields[i];
  }
  return text;
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

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

std::filesystem::path PathOf(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

std::string JsonString(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (c == '\n') {
      json += "\\n";
    } else if (c == '\r') {
      json += "\\r";
    } else if (c == '\t') {
      json += "\\t";
    } else if (code < 0x20) {
      json += "\\u00" + Hex2(code);
    } else {
      json += c;
    }
  }
  return json + "\"";
}

}  // namespace quorvane
