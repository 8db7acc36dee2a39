#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

#include "field/compare.h"
#include "field/field.h"
#include "results/race_records.h"
#include "tests/support/console_rig.h"

namespace quorvane {

// The console and the simulated field at the two ends of a line, on the console's virtual clock.
class FieldLink {
 public:
  FieldLink(ConsoleRig& console, const field::FieldOptions& options) : field(options), rig_(console) {
    rig_.serial.onSent = [this](const auto& bytes) { field.Receive(bytes, rig_.platform.ClockMs()); };
  }
  ~FieldLink() { rig_.serial.onSent = {}; }
  FieldLink(const FieldLink&) = delete;

  void RunUntil(std::int64_t ms) {
    while (rig_.platform.ClockMs() < ms) Step(ms);
  }

  // To the next moment at which either side has something to do, at most to `most`.
  void Step(std::int64_t most) {
    const std::int64_t now = rig_.platform.ClockMs();
    const std::int64_t timer = rig_.program.door().AllForms().Timers().NextDue().value_or(most) + 1;
    rig_.At(std::clamp(std::min(field.NextDue(), timer), now + 1, std::max(most, now + 1)));
    for (const field::Chunk& chunk : field.AdvanceTo(rig_.platform.ClockMs())) ToConsole(chunk.bytes);
    rig_.serial.sent.clear();
  }

  field::Field field;
  std::function<void(std::uint8_t)> onByte;  // sees each byte before the console does

 private:
  void ToConsole(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {  // a port hands over what it likes
      const auto piece = bytes.first(std::min<std::size_t>(1 + random_() % 48, bytes.size()));
      bytes = bytes.subspan(piece.size());
      if (onByte) std::for_each(piece.begin(), piece.end(), onByte);
      rig_.program.door().Enter({.kind = EventKind::Bytes, .bytes = {piece.begin(), piece.end()}});
    }
  }

  ConsoleRig& rig_;
  std::mt19937 random_{1};
};

// What the project file says about a race, and what the field says, in words that can be compared.
inline field::ToldHeat ToldByProject(ConsoleRig& rig, int race) {
  const RaceRecord record = ReadRace(OpenProject(rig.program.project(), rig.race()), race);
  field::ToldHeat heat{race, {}};
  for (const LaneRecord& lane : FlyingLanes(record)) {
    field::ToldLane& told = heat.lanes[lane.lane];
    for (const LapRecord& lap : lane.laps) told.laps.push_back(lap.time);
    for (const CutRecord& cut : lane.cuts) {
      const bool judged = cut.pylon.front() == 'P';
      told.cuts[judged ? cut.pylon.back() - '0' : field::kHandCut].push_back(cut.time);
    }
    told.final_time = lane.final;
    told.place = lane.placing;
  }
  return heat;
}

inline field::ToldHeat ToldByField(const field::HeatResult& result) {
  return field::ReadHeats(ToJson(result)).at(0);
}

}  // namespace quorvane
