#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quorvane {

struct StationMessage;

enum class Traffic : std::uint8_t { Received, Sent };

// What the station link asks of the race, and what it has the console show.
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

  virtual void ShowPort(const std::string& text, bool open) = 0;
  virtual void ShowTraffic(Traffic lamp, bool lit) = 0;
  // In few words, why the port is not open or which stations are silent in the race; empty: all is well.
  virtual void ShowRadioWarning(const std::string& text) = 0;
};

}  // namespace quorvane
