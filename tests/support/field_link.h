#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "field/compare.h"
#include "field/field.h"
#include "field/pseudo_terminal.h"
#include "results/race_records.h"
#include "tests/support/console_rig.h"

namespace quorvane {

// The console and the simulated field at the two ends of a pseudo-terminal. Both run on the console's virtual
// clock, as fast as the bytes come through.
class FieldLink {
 public:
  FieldLink(ConsoleRig& console, const field::FieldOptions& options) : field(options), rig_(console) {
    std::string error;
    terminal_ = field::PseudoTerminal::Open("", error);
    if (terminal_ != nullptr) port_ = open(terminal_->path().c_str(), O_RDWR | O_NOCTTY);
    if (port_ < 0) ADD_FAILURE() << "no pseudo-terminal " << error;
    rig_.serial.onSent = [this](const std::vector<std::uint8_t>& bytes) { ToField(bytes); };
  }
  ~FieldLink() {
    rig_.serial.onSent = {};
    close(port_);
  }
  FieldLink(const FieldLink&) = delete;
  FieldLink& operator=(const FieldLink&) = delete;

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
  void ToConsole(const std::vector<std::uint8_t>& bytes) {
    terminal_->Write(bytes);
    pollfd state{port_, POLLIN, 0};
    for (std::size_t got = 0; got < bytes.size();) {
      std::vector<std::uint8_t> piece(1 + random_() % 48);  // a port hands over what it likes
      const ssize_t length = poll(&state, 1, 5000) > 0 ? read(port_, piece.data(), piece.size()) : 0;
      ASSERT_GT(length, 0) << "bytes are lost in the terminal";
      piece.resize(static_cast<std::size_t>(length));
      got += piece.size();
      if (onByte) std::for_each(piece.begin(), piece.end(), onByte);
      rig_.program.door().Enter({.kind = EventKind::Bytes, .bytes = piece});
    }
  }
  void ToField(const std::vector<std::uint8_t>& bytes) {
    ASSERT_EQ(write(port_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    for (std::size_t got = 0; got < bytes.size();) {
      terminal_->Wait(1000);
      const std::vector<std::uint8_t> piece = terminal_->Read();
      ASSERT_FALSE(piece.empty()) << "bytes are lost in the terminal";
      got += piece.size();
      field.Receive(piece, rig_.platform.ClockMs());
    }
  }

  ConsoleRig& rig_;
  std::unique_ptr<field::PseudoTerminal> terminal_;
  int port_ = -1;
  std::mt19937 random_{1};
};

// What the project file says about a race, and what the field says, in words that can be compared.
inline field::ToldHeat ToldByProject(ConsoleRig& rig, int race) {
  const RaceRecord record = ReadRace(OpenProject(rig.program.project(), rig.race()), race);
  field::ToldHeat heat{race, {}};
  for (const LaneRecord& lane : record.lanes) {
    if (!lane.flies) continue;
    field::ToldLane told;
    told.lane = lane.lane;
    for (const LapRecord& lap : lane.laps) told.laps.push_back(lap.time);
    for (const CutRecord& cut : lane.cuts) {
      const bool judged = cut.pylon.front() == 'P';
      told.cuts.push_back({judged ? cut.pylon.back() - '0' : field::kHandCut, cut.time});
    }
    told.final_time = lane.final;
    told.place = lane.placing;
    heat.lanes.push_back(told);
  }
  return heat;
}

inline field::ToldHeat ToldByField(const field::HeatResult& result) {
  std::stringstream json(ToJson(result));
  std::string error;
  const auto heats = field::ReadHeats(json, error);
  EXPECT_TRUE(heats && heats->size() == 1) << error;
  return heats && !heats->empty() ? heats->front() : field::ToldHeat{};
}

}  // namespace quorvane
