#pragma once

#include <string>

#include "console/practice.h"
#include "forms/forms.h"

namespace quorvane {

// What is to be practised on the simulated field. The console begins and ends it.
class frmPractice : public Form {
  using enum ControlKind;

 public:
  explicit frmPractice(Forms& forms);

  Control& cboMode = Add(ComboBox, "cboMode");
  Control& cboRadio = Add(ComboBox, "cboRadio");
  Control& chkSilentJudge = AddCaptioned(CheckBox, "chkSilentJudge", "Judge 2 falls silent");
  Control& chkRestart = AddCaptioned(CheckBox, "chkRestart", "The starter restarts in the first heat");
  Control& chkLostTimers = AddCaptioned(CheckBox, "chkLostTimers", "The lap timers are lost");
  Control& lblState = Add(Label, "lblState");  // whether practice is on, and why a button is locked
  Control& cmdBegin = AddCaptioned(Button, "cmdBegin", "Start Practice");
  Control& cmdEnd = AddCaptioned(Button, "cmdEnd", "End Practice");
  Control& cmdClose = AddCaptioned(Button, "cmdClose", "Close");

  PracticeOptions Options() const;
  // `locked`, `endLocked`: why practice cannot begin, or end, now; empty: it can.
  void Follow(bool practising, const std::string& trouble, const std::string& locked,
              const std::string& endLocked);
};

}  // namespace quorvane
