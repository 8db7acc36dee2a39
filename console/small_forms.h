#pragma once

#include "forms/forms.h"
#include "forms/platform.h"

namespace quorvane {

// Names the program, its version and date, who made it and what it is built with.
class frmAbout : public Form {
  using enum ControlKind;

 public:
  explicit frmAbout(Forms& forms);

  Control& lblName = AddCaptioned(Label, "lblName", "Quorvane");
  Control& lblVersion = Add(Label, "lblVersion");
  Control& lblPurpose = AddCaptioned(Label, "lblPurpose", "Race control for model-aircraft pylon racing");
  Control& lblCredits = AddCaptioned(
      Label, "lblCredits",
      "Written by the Quorvane developers, with thanks to the race directors, starters, timers and "
      "pylon judges who stand in the sun.");
  Control& lblBuiltWith = Add(Label, "lblBuiltWith");
  Control& cmdClose = AddCaptioned(Button, "cmdClose", "Close");

  // What the program was built from, such as "4f2c1ab0d3", is named beside the version.
  void SetCommit(const std::string& commit);
  // Named beside the compiler: libraries that only the window knows of, such as "Qt 6.4.2".
  void SetLibraries(const std::string& libraries);

  // "Quorvane 1.2.3".
  static std::string ProgramName();
};

// The console's keys at a glance: one row a judgement, one column a lane.
class frmKeyboard : public Form {
  using enum ControlKind;

 public:
  explicit frmKeyboard(Forms& forms);

  ControlArray lblLane{*this, Label, "lblLane", 1, 4};      // headings of the columns
  ControlArray lblAction{*this, Label, "lblAction", 0, 3};  // headings of the rows
  ControlArray lblKey{*this, Label, "lblKey", 0, 15};       // by rows
  Control& lblNotes = AddCaptioned(
      Label, "lblNotes",
      "F1 starts the race while it waits for its start.\r"
      "After the finish no key enters anything until the race is saved.\r"
      "7, 8, 9 and 0 judge cuts unless you are typing (Esc ends that); the function keys always act.\r"
      "Alt with the underlined letter of a button or menu presses it. Tab goes from one to the next.\r"
      "In the print preview the arrows, Page Up and Page Down scroll.");
  Control& cmdClose = AddCaptioned(Button, "cmdClose", "Close");
};

// Shows how finely this machine's stopwatch measures, and sets how often the race clock on the screen may be
// drawn anew. No setting here changes a race time.
class frmTimer : public Form {
  using enum ControlKind;

 public:
  frmTimer(Forms& forms, Platform& platform);

  Control& lblResolution = Add(Label, "lblResolution");
  Control& lblFrequency = Add(Label, "lblFrequency");
  Control& fraGranularity = AddCaptioned(Frame, "fraGranularity", "Display timer");
  ControlArray optGranularity{*this, Option, "optGranularity", 0, 3, &fraGranularity};  // 1, 2, 5, 10 ms
  Control& lblExplained = AddCaptioned(Label, "lblExplained",
                                       "How finely the clock on the screen is timed. A coarser setting "
                                       "spares a slow computer; race times stay "
                                       "the same.");
  Control& cmdClose = AddCaptioned(Button, "cmdClose", "Close");

  void Form_Load();           // reads the granularity; 1 ms unless it is one of the four
  void Activated() override;  // measures the stopwatch
  // ms: the display timer fires only at multiples of it.
  int Granularity() const { return granularity_; }

 private:
  void Choose(int index);

  Platform& platform_;
  int granularity_ = 1;
};

}  // namespace quorvane
