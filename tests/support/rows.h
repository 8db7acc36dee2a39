#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace quorvane {

// The rows of a table in tests/data, each a list of texts. A character stands for a byte there, so that a
// text can have any bytes.
inline std::vector<std::vector<std::string>> Rows(const std::string& file) {
  std::vector<std::vector<std::string>> rows = nlohmann::json::parse(FileBytes(file));
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

}  // namespace quorvane
