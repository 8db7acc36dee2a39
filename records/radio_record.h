#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "race/race_state.h"

namespace quorvane {

// The stations that were silent for more than five seconds.
std::vector<RadioRecord::Station> SilentStations(const RadioRecord& radio);
// Both of the same race, before and after the program has died in it.
RadioRecord Together(RadioRecord before, const RadioRecord& after);

// In the section of the race: "FramesDamaged", and "SilentStations", each with its longest silence in ms and
// the frames that it was heard with, "Judges 2;12345;40,Display;65000;0". What has not happened gets no key,
// and a radio on which hardly anybody spoke none either; then nothing is read. Values that are read may be
// anything. `whole`: of a race that goes on; every station, and whether the radio was lively.
void KeepRadio(const RadioRecord& radio, const std::function<void(const char* key, const std::string&)>& set,
               bool whole = false);
std::optional<RadioRecord> ReadRadio(const std::function<std::string(const char* key)>& value);

// "3 frames damaged; silent for more than 5 s: Judges 2 (12.3 s), Display (not heard in the race)".
std::string RadioText(const RadioRecord& radio);

}  // namespace quorvane
