#include "tools/replay/replay_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

#include "common/text.h"
#include "records/project.h"

namespace quorvane {
namespace {

std::filesystem::path PathOf(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string MakeTemporaryFolder() {
  std::random_device random;
  const std::filesystem::path parent = std::filesystem::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    const std::filesystem::path folder = parent / ("quorvane-replay-" + std::to_string(random()));
    if (std::filesystem::create_directory(folder)) return folder.string() + "/";
  }
  throw std::runtime_error("no temporary folder can be made");
}

}  // namespace

std::error_code ReplayFiles::Write(const TempFile& temp, std::string_view bytes) {
  if (clock_) unnamed_[temp.path] = bytes;
  return SystemFileOps::Write(temp, bytes);
}

std::error_code ReplayFiles::Rename(const std::string& from, const std::string& to) {
  const auto written = unnamed_.find(from);
  if (written != unnamed_.end()) {
    versions_.push_back({clock_(), to, std::move(written->second)});
    unnamed_.erase(written);
  }
  return SystemFileOps::Rename(from, to);
}

const std::string& ReplayFolder::Path() {
  if (folder_.empty()) folder_ = MakeTemporaryFolder();
  return folder_;
}

void ReplayFolder::Remove() {
  std::error_code ignored;
  if (!folder_.empty()) std::filesystem::remove_all(PathOf(folder_), ignored);
  folder_.clear();
}

const std::string& ReplayFolder::CopyOf(const std::string& original) {
  for (const Copy& copy : copies_) {
    if (copy.original == original || copy.path == original) return copy.path;
  }
  std::string name = FileNameOf(original);
  if (name.empty() || name == "." || name == "..") name = "project.ini";
  // Files of one name from several folders must not meet.
  const std::string folder = copies_.empty() ? "" : std::to_string(copies_.size()) + "/";
  return Use(Path() + folder + name, original);
}

const std::string& ReplayFolder::Use(const std::string& path, const std::string& original) {
  copies_.push_back({original, path});
  const auto kept = std::find_if(journal_.projects.begin(), journal_.projects.end(),
                                 [&](const auto& project) { return project.path == original; });
  if (kept != journal_.projects.end() && !FileExists(path)) {
    MakeFolderPath(ParentFolder(path));
    std::ofstream(PathOf(path), std::ios::binary) << kept->bytes;
  }
  return copies_.back().path;
}

}  // namespace quorvane
