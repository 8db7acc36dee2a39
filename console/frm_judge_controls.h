#pragma once

#include "forms/form.h"
#include "forms/forms.h"

namespace quorvane {

// What the console shows and what the operator works there.
class JudgeControls : public Form {
  using enum ControlKind;

 public:
  explicit JudgeControls(Forms& forms);

  Control& mnuFile = AddCaptioned(Menu, "mnuFile", "&File");
  Control& mnuNewProject = AddCaptioned(Menu, "mnuNewProject", "Ne&w Project...", &mnuFile);
  Control& mnuSelectFile = AddCaptioned(Menu, "mnuSelectFile", "&Open Project...", &mnuFile);
  Control& mnuOpenRecent = AddCaptioned(Menu, "mnuOpenRecent", "Open Re&cent", &mnuFile);  // its items: files
  Control& mnuFileLine1 = AddCaptioned(Menu, "mnuFileLine1", "-", &mnuFile);
  Control& mnuSave = AddCaptioned(Menu, "mnuSave", "Sav&e", &mnuFile);
  Control& mnuFileLine2 = AddCaptioned(Menu, "mnuFileLine2", "-", &mnuFile);
  // The window opens the next two, and records the session while the third is checked.
  Control& mnuResults = AddCaptioned(Menu, "mnuResults", "&Results...", &mnuFile);
  Control& mnuScoreboard = AddCaptioned(Menu, "mnuScoreboard", "Score&board", &mnuFile);
  Control& mnuRecordSession = AddCaptioned(Menu, "mnuRecordSession", "Record Sessio&n", &mnuFile);
  Control& mnuFileLine3 = AddCaptioned(Menu, "mnuFileLine3", "-", &mnuFile);
  Control& mnuPrint = AddCaptioned(Menu, "mnuPrint", "Pr&int", &mnuFile);
  Control& mnuPrintPreview = AddCaptioned(Menu, "mnuPrintPreview", "Print Pre&view", &mnuFile);
  Control& mnuProtestSheet = AddCaptioned(Menu, "mnuProtestSheet", "Pro&test Sheet...", &mnuFile);
  Control& mnuSavePdf = AddCaptioned(Menu, "mnuSavePdf", "&Save as PDF...", &mnuFile);
  Control& mnuPrinterSetup = AddCaptioned(Menu, "mnuPrinterSetup", "&Printer Setup...", &mnuFile);
  Control& mnuAutoPrint = AddCaptioned(Menu, "mnuAutoPrint", "Enable AutoPrint", &mnuFile);
  Control& mnuFileLine4 = AddCaptioned(Menu, "mnuFileLine4", "-", &mnuFile);
  Control& mnuExit = AddCaptioned(Menu, "mnuExit", "E&xit", &mnuFile);
  Control& mnuEdit = AddCaptioned(Menu, "mnuEdit", "Ed&it");
  Control& mnuUndo = AddCaptioned(Menu, "mnuUndo", "&Undo", &mnuEdit);
  Control& mnuRedo = AddCaptioned(Menu, "mnuRedo", "&Redo", &mnuEdit);
  Control& mnuUndoLine = AddCaptioned(Menu, "mnuUndoLine", "-", &mnuEdit);
  Control& mnuLog = AddCaptioned(Menu, "mnuLog", "&Laps and Cuts...", &mnuEdit);
  Control& mnuAmend = AddCaptioned(Menu, "mnuAmend", "&Amend Race", &mnuEdit);
  Control& mnuEditLine = AddCaptioned(Menu, "mnuEditLine", "-", &mnuEdit);
  Control& mnuBringBack = AddCaptioned(Menu, "mnuBringBack", "&Bring Back Last Race", &mnuEdit);
  Control& mnuSetRaceInfo = AddCaptioned(Menu, "mnuSetRaceInfo", "&Set Race Info");
  Control& mnuSetEventName = AddCaptioned(Menu, "mnuSetEventName", "Set &Event Name", &mnuSetRaceInfo);
  Control& mnuHeatsPerRound = AddCaptioned(Menu, "mnuHeatsPerRound", "Set &Heats per Round", &mnuSetRaceInfo);
  Control& mnuLaneColors = AddCaptioned(Menu, "mnuLaneColors", "Set &Lane Colors", &mnuSetRaceInfo);
  Control& mnuSetLine = AddCaptioned(Menu, "mnuSetLine", "-", &mnuSetRaceInfo);
  Control& mnuTimerSettings = AddCaptioned(Menu, "mnuTimerSettings", "&Timer Settings...", &mnuSetRaceInfo);
  Control& mnuLink = AddCaptioned(Menu, "mnuLink", "Station Lin&k", &mnuSetRaceInfo);
  Control& mnuHelp = AddCaptioned(Menu, "mnuHelp", "&Help");
  Control& mnuManual = AddCaptioned(Menu, "mnuManual", "&Manual", &mnuHelp);  // the window opens it
  Control& mnuKeyboard = AddCaptioned(Menu, "mnuKeyboard", "&Keyboard", &mnuHelp);
  Control& mnuHelpLine = AddCaptioned(Menu, "mnuHelpLine", "-", &mnuHelp);
  Control& mnuAbout = AddCaptioned(Menu, "mnuAbout", "&About Quorvane...", &mnuHelp);

