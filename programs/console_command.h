#pragma once

#include <map>
#include <string>
#include <vector>

namespace quorvane {

// Races to be printed, in the order in which they were named.
struct RaceList {
  std::vector<int> races;
  bool all = false;  // every race that was flown

  bool IsEmpty() const { return races.empty() && !all; }
};

// What the program was asked for on its command line.
struct CommandLine {
  std::string project;               // opened without asking; empty: the one of last time, after a question
  std::string settings;              // file of its own for the settings; empty: the user's
  std::map<int, std::string> ports;  // COM number 1..31 -> device
  std::string journal;               // file that the session is recorded in; empty: as the menu says
  std::string language;              // "de" or "en"; empty: that of the desktop
  std::string demo;                  // folder; empty: no demonstration
  int heats = 1;                     // of the demonstration
  RaceList print;                    // heat reports to be written without a window
  RaceList protest;                  // protest sheets, likewise
  std::string output;                // PDF file that they go to
  std::string paper;                 // "A4" or "Letter"; empty: as set up
};

inline bool OnlyPrints(const CommandLine& line) {
  return !line.print.IsEmpty() || !line.protest.IsEmpty();
}

// Throws an Ending where the program does not get to its work.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace quorvane
