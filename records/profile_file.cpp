#include "records/profile_file.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvane {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// CRLF, a lone LF or a lone CR at the end of a line; empty for a last line that was never ended.
std::string_view LineEndOf(std::string_view line) {
  if (line.ends_with("\r\n")) return "\r\n";
  if (line.ends_with('\n')) return "\n";
  if (line.ends_with('\r')) return "\r";
  return {};
}

// The line that starts at `begin`, with its line end.
std::string_view LineAt(std::string_view text, size_t begin) {
  size_t end = begin;
  while (end < text.size() && !IsLineEnd(text[end])) ++end;
  if (end < text.size()) end += text.substr(end).starts_with("\r\n") ? 2 : 1;
  return text.substr(begin, end - begin);
}

// The number of bytes of the well-formed UTF-8 character at the start of `text`, 0 if there is none.
// Surrogates, overlong forms and values above U+10FFFF are not well formed.
size_t CharacterLength(std::string_view text) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  const unsigned second = byte(1);
  const bool bad = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                   (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
  return bad ? 0 : length;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const size_t length = CharacterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

// Windows-1252 differs from Latin-1 in 0x80..0x9F only; its five unused places stand for the control
// characters.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, char16_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// The text as it can stand in one line: each line break becomes one blank.
std::string OneLine(std::string_view bytes) {
  std::string text = TextFromBytes(bytes);
  size_t out = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    text[out++] = IsLineEnd(text[i]) ? ' ' : text[i];
  }
  text.resize(out);
  return text;
}

// What a name is looked up by: letter case counts for nothing (ASCII letters only, as everywhere in the
// file).
std::string Folded(std::string_view name) {
  std::string text = OneLine(Trimmed(name));
  text = Trimmed(text);
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

bool HasOuterQuotes(std::string_view value) {
  return value.size() >= 2 && value.front() == value.back() &&
         (value.front() == '"' || value.front() == '\'');
}

// A value that reading would strip of something gets a pair of quotes for reading to strip instead.
std::string Quoted(const std::string& value) {
  const bool outer_blanks = Trimmed(value).size() != value.size();
  return outer_blanks || HasOuterQuotes(value) ? '"' + value + '"' : value;
}

// Where key and value stand in a line.
struct KeyLine {
  std::string_view key;
  size_t value_begin;
  size_t value_end;
};

std::optional<KeyLine> FindKey(std::string_view line) {
  const std::string_view body = line.substr(0, line.size() - LineEndOf(line).size());
  const std::string_view trimmed = Trimmed(body);
  if (trimmed.empty() || trimmed.front() == ';' || trimmed.front() == '[') return std::nullopt;
  const size_t equals = body.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  size_t begin = equals + 1;
  while (begin < body.size() && IsBlank(body[begin])) ++begin;
  const size_t end = begin + Trimmed(body.substr(begin)).size();
  return KeyLine{Trimmed(body.substr(0, equals)), begin, end};
}

std::string ValueIn(std::string_view line, const KeyLine& found) {
  std::string_view value = line.substr(found.value_begin, found.value_end - found.value_begin);
  if (HasOuterQuotes(value)) value = value.substr(1, value.size() - 2);
  return TextFromBytes(value);
}

// The name in a section's text, which starts with blanks and `[`: it ends at the first `]` or with the line.
std::string_view SectionName(std::string_view text) {
  const size_t begin = text.find('[') + 1;
  size_t end = begin;
  while (end < text.size() && text[end] != ']' && !IsLineEnd(text[end])) ++end;
  return text.substr(begin, end - begin);
}

}  // namespace

std::string TextFromBytes(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte <= 0x9F ? kWindows1252[byte - 0x80] : char16_t{byte});
  }
  return text;
}

std::string_view FirstCharacters(std::string_view text, size_t count) {
  size_t end = 0;
  while (end < text.size() && count > 0) {
    end += std::max<size_t>(CharacterLength(text.substr(end)), 1);
    --count;
  }
  return text.substr(0, end);
}

// A line with its line end: a piece of the file as it was read or, once changed, a text of its own.
struct ProfileFile::Line {
  std::string_view kept;
  std::string own;

  std::string_view Text() const { return own.empty() ? kept : std::string_view(own); }
};

// A section cut into lines. What follows the last key (comments, blank lines) stays in one piece at the end,
// so that a new key is put in its place without moving anything.
struct ProfileFile::Parts {
  std::vector<Line> lines;  // the header, then everything up to the last key
  Line rest;
  Index keys;  // folded name -> the first line of that key
};

struct ProfileFile::Section {
  std::string_view text;         // as it was read, header included; unused once there are parts
  std::unique_ptr<Parts> parts;  // made when the section is first asked for
};

ProfileFile::ProfileFile() : ProfileFile(std::string()) {}
ProfileFile::ProfileFile(ProfileFile&&) noexcept = default;
ProfileFile& ProfileFile::operator=(ProfileFile&&) noexcept = default;
ProfileFile::~ProfileFile() = default;

ProfileFile::ProfileFile(std::string bytes) : source_(std::make_shared<const std::string>(std::move(bytes))) {
  const std::string_view first_end = LineEndOf(LineAt(*source_, 0));
  if (!first_end.empty()) line_end_ = first_end;
  CutIntoSections();
}