  Control& lblStatus = Add(Label, "lblStatus");  // the clock
  // Shown while a finished race waits to be saved.
  Control& lblUnsaved = AddCaptioned(Label, "lblUnsaved", "FINISHED, NOT SAVED YET");
  // Shown while something that was recorded is not on the disk.
  Control& lblNotSaved = AddCaptioned(Label, "lblNotSaved", "NOT SAVED");
  Control& lblPractice = AddCaptioned(Label, "lblPractice", "PRACTICE");  // shown while there is practice
  Control& lblNotice = Add(Label, "lblNotice");  // a click on it takes the notice away
  Control& fraHeatControl = Add(Frame, "fraHeatControl");
  Control& txtHeat = Add(TextBox, "txtHeat", &fraHeatControl);
  Control& cmdDecHeat = AddCaptioned(Button, "cmdDecHeat", "-", &fraHeatControl);
  Control& cmdIncHeat = AddCaptioned(Button, "cmdIncHeat", "+", &fraHeatControl);
  Control& txtRound = Add(TextBox, "txtRound", &fraHeatControl);
  Control& cmdDecRound = AddCaptioned(Button, "cmdDecRound", "-", &fraHeatControl);
  Control& cmdIncRound = AddCaptioned(Button, "cmdIncRound", "+", &fraHeatControl);
  Control& cboRaceMode = Add(ComboBox, "cboRaceMode");
  Control& lblRaceMode = Add(Label, "lblRaceMode");
  Control& cmdRefly = AddCaptioned(Button, "cmdRefly", "Refly");
  Control& chkSixtySecondCount = AddCaptioned(CheckBox, "chkSixtySecondCount", "60 Second Count");
  Control& chkAudio = AddCaptioned(CheckBox, "chkAudio", "Audio Countdown");
  Control& cmdStart = AddCaptioned(Button, "cmdStart", "Start");
  Control& cmdReset = AddCaptioned(Button, "cmdReset", "Reset");
  Control& cmdSave = AddCaptioned(Button, "cmdSave", "Save");
  Control& cmdPrint = AddCaptioned(Button, "cmdPrint", "Print");
  Control& cmdReorder = AddCaptioned(Button, "cmdReorder", "Order");
  Control& txtComments = Add(TextBox, "txtComments");
  Control& lblComm = Add(Label, "lblComm");
  Control& lblReadComm = AddCaptioned(Label, "lblReadComm", "R");
  Control& lblWriteComm = AddCaptioned(Label, "lblWriteComm", "T");
  // Shown while this console acts for the starter and the timers.
  Control& lblController = AddCaptioned(Label, "lblController", "CONTROLLER");
  Control& lblSilent = Add(Label, "lblSilent");         // beside lblComm: who is there, or what is wrong
  ControlArray fraLane{*this, Frame, "fraLane", 0, 3};  // where the lane panels stand
  Control& tmrTimeTick = Add(Timer, "tmrTimeTick");
  Control& tmrSaveRetry = Add(Timer, "tmrSaveRetry");  // tries again to write what is not on the disk yet
};

}  // namespace quorvane
