#pragma once

#include <string>

#include "console/undo.h"
#include "forms/door.h"

namespace quorvane {

// The log of a lane as a table, in which its entries are struck, moved to another pylon, and laps that were
// missed inserted. Shown for the race on the console; the lanes must outlive it.
class frmLog : public Form {
  using enum ControlKind;

 public:
  frmLog(Door& door, const LanePanels& lanes, UndoStack& undo);

  Control& cboLane = Add(ComboBox, "cboLane");
  Control& lstEntries = Add(List, "lstEntries");  // number, time, what, by whom
  Control& cmdStrike = AddCaptioned(Button, "cmdStrike", "Strike");
  Control& cmdInsert = AddCaptioned(Button, "cmdInsert", "Insert Lap...");
  Control& cmdMove = AddCaptioned(Button, "cmdMove", "Move Cut...");
  Control& lblTold = Add(Label, "lblTold");  // what was put right so far, or why not
  Control& cmdClose = AddCaptioned(Button, "cmdClose", "Close");

  void ShowLane(int lane);  // 1..4
  // Shows what the log says now. Not empty: why nothing may be put right.
  void Follow(const std::string& locked);

 private:
  frmLane& Lane() const { return *lanes_[static_cast<std::size_t>(lane_ - 1)]; }
  const LaneEvent* Chosen() const;
  std::string AskText(const std::string& title, const std::string& prompt);
  void cmdStrike_Click();
  void cmdInsert_Click();
  void cmdMove_Click();

  Door& door_;
  const LanePanels& lanes_;
  UndoStack& undo_;
  int lane_ = 1;
  unsigned chosen_ = 0;  // the serial of the entry
  unsigned race_ = 0;    // of the lane, with what follows: as shown
  unsigned revision_ = 0;
  int shownLane_ = 0;
  std::string refused_;
};

}  // namespace quorvane
