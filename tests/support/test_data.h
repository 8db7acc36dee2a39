#pragma once

#include <string>
#include <vector>

namespace quorvane {

// The folder tests/data.
std::string TestData();

// The rows of a table in tests/data, each a list of texts. A character stands for a byte there, so that a
// text can have any bytes.
std::vector<std::vector<std::string>> Rows(const std::string& name);
// The same for texts in UTF-8.
std::vector<std::vector<std::string>> RowsInUtf8(const std::string& name);

// The file is what it should be. Where it is not, what it is now is written down, to be read with `diff` and
// put in its place when the change is wanted.
void ExpectGolden(const std::string& file, const std::string& now);

}  // namespace quorvane
