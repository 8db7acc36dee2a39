#pragma once

#include <fstream>
#include <set>
#include <string>

#include "results/race_records.h"
#include "ui/program_windows.h"

namespace quorvane {

// Watches heats that the stations fly alone: says when each clock has begun to run, takes pictures of the
// console, prints what it has recorded of each heat, writes that to shown.jsonl, a JSON line a heat, and ends
// the program after the last. Files go to the folder, which must exist.
class Demo {
 public:
  Demo(Program& program, ProgramWindows& windows, std::string folder, int heats);
  ~Demo();

  // False when the folder cannot be written to.
  bool Begin();
  // The answer to any box, in the place of an operator who is not there.
  static DialogAnswer Answer(const DialogBox& box);

 private:
  void Look();
  void LookAtRace();
  void Picture(const std::string& what);
  void WriteHeat();

  Program& program_;
  ProgramWindows& windows_;
  const std::string folder_;
  const int heats_;
  int heat_ = 0;                    // heats that are over
  bool sized_ = false;              // the window has its designed size
  std::int16_t race_ = 0;           // its number, while it is flown
  std::set<std::string> pictured_;  // of this heat
  std::ofstream shown_;
};

}  // namespace quorvane
