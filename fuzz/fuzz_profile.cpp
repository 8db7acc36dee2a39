// Any bytes as a project file, and any names and values written into it. The input is cut at its 0x1E bytes:
// section, key and value of a write, again and again, and the file last.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "records/profile_file.h"

namespace {

constexpr char kCut = '\x1E';

void Require(bool condition) {
  if (!condition) std::abort();
}

std::vector<std::string> Fields(std::string_view input) {
  std::vector<std::string> fields;
  for (size_t cut = input.find(kCut); cut != std::string_view::npos && fields.size() < 30;
       cut = input.find(kCut)) {
    fields.emplace_back(input.substr(0, cut));
    input.remove_prefix(cut + 1);
  }
  fields.resize(fields.size() / 3 * 3);
  fields.emplace_back(input);
  return fields;
}

// Lines without their ends, which a write may add to an unfinished one, and without the byte order mark,
// which is not a line.
std::vector<std::string> Lines(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  std::vector<std::string> lines(1);
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '\r' && bytes[i] != '\n') {
      lines.back() += bytes[i];
      continue;
    }
    if (bytes.compare(i, 2, "\r\n") == 0) ++i;
    lines.emplace_back();
  }
  if (lines.back().empty()) lines.pop_back();
  return lines;
}

std::string WithoutLineBreaks(std::string_view bytes) {
  std::string text;
  for (const std::string& line : Lines("|" + quorvane::TextFromBytes(bytes) + "|")) text += line + " ";
  return text.substr(1, text.size() - 3);
}

// All lines of `before` stand in `after` in their order, but for one that may have been changed.
void RequireOtherLinesKept(const std::string& before, const std::string& after) {
  const std::vector<std::string> old = Lines(before);
  const std::vector<std::string> now = Lines(after);
  Require(now.size() >= old.size() && now.size() <= old.size() + 2);
  size_t front = 0;
  while (front < old.size() && old[front] == now[front]) ++front;
  size_t back = 0;
  while (back < old.size() - front && old[old.size() - 1 - back] == now[now.size() - 1 - back]) ++back;
  Require(old.size() - front - back <= (now.size() == old.size() ? 1 : 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::vector<std::string> fields = Fields(std::string(data, data + size));
  quorvane::ProfileFile file(fields.back());
  Require(file.Serialize() == fields.back());

  for (size_t i = 0; i + 3 < fields.size(); i += 3) {
    const std::string& section = fields[i];
    const std::string& key = fields[i + 1];
    const std::string before = file.Serialize();
    const bool changed = file.Write(section, key, fields[i + 2]);
    const std::string after = file.Serialize();
    Require(changed == (before != after));
    RequireOtherLinesKept(before, after);

    const std::optional<std::string> value = file.Read(section, key);
    Require(quorvane::ProfileFile(after).Read(section, key) == value);
    if (changed) Require(value == WithoutLineBreaks(fields[i + 2]));
    if (!value) Require(!changed);
  }
  return 0;
}
