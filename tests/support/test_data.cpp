#include "tests/support/test_data.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/scratch_folder.h"

namespace quorvane {

std::string TestData() {
  return QUORVANE_TEST_DATA;
}

std::vector<std::vector<std::string>> RowsInUtf8(const std::string& name) {
  return nlohmann::json::parse(FileBytes(TestData() + "/" + name));
}

std::vector<std::vector<std::string>> Rows(const std::string& name) {
  auto rows = RowsInUtf8(name);
  for (auto& row : rows) {
    for (std::string& text : row) {
      for (std::size_t i = 0; i < text.size(); ++i) {
        if ((text[i] & 0x80) != 0)
          text.replace(i, 2, 1, static_cast<char>(text[i] << 6 | (text[i + 1] & 0x3F)));
      }
    }
  }
  return rows;
}

void ExpectGolden(const std::string& file, const std::string& now) {
  if (FileBytes(file) == now) return;
  const auto written = std::filesystem::temp_directory_path() / std::filesystem::path(file).filename();
  PutFile(written.string(), now);
  ADD_FAILURE() << "diff " << file << " " << written.string();
}

}  // namespace quorvane
