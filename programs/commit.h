#pragma once

#include <string>

namespace quorvane {

// The commit that the programs are built from: "4f2c1ab0d3", with "+" where files had been changed since, or
// "unknown" where neither git nor the source archive said.
std::string ProgramCommit();

}  // namespace quorvane
