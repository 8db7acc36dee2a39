#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "console/starter.h"
#include "forms/platform.h"
#include "race/project_values.h"
#include "records/profile_file.h"
#include "records/radio_record.h"

namespace quorvane {

// The section of the file in which a race is kept from its start until it is saved or reset. Those of its
// lanes are called as in the project.
inline constexpr const char* kRunningSection = "Running";

// What is known of such a race besides its lanes. Times are ms of race time where nothing else is said.
struct RunningRace {
  std::int32_t number = 1;
  bool refly = false;
  std::int32_t heat = 1;  // for whoever is asked about it
  std::int32_t round = 1;
  std::int32_t mode = 1;  // 1..6
  bool byHand = false;    // started with the Start button
  bool sixtySecondCount = false;
  bool done = false;
  Starter::Memory starter = {};
  std::string comments = {};
  std::string recovered = {};    // why it counts as recovered already
  std::string amends = {};       // the section of a saved race that is being put right; empty: it is none
  std::string version = {};      // of that race when this was begun
  std::int64_t clockOfZero = 0;  // ms of the console clock at race time 0: another one when the clock is set

  bool operator==(const RunningRace&) const = default;
};

// When it was kept.
struct KeptAt {
  std::int32_t raceTime = 0;
  ComputerTime computer = {};
  std::optional<RadioRecord> radio = {};  // how it was received until then
};

void WriteRunning(ProfileFile& file, const RunningRace& race, const KeptAt& at);
// Over an earlier moment.
void WriteMoment(ProfileFile& file, const KeptAt& at);

struct KeptRace {
  ReadValue Reader() const;  // for its lanes; good for as long as this is

  RunningRace race;
  KeptAt at;
  ProfileFile file;
};
// The text may be anything: nothing when no race is in it, and numbers only as far as they can be meant.
std::optional<KeptRace> ReadRunning(const std::string& text);

// "12 minutes ago", for ms; "some time ago" when the clocks say nothing.
std::string AgoText(std::int64_t ms);

}  // namespace quorvane
