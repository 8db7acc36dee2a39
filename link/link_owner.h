#pragma once

#include <array>
#include <cstdint>

#include "forms/control.h"

namespace quorvane {

struct StationMessage;

// What the station link asks of the race, and the console's controls that it works.
class LinkOwner {
 public:
  virtual ~LinkOwner() = default;

  // A good frame has arrived. The frame is the handler's own copy: whatever it sends in answer does not
  // change it.
  virtual void ProcessMessage(const StationMessage& frame) = 0;

  // For the frame about to be sent: laps, lit and cut counts per pylon of lane index 0..3 (SubscriptError
  // beyond).
  virtual void GetLaneInfo(std::uint8_t lane, std::uint8_t& laps, std::uint8_t& lit,
                           std::array<std::int16_t, 4>& cuts) = 0;
  // The race clock big-endian, the start state and the race mode.
  virtual void LoadStartInfo(std::array<std::uint8_t, 4>& time, std::uint8_t& start, std::uint8_t& mode) = 0;
  virtual void IssueRaceEvent(bool flag) = 0;

  virtual Control& CommLabel() = 0;            // lblComm, the port's state
  virtual Control& ReadLamp() = 0;             // lblReadComm
  virtual Control& WriteLamp() = 0;            // lblWriteComm
  virtual Control& SixtySecondCountBox() = 0;  // chkSixtySecondCount
  // Beside lblComm: what is wrong with the radio, in few words: why the port is not open, or which stations
  // are silent in the race. Null when there is none.
  virtual Control* SilenceLabel() { return nullptr; }
};

}  // namespace quorvane
