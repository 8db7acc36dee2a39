#include "records/profile_file.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quorvane {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

// CRLF, a lone LF or a lone CR at the end of a line; empty for a last line that was never ended.
std::string_view LineEndOf(std::string_view line) {
  if (line.ends_with("\r\n")) return "\r\n";
  if (line.ends_with('\n')) return "\n";
  if (line.ends_with('\r')) return "\r";
  return {};
}

// The first line of the text, with its line end.
std::string_view FirstLine(std::string_view text) {
  const auto end = static_cast<size_t>(std::ranges::find_if(text, IsLineEnd) - text.begin());
  return text.substr(0, end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
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

// What a name is looked up by: the case of ASCII letters counts for nothing.
std::string Folded(std::string_view name) {
  const auto plain = [](char c) { return c > ' ' && c <= '~'; };
  if (std::ranges::all_of(name, plain)) return LowerCase(name);
  return LowerCase(Trimmed(OneLine(Trimmed(name))));
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
  return text.substr(begin, text.find_first_of("]\r\n", begin) - begin);
}

}  // namespace

ProfileFile::ProfileFile(std::string bytes) : source_(std::make_shared<const std::string>(std::move(bytes))) {
  const std::string_view first_end = LineEndOf(FirstLine(*source_));
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
    sections_.push_back({text.substr(begin, line - begin)});
    index_.try_emplace(Folded(SectionName(text.substr(line))), sections_.size());
    begin = line;
  }
  sections_.push_back({text.substr(begin)});
}

void ProfileFile::CutIntoLines(Section& section) const {
  const bool hasHeader = &section != &sections_.front();  // the text before the first section has no keys
  for (std::string_view rest = section.text; !rest.empty();) {
    const std::string_view line = FirstLine(rest);
    const auto found = hasHeader && !section.lines.empty() ? FindKey(line) : std::nullopt;
    if (found) section.keys.try_emplace(Folded(found->key), section.lines.size());
    section.lines.emplace_back(line);
    if (found || section.lines.size() == 1) section.last = section.lines.size();
    rest.remove_prefix(line.size());
  }
}

// The section of that name cut into lines, null when there is none.
ProfileFile::Section* ProfileFile::Find(const std::string& folded) const {
  const auto found = index_.find(folded);
  if (found == index_.end()) return nullptr;
  Section& section = sections_[found->second];
  if (section.lines.empty()) CutIntoLines(section);
  return &section;
}

std::optional<std::string> ProfileFile::Read(std::string_view section, std::string_view key) const {
  const Section* found = Find(Folded(section));
  if (found == nullptr) return std::nullopt;
  const auto place = found->keys.find(Folded(key));
  if (place == found->keys.end()) return std::nullopt;
  const std::string_view line = found->lines[place->second];
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
  Section* found = Find(folded_section);
  if (found == nullptr) {
    found = &AddSection(section);
    index_.emplace(std::move(folded_section), sections_.size() - 1);
  }
  const auto place = found->keys.find(folded_key);
  if (place == found->keys.end()) {
    AddKey(*found, std::move(folded_key), key, text);
    return true;
  }
  std::string& line = found->lines[place->second];
  const KeyLine old = *FindKey(line);
  if (ValueIn(line, old) == text) return false;
  line.replace(old.value_begin, old.value_end - old.value_begin, Quoted(text));
  return true;
}

// Ends the line if it is the file's unfinished last one; returns the line end that its neighbour should have.
std::string_view ProfileFile::EndLine(std::string& line) const {
  if (LineEndOf(line).empty()) line += line_end_;
  return LineEndOf(line);
}

ProfileFile::Section& ProfileFile::AddSection(std::string_view name) {
  Section& before = sections_.back();
  if (before.lines.empty()) CutIntoLines(before);
  const std::string end(before.lines.empty() ? line_end_ : EndLine(before.lines.back()));
  Section& added = sections_.emplace_back();
  added.lines.push_back("[" + std::string(Trimmed(OneLine(name))) + "]" + end);
  added.last = 1;
  return added;
}

void ProfileFile::AddKey(Section& section, std::string folded, std::string_view key,
                         std::string_view value) const {
  const std::string end(EndLine(section.lines[section.last - 1]));
  section.keys.emplace(std::move(folded), section.last);
  section.lines.insert(section.lines.begin() + static_cast<std::ptrdiff_t>(section.last++),
                       std::string(Trimmed(OneLine(key))) + "=" + Quoted(std::string(value)) + end);
}

std::vector<std::string> ProfileFile::SectionNames() const {
  std::vector<std::string> names;
  for (const auto& [name, index] : index_) names.push_back(name);
  return names;
}

std::string ProfileFile::Serialize() const {
  std::string bytes(mark_);
  bytes.reserve(source_->size() + source_->size() / 16 + 4096);
  for (const Section& section : sections_) {
    if (section.lines.empty()) bytes += section.text;
    for (const std::string& line : section.lines) bytes += line;
  }
  return bytes;
}

}  // namespace quorvane