void ProfileFile::CutIntoSections() {
  std::string_view text = *source_;
  if (text.starts_with(kByteOrderMark)) {
    mark_ = text.substr(0, kByteOrderMark.size());
    text.remove_prefix(kByteOrderMark.size());
  }
  // A header is a `[` with nothing but blanks between it and the start of its line. Brackets are rare, so
  // looking for them is many times faster than looking at every line.
  size_t begin = 0;
  for (size_t bracket = text.find('['); bracket != std::string_view::npos;
       bracket = text.find('[', bracket + 1)) {
    size_t line = bracket;
    while (line > 0 && IsBlank(text[line - 1])) --line;
    if (line > 0 && !IsLineEnd(text[line - 1])) continue;
    sections_.push_back({text.substr(begin, line - begin), nullptr});
    index_.try_emplace(Folded(SectionName(text.substr(line))), sections_.size());
    begin = line;
  }
  sections_.push_back({text.substr(begin), nullptr});
}

ProfileFile::Parts& ProfileFile::PartsOf(Section& section) const {
  if (section.parts) return *section.parts;
  section.parts = std::make_unique<Parts>();
  Parts& parts = *section.parts;
  if (&section == &sections_.front()) {  // what stands before the first section has neither header nor keys
    parts.rest.kept = section.text;
    return parts;
  }
  size_t lines = 0;
  size_t rest = 0;
  for (size_t begin = 0; begin < section.text.size();) {
    const std::string_view line = LineAt(section.text, begin);
    const auto found = begin > 0 ? FindKey(line) : std::nullopt;
    parts.lines.push_back({line, {}});
    begin += line.size();
    if (found) parts.keys.try_emplace(Folded(found->key), parts.lines.size() - 1);
    if (found || parts.lines.size() == 1) {
      lines = parts.lines.size();
      rest = begin;
    }
  }
  parts.lines.resize(lines);
  parts.rest.kept = section.text.substr(rest);
  return parts;
}

std::optional<std::string> ProfileFile::Read(std::string_view section, std::string_view key) const {
  const auto found_section = index_.find(Folded(section));
  if (found_section == index_.end()) return std::nullopt;
  const Parts& parts = PartsOf(sections_[found_section->second]);
  const auto found_key = parts.keys.find(Folded(key));
  if (found_key == parts.keys.end()) return std::nullopt;
  const std::string_view line = parts.lines[found_key->second].Text();
  return ValueIn(line, *FindKey(line));
}

bool ProfileFile::Write(std::string_view section, std::string_view key, std::string_view value) {
  std::string folded_section = Folded(section);
  std::string folded_key = Folded(key);
  if (folded_section.find(']') != std::string::npos || folded_key.find('=') != std::string::npos ||
      folded_key.starts_with(';') || folded_key.starts_with('[')) {
    return false;
  }
  const std::string text = OneLine(value);
  const auto place = index_.find(folded_section);
  if (place == index_.end()) {
    Section& added = AddSection(section);
    index_.emplace(std::move(folded_section), sections_.size() - 1);
    AddKey(*added.parts, std::move(folded_key), key, text);
    return true;
  }
  Parts& parts = PartsOf(sections_[place->second]);
  const auto found_key = parts.keys.find(folded_key);
  if (found_key == parts.keys.end()) {
    AddKey(parts, std::move(folded_key), key, text);
    return true;
  }
  Line& line = parts.lines[found_key->second];
  const std::string_view old = line.Text();
  const KeyLine found = *FindKey(old);
  if (ValueIn(old, found) == text) return false;
  std::string changed(old.substr(0, found.value_begin));
  changed += Quoted(text);
  changed += old.substr(found.value_end);
  line.own = std::move(changed);
  return true;
}

// Ends the line if it is the file's unfinished last one, and returns the line end that its neighbour should
// have.
std::string_view ProfileFile::EndLine(Line& line) const {
  const std::string_view end = LineEndOf(line.Text());
  if (!end.empty()) return end;
  line.own = std::string(line.Text()) + std::string(line_end_);
  return line_end_;
}

ProfileFile::Section& ProfileFile::AddSection(std::string_view name) {
  std::string_view end = line_end_;
  Parts& last = PartsOf(sections_.back());
  if (!last.rest.Text().empty()) {
    end = EndLine(last.rest);
  } else if (!last.lines.empty()) {
    end = EndLine(last.lines.back());
  }
  auto parts = std::make_unique<Parts>();
  std::string header = "[" + std::string(Trimmed(OneLine(name))) + "]" + std::string(end);
  parts->lines.push_back({{}, std::move(header)});
  return sections_.emplace_back(Section{{}, std::move(parts)});
}

void ProfileFile::AddKey(Parts& parts, std::string folded, std::string_view key,
                         std::string_view value) const {
  const std::string_view end = EndLine(parts.lines.back());
  std::string line(Trimmed(OneLine(key)));
  line += '=';
  line += Quoted(std::string(value));
  line += end;
  parts.lines.push_back({{}, std::move(line)});
  parts.keys.emplace(std::move(folded), parts.lines.size() - 1);
}

std::string ProfileFile::Serialize() const {
  std::string bytes;
  bytes.reserve(source_->size() + source_->size() / 16 + 4096);
  bytes += mark_;
  for (const Section& section : sections_) {
    if (!section.parts) {
      bytes += section.text;
      continue;
    }
    for (const Line& line : section.parts->lines) bytes += line.Text();
    bytes += section.parts->rest.Text();
  }
  return bytes;
}

}  // namespace quorvane
