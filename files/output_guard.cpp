#include "files/output_guard.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "base/text.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

// Whatever has not shown its kind by then has none.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;
constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr std::array<std::string_view, 8> kSettingsSections = {
    "DiskFile", "RaceInfo", "frmSerialPort", "frmJudge", "Ports", "Printer", "Scoreboard", "Timer"};

bool ReadBeginning(const fs::path& path, std::string& bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::array<char, 65536> block;
  while (bytes.size() < kMostBytes && in) {
    in.read(block.data(), block.size());
    bytes.append(block.data(), static_cast<std::size_t>(in.gcount()));
  }
  return !in.bad();
}

// The name in "[name]", or nothing for any other line.
std::string_view SectionName(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos || line[begin] != '[') return {};
  std::string_view name = line.substr(begin + 1);
  name = name.substr(0, name.find(']'));
  const std::size_t first = name.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return name.substr(first, name.find_last_not_of(kBlanks) - first + 1);
}

// "Race7", "Race7_Lane3" for the word "Race".
bool IsNumbered(std::string_view name, std::string_view word) {
  return name.size() > word.size() && EqualsIgnoringCase(name.substr(0, word.size()), word) &&
         name[word.size()] >= '0' && name[word.size()] <= '9';
}

FileKind KindOfSection(std::string_view name, FileKind otherwise) {
  if (EqualsIgnoringCase(name, "Current") || IsNumbered(name, "Race") || IsNumbered(name, "Refly")) {
    return FileKind::Project;
  }
  const bool ours = std::any_of(kSettingsSections.begin(), kSettingsSections.end(),
                                [&](std::string_view known) { return EqualsIgnoringCase(name, known); });
  return ours ? FileKind::Settings : otherwise;
}

bool IsCommentOrBlank(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  return begin == std::string_view::npos || line[begin] == ';';
}

const char* NameOf(FileKind kind) {
  switch (kind) {
    case FileKind::Project:
      return "it is a project file";
    case FileKind::Settings:
      return "it is a settings file";
    case FileKind::Journal:
      return "it is a session journal";
    case FileKind::NoFile:
      return "it is not a file";
    case FileKind::Unreadable:
      return "it cannot be looked at";
    case FileKind::Ini:
    case FileKind::Other:
      return "it is a file of another kind";
    case FileKind::Missing:
    case FileKind::Empty:
      break;
  }
  return "";
}

// A missing file may be named in several ways as well: through a link, or by a path with "..".
bool IsSame(const std::string& one, const std::string& other) {
  if (one.empty() || other.empty()) return false;
  const fs::path a = PathOf(one);
  const fs::path b = PathOf(other);
  std::error_code error;
  if (fs::equivalent(a, b, error) && !error) return true;
  const fs::path whole = fs::weakly_canonical(a, error);
  return !error && whole == fs::weakly_canonical(b, error) && !error;
}

}  // namespace

FileKind KindOfContent(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  if (bytes.find_first_not_of(kBlanks) == std::string_view::npos) return FileKind::Empty;
  // Without its number: a journal of another version is one as well.
  if (bytes.starts_with(kJournalFirstLine.substr(0, kJournalFirstLine.find(' ') + 1))) {
    return FileKind::Journal;
  }
  bool begun = false;  // a line that means something has been seen
  FileKind kind = FileKind::Other;
  while (!bytes.empty() && (kind == FileKind::Other || kind == FileKind::Ini)) {
    const std::string_view line = bytes.substr(0, std::min(bytes.find_first_of("\r\n"), bytes.size()));
    const std::string_view name = SectionName(line);
    if (!name.empty()) kind = KindOfSection(name, begun ? kind : FileKind::Ini);
    begun = begun || !IsCommentOrBlank(line);
    bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
  }
  return kind;
}

FileKind KindOfFile(const std::string& path) {
  std::error_code error;
  const fs::path file = PathOf(path);
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::not_found) return FileKind::Missing;
  if (!fs::status_known(status)) return FileKind::Unreadable;
  if (status.type() != fs::file_type::regular) return FileKind::NoFile;
  std::string bytes;
  return ReadBeginning(file, bytes) ? KindOfContent(bytes) : FileKind::Unreadable;
}

std::optional<std::string> WhyNotWrite(const std::string& path, FileKind becomes,
                                       const std::vector<std::string>& inUse) {
  if (std::any_of(inUse.begin(), inUse.end(), [&](const std::string& used) { return IsSame(path, used); })) {
    return "it is a file in use";
  }
  const FileKind kind = KindOfFile(path);
  if (kind == FileKind::Missing || kind == FileKind::Empty) return std::nullopt;
  if (kind == becomes && kind != FileKind::Journal) return std::nullopt;
  if (kind == FileKind::Ini && (becomes == FileKind::Settings || becomes == FileKind::Other)) {
    return std::nullopt;
  }
  return NameOf(kind);
}

std::string FreeJournalName(const std::string& path) {
  if (KindOfFile(path) != FileKind::Journal) return path;
  const std::string ending = PathOf(path).extension().string();
  const std::string base = path.substr(0, path.size() - ending.size());
  std::string name;
  int number = 2;
  FileKind kind = FileKind::Missing;
  do {
    name = base + "-" + std::to_string(number++) + ending;
    kind = KindOfFile(name);
  } while (kind != FileKind::Missing && kind != FileKind::Empty);
  return name;
}

}  // namespace quorvane
