// A lane read from a project file that says anything: it must load, show itself, and come back the same when
// it is saved and loaded again.
//
// The input is the values of the lane's keys, one a line: RaceMode, NumEvents, Laps, Cuts, Placing, Position,
// then Event0, Event1, ... A value may hold any other byte.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>

#include "base/text.h"
#include "tests/lane/lane_fixture.h"

namespace quorvane {
namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

void FillProject(FakeOwner& owner, const std::string& input) {
  static constexpr std::array kKeys = {"NumEvents", "Laps", "Cuts", "Placing", "Position"};
  const std::vector<std::string> lines = Split(input, '\n');
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i == 0) {
      owner.values[{"Race1", "RaceMode"}] = lines[i];
    } else if (i <= kKeys.size()) {
      owner.values[{"Race1_Lane1", kKeys[i - 1]}] = lines[i];
    } else {
      owner.values[{"Race1_Lane1", "Event" + std::to_string(i - 1 - kKeys.size())}] = lines[i];
    }
  }
}

}  // namespace
}  // namespace quorvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvane;
  LaneRig first;
  FillProject(first.owner, std::string(data, data + size));
  first.lane.LoadLane("Race1");
  Require(first.lane.EventCount() <= LaneLog::kSlots);
  Require(first.lane.IsFinished());

  LaneRig second;
  first.lane.SaveLane("Race1");
  second.owner.values = first.owner.values;
  second.lane.LoadLane("Race1");
  Require(second.lane.EventCount() == first.lane.EventCount());
  for (int i = 0; i < first.lane.EventCount(); ++i)
    Require(first.lane.Events()[i] == second.lane.Events()[i]);
  Require(first.lane.Laps() == second.lane.Laps());
  Require(first.lane.FinalTime() == second.lane.FinalTime());
  Require(first.lane.CutsBeforeFinish() == second.lane.CutsBeforeFinish());
  Require(first.lane.lblStatus.Caption() == second.lane.lblStatus.Caption());
  for (int i = 0; i <= kLastLapCell; ++i) {
    Require(first.lane.lblLap[i].Caption() == second.lane.lblLap[i].Caption());
  }

  // A race that is flown on the same panel afterwards owes nothing to what the file said.
  first.Start();
  first.LapAt(10000);
  first.CutAt(20000, "1o", 0);
  Require(first.Kinds() == "L1 C1");
  Require(first.lane.Laps() == 1 && first.lane.LapTarget() == 11);
  return 0;
}
