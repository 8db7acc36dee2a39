#pragma once

#include <cstdint>
#include <string>

#include "forms/platform.h"
#include "race/race_state.h"

namespace quorvane {

// What a lane panel asks of the race. Lanes are numbered 1..4 here.
class LaneOwner {
 public:
  virtual ~LaneOwner() = default;

  virtual std::int32_t RaceTime() const = 0;  // the lane's "clock now", ms
  virtual bool ClockRunning() const = 0;      // the race clock's timer is on
  virtual void IssueLapEvent() = 0;
  virtual void IssueRaceEvent(bool flag) = 0;
  // 1: offer the places anew, from the first on; otherwise offer the next place that is free.
  virtual void SetOrder(int place) = 0;
  // The operator is giving the lane this place: any other one that has it gives it up.
  virtual void TakePlace(int /*lane*/, int /*place*/) {}
  // The lane's result has changed after the race was done: an entry came late, or the operator wrote one.
  virtual void ResultChanged() {}
  virtual DialogAnswer Ask(const DialogBox& box) = 0;

  virtual LaneMarking Marking(int lane) const = 0;

  virtual std::string GetProjectValue(const std::string& section, const std::string& key,
                                      const std::string& fallback) = 0;
  virtual void SetProjectValue(const std::string& section, const std::string& key,
                               const std::string& value) = 0;
};

}  // namespace quorvane
