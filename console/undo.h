#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "console/starter.h"

namespace quorvane {

// The entries that the operator's hands have made and struck in the race on the console, in order. The last
// can be taken back, and put in force again. What a station has taken back since is passed over.
class UndoStack {
 public:
  explicit UndoStack(const LanePanels& lanes) : lanes_(lanes) {}

  void Entered(int lane, std::vector<unsigned> serials);  // lanes 1..4
  void Struck(int lane, const LaneLog::Taken& taken);
  void Clear();                     // another race is on the console
  void ReadLogs();                  // a recovered one: its logs say what was entered by hand
  void MoveTimes(std::int32_t by);  // the race clock has been moved by so many ms

  // "lap 5, lane 2": what the next Undo() and the next Redo() are about; empty when there is none. To be
  // asked after every event: what a station has taken back meanwhile goes then.
  std::pair<std::string, std::string> Texts();
  void Undo() { Shift(done_, undone_, true, "undone"); }
  void Redo() { Shift(undone_, done_, false, "redone"); }

 private:
  struct Step {
    int lane = 1;
    bool struck = false;  // it took entries away
    std::vector<unsigned> serials = {};
    std::vector<LaneLog::Taken> taken = {};  // those that are not in the log now, in the order of being taken
  };
  using Steps = std::vector<Step>;

  frmLane& Lane(const Step& step) const { return *lanes_[static_cast<std::size_t>(step.lane - 1)]; }
  void Add(Step step);
  bool Stands(const Step& step) const;
  bool IsAway(const Step& step) const;
  std::string Text(const Step& step) const;
  void Take(Step& step, const char* what) const;
  void Put(Step& step, const char* what) const;
  void Shift(Steps& from, Steps& to, bool back, const char* what);
  void Prune();

  const LanePanels& lanes_;
  Steps done_;
  Steps undone_;
};

}  // namespace quorvane
