#include "replay/replay_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

#include "base/text.h"
#include "records/project.h"

namespace quorvane {
namespace {

constexpr std::size_t kMostCopied = std::size_t{64} << 20;

void PutFile(const std::string& path, const std::string& bytes) {
  MakeFolderPath(ParentFolder(path));
  std::ofstream(PathOf(path), std::ios::binary) << bytes;
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
  return FileOps::Write(temp, bytes);
}

std::error_code ReplayFiles::Rename(const std::string& from, const std::string& to) {
  const auto written = unnamed_.find(from);
  if (written != unnamed_.end()) {
    versions_.push_back({clock_(), to, std::move(written->second)});
    unnamed_.erase(written);
  }
  return FileOps::Rename(from, to);
}

void ReplayFiles::Hold(const std::string& path, bool held) {
  if (held) {
    held_.insert(WholePath(path));
  } else {
    held_.erase(WholePath(path));
  }
}

LockResult ReplayFiles::Lock(const std::string& target, FileLock& lock) {
  return held_.contains(WholePath(target)) ? LockResult::HeldElsewhere : FileOps::Lock(target, lock);
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

const ReplayFolder::Copy* ReplayFolder::Find(const std::string& original) const {
  const auto found = std::find_if(copies_.begin(), copies_.end(), [&](const Copy& copy) {
    return copy.original == original || copy.path == original;
  });
  return found == copies_.end() ? nullptr : &*found;
}

const std::string& ReplayFolder::CopyOf(const std::string& original, bool asItStands) {
  if (const Copy* copy = Find(original)) return copy->path;
  std::string name = FileNameOf(original);
  if (name.empty() || name == "." || name == "..") name = "project.ini";
  // Files of one name from several folders must not meet.
  const std::string folder = copies_.empty() ? "" : std::to_string(copies_.size()) + "/";
  const auto same = journal_.sameFiles.find(original);
  if (same != journal_.sameFiles.end() && !journal_.sameFiles.contains(same->second)) {
    const std::string copy = WholePath(CopyOf(same->second));
    MakeFolderPath(Path() + folder);
    std::error_code ignored;
    std::filesystem::create_symlink(PathOf(copy), PathOf(Path() + folder + name), ignored);
  }
  const std::string& path = Use(Path() + folder + name, original);
  std::string bytes;
  FileStamp stamp;
  if (asItStands && !FileExists(path) && !SystemFiles().ReadFile(original, kMostCopied, bytes, stamp)) {
    PutFile(path, bytes);
  }
  return path;
}

const std::string& ReplayFolder::Use(const std::string& path, const std::string& original) {
  copies_.push_back({original, path});
  const auto kept = std::find_if(journal_.projects.begin(), journal_.projects.end(),
                                 [&](const auto& project) { return project.path == original; });
  if (kept != journal_.projects.end() && !FileExists(path)) {
    PutFile(path, kept->bytes);
  }
  return copies_.back().path;
}

}  // namespace quorvane
