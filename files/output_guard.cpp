#include "files/output_guard.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "base/text.h"
#include "files/file_ops.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

// Whatever has not shown its kind by then has none.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;
constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr std::array<std::string_view, 10> kSettingsSections = {
    "DiskFile", "RaceInfo",   "frmSerialPort", "frmJudge", "Ports",
    "Printer",  "Scoreboard", "Timer",         "Practice", "FirstStart"};

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
  line = Trimmed(line, kBlanks);
  return line.starts_with('[') ? Trimmed(line.substr(1, line.find(']') - 1), kBlanks) : std::string_view();
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
  if (EqualsIgnoringCase(name, "Running") || EqualsIgnoringCase(name, "Unsaved")) return FileKind::KeptRace;
  const bool ours = std::any_of(kSettingsSections.begin(), kSettingsSections.end(),
                                [&](std::string_view known) { return EqualsIgnoringCase(name, known); });
  return ours ? FileKind::Settings : otherwise;
}

// Why a file that exists may not become one of another kind; nothing for those that any file may replace.
constexpr std::array kReasons = {"",
                                 "",
                                 "it is a project file",
                                 "it is a settings file",
                                 "it keeps a race",
                                 "it is a session journal",
                                 "it is a file of another kind",
                                 "it is a file of another kind",
                                 "it is not a file",
                                 "it cannot be looked at"};

}  // namespace

FileKind KindOfContent(std::string_view bytes) {
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  if (Trimmed(bytes, kBlanks).empty()) return FileKind::Empty;
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
    const std::string_view said = Trimmed(line, kBlanks);
    begun = begun || !(said.empty() || said.starts_with(';'));
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
  const auto isThis = [&](const std::string& used) { return SameFile(path, used); };
  if (std::any_of(inUse.begin(), inUse.end(), isThis)) return "it is a file in use";
  const FileKind kind = KindOfFile(path);
  if (kind == FileKind::Missing || kind == FileKind::Empty) return std::nullopt;
  if (kind == becomes && kind != FileKind::Journal && kind != FileKind::KeptRace) return std::nullopt;
  if (kind == FileKind::Ini && (becomes == FileKind::Settings || becomes == FileKind::Other)) {
    return std::nullopt;
  }
  return kReasons[static_cast<std::size_t>(kind)];
}

std::string FreeJournalName(const std::string& path) {
  if (KindOfFile(path) != FileKind::Journal) return path;
  const std::string ending = PathOf(path).extension().string();
  const std::string base = path.substr(0, path.size() - ending.size());
  for (int number = 2;; ++number) {
    std::string name = base + "-" + std::to_string(number) + ending;
    const FileKind kind = KindOfFile(name);
    if (kind == FileKind::Missing || kind == FileKind::Empty) return name;
  }
}

}  // namespace quorvane
