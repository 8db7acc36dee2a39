// A lane read from a project file that says anything: it must load, show itself, be put right, and come back
// the same when it is saved and loaded again; and the same as a race that goes on.
//
// The input is lines "key=value" of the lane's section; "RaceMode" is the race's. The line "acts=" is what is
// put right: two bytes each, what and where.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/text.h"
#include "fuzz/require.h"
#include "tests/lane/lane_fixture.h"

namespace {

using namespace quorvane;

void TellLane(const LaneRig& rig) {
  for (const auto& [name, text] : rig.Look()) Tell(name + "=" + text);
  for (const auto& [name, value] : rig.owner.values) Tell(name.second + "=" + value);
}

void PutRight(LaneRig& rig, const std::string& acts) {
  frmLane& lane = rig.lane;
  for (std::size_t i = 0; i + 1 < std::min<std::size_t>(acts.size(), 60); i += 2) {
    const int where = static_cast<unsigned char>(acts[i + 1]);
    const unsigned serial = lane.EventCount() == 0 ? 0 : lane.Events()[where % lane.EventCount()].Serial;
    try {
      const int what = acts[i] & 3;
      if (what == 0) rig.taken = lane.Strike(serial).value_or(rig.taken);
      if (what == 1 && rig.taken.event.Serial != 0) lane.PutBack(rig.taken);
      if (what == 2) lane.InsertLap(where * 300);
      if (what == 3) lane.MoveCut(serial, 1 + where % 3);
    } catch (const RunTimeError&) {  // a full log, times beyond all measure
    }
    Require(lane.EventCount() <= LaneLog::kSlots);
    TellLane(rig);
  }
}

void RequireComesBack(LaneRig& rig) {
  rig.Do("save", 1);
  LaneRig again;
  again.owner.values = rig.owner.values;
  again.Do("load", 1);
  Require(rig.Look(true) == again.Look(true));
}

void GoOn(const LaneRig& told, const std::string& acts) {
  LaneRig rig;
  rig.owner.values = told.owner.values;
  rig.Start();
  try {
    rig.lane.ResumeRace("Race1", rig.owner.read);
  } catch (const RunTimeError&) {  // a number beyond all measure; the console takes no such race up
    return;
  }
  PutRight(rig, acts);
  rig.Do("keep");
  LaneRig again;
  again.owner.values = rig.owner.values;
  again.Start();
  again.Do("resume");
  TellLane(again);
  Require(std::ranges::equal(rig.lane.Events().Entries(), again.lane.Events().Entries()));
  Require(rig.lane.LastLapTime() == again.lane.LastLapTime());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LaneRig rig;
  std::string acts;
  for (const std::string& line : Split(std::string(data, data + size), '\n')) {
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::string key = line.substr(0, equals), value = line.substr(std::min(equals + 1, line.size()));
    (key == "acts" ? acts : rig.owner.values[{key == "RaceMode" ? "Race1" : "Race1_Lane1", key}]) = value;
  }
  GoOn(rig, acts);
  rig.Do("load", 1);
  TellLane(rig);
  Require(rig.lane.EventCount() <= LaneLog::kSlots && rig.lane.IsFinished());
  RequireComesBack(rig);
  PutRight(rig, acts);
  RequireComesBack(rig);

  // A race that is flown on the same panel afterwards owes nothing to what the file said.
  rig.Play("start at10000 L C+10000");
  Require(rig.lane.EventCount() == 2 && rig.lane.Counts().laps == 1 && rig.lane.Counts().lapTarget == 11);
  return 0;
}
