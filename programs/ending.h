#pragma once

#include <functional>
#include <string>

namespace quorvane {

// Thrown where a program does not get to its work: the help or the version that was asked for (status 0), or
// what is wrong with the command line (status 2).
struct Ending {
  int status = 0;
  std::string text = {};  // whole lines
};

// Gives the status of `work`; or prints why it has none, and gives the Ending's, or 2 for other exceptions.
int RunProgram(const std::string& program, const std::function<int()>& work);

}  // namespace quorvane
