#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The number at the start of a text, 0 when there is none: blanks and tabs before it are skipped, it may have
// a sign, a "." (in every locale) and an exponent, and ends at the first character that is not part of it.
double LeadingNumber(std::string_view text);

// The same rounded to a whole number, halves to the even neighbour; OverflowError when it does not fit.
std::int16_t LeadingInteger(std::string_view text);
std::int32_t LeadingLong(std::string_view text);

// numerator / denominator (> 0) with the given number of decimals, at least one digit before the point;
// rounds the exact value, halves away from zero. A result that rounds to zero has no sign.
std::string FormatRatio(std::int64_t numerator, std::int64_t denominator, int decimals);

std::string FormatSeconds(std::int32_t ms);  // with two decimals, "nt" (no time) below 1 ms
std::string FormatTenths(std::int32_t ms);   // seconds with one decimal, for running times

// A text of seconds above 60 as minutes, ":" and seconds with two decimals; any other text as it is.
std::string FormatMinutes(const std::string& text);

// "a,b,,c" split at the separator; an empty text has no fields.
std::vector<std::string> Split(std::string_view text, char separator);
std::string Join(const std::vector<std::string>& fields, char separator);

// Without the characters `blanks` at both ends.
std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t");

// Every `from` (not empty) as `to`.
std::string Replaced(std::string_view text, std::string_view from, std::string_view to);

// Letter case is that of the ASCII letters only.
std::string LowerCase(std::string_view text);
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void AppendUtf8(std::string& text, char32_t code);

// The text of a file's bytes, as UTF-8. What is not UTF-8 is taken as Windows-1252, the code page of the
// programs that wrote such files before.
std::string TextFromBytes(std::string_view bytes);

// The first `count` characters (code points) of a UTF-8 text.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

// A path whose name is given in UTF-8, as everywhere in the program.
std::filesystem::path PathOf(std::string_view utf8);
std::string Utf8Of(const std::filesystem::path& path);

// JSON: a string with its quotes. By hand, because the journal carries texts of any bytes, which a library
// refuses unless they are UTF-8. `asAscii`: every byte above 126 is written as the character of its number.
std::string JsonString(std::string_view text, bool asAscii = false);

}  // namespace quorvane
