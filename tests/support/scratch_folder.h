#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quorvane {

// A new folder of its own for one test, removed with everything in it at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& path() const { return path_; }

  // How many files and folders stand in it, hidden ones too.
  std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path path_;
};

inline void PutFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace quorvane
