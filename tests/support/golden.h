#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/scratch_folder.h"

namespace quorvane {

// The file is what it should be. Where it is not, what it is now is written down, to be read with `diff` and
// put in its place when the change is wanted.
inline void ExpectGolden(const std::string& file, const std::string& now) {
  if (FileBytes(file) == now) return;
  const auto written = std::filesystem::temp_directory_path() / std::filesystem::path(file).filename();
  PutFile(written.string(), now);
  ADD_FAILURE() << "diff " << file << " " << written.string();
}

}  // namespace quorvane
