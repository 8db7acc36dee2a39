#include "common/platform.h"

#include <filesystem>

namespace quorvane {

void PlaySound(Platform& platform, const std::string& path) {
  platform.StopWave();
  std::error_code ignored;
  if (std::filesystem::is_regular_file(path, ignored)) platform.PlayWave(path);
}

}  // namespace quorvane
