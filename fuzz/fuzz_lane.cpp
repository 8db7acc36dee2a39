// A lane read from a project file that says anything: it must load, show itself, and come back the same when
// it is saved and loaded again.
//
// The input is the values of the lane's keys, one a line: RaceMode, NumEvents, Laps, Cuts, Placing, Position,
// then Event0, Event1, ... A value may hold any other byte.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "tests/lane/lane_fixture.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvane;
  static constexpr std::array kKeys = {"NumEvents", "Laps", "Cuts", "Placing", "Position"};
  LaneRig first;
  const std::vector<std::string> lines = Split(std::string(data, data + size), '\n');
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string key = i <= kKeys.size() && i > 0 ? kKeys[i - 1] : "Event" + std::to_string(i - 6);
    first.owner.values[{i == 0 ? "Race1" : "Race1_Lane1", i == 0 ? "RaceMode" : key}] = lines[i];
  }
  first.Do("load", 1);
  Require(first.lane.EventCount() <= LaneLog::kSlots && first.lane.IsFinished());

  first.Do("save", 1);
  LaneRig second;
  second.owner.values = first.owner.values;
  second.Do("load", 1);
  Require(first.Look(true) == second.Look(true));

  // A race that is flown on the same panel afterwards owes nothing to what the file said.
  first.Play("start at10000 L C+10000");
  Require(first.lane.EventCount() == 2 && first.lane.Counts().laps == 1 &&
          first.lane.Counts().lapTarget == 11);
  return 0;
}
