// Any bytes as a project file, and any names and values written into it. The input is cut at its 0x1E bytes:
// section, key and value of a write, again and again, and the file last. What comes of it has its races told.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/text.h"
#include "fuzz/tell_all.h"
#include "records/profile_file.h"

using namespace quorvane;

namespace {

// Lines without their ends, which a write may add to an unfinished one, and without the byte order mark,
// which is not a line.
std::vector<std::string> Lines(const std::string& bytes) {
  const std::size_t mark = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  std::vector<std::string> lines =
      Split(Replaced(Replaced(bytes.substr(mark), "\r\n", "\n"), "\r", "\n"), '\n');
  if (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

std::string WithoutLineBreaks(const std::string& bytes) {
  std::string text;
  for (const std::string& line : Lines("|" + TextFromBytes(bytes) + "|")) text += line + " ";
  return text.substr(1, text.size() - 3);
}

// All lines of `before` stand in `after` in their order, but for one that may have been changed.
void RequireOtherLinesKept(const std::string& before, const std::string& after) {
  const std::vector<std::string> old = Lines(before);
  const std::vector<std::string> now = Lines(after);
  Require(now.size() >= old.size() && now.size() <= old.size() + 2);
  const auto changed = std::ranges::mismatch(old, now).in1 - old.begin();
  const auto kept = std::mismatch(old.rbegin(), old.rend() - changed, now.rbegin()).first - old.rbegin();
  Require(std::ssize(old) - changed - kept <= (now.size() == old.size() ? 1 : 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<std::string> fields = Split(std::string(data, data + size), '\x1E');
  if (fields.empty()) fields.emplace_back();
  ProfileFile file(fields.back());
  Require(file.Serialize() == fields.back());

  for (size_t i = 0; i + 3 < std::min<size_t>(fields.size(), 31); i += 3) {
    const std::string& section = fields[i];
    const std::string& key = fields[i + 1];
    const std::string before = file.Serialize();
    const bool changed = file.Write(section, key, fields[i + 2]);
    const std::string after = file.Serialize();
    Tell(after);
    Require(changed == (before != after));
    RequireOtherLinesKept(before, after);

    const std::optional<std::string> value = file.Read(section, key);
    Require(ProfileFile(after).Read(section, key) == value);
    if (changed) Require(value == WithoutLineBreaks(fields[i + 2]));
    if (!value) Require(!changed);
  }
  TellAll(file);
  return 0;
}
