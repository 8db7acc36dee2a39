// What each button and menu entry is for. Why one is grey is the program's to tell.

#include "ui/designs.h"

namespace quorvane {

Tips ConsoleTips() {
  return {{"mnuNewProject", "Begin another contest in a file of its own"},
          {"mnuSelectFile", "Go on with a contest that has a file already"},
          {"mnuOpenRecent", "The contests that were opened last"},
          {"mnuSave", "Write the finished race into the project and go on to the next one"},
          {"mnuResults", "All races of the contest as a table, and as files"},
          {"mnuScoreboard", "The race in large type, for another screen"},
          {"mnuRecordSession", "Keep all that happens in a journal, which can be flown again"},
          {"mnuPrint", "Print the heat report of the race on the console"},
          {"mnuPrintPreview", "The heat report on the screen"},
          {"mnuProtestSheet", "All that happened in the race on the console"},
          {"mnuSavePdf", "The heat report as a file"},
          {"mnuPrinterSetup", "Which printer, which paper"},
          {"mnuAutoPrint", "Print each heat that the starter ends"},
          {"mnuExit", "End the program; it asks first"},
          {"mnuUndo", "Take the last entry by hand back"},
          {"mnuRedo", "Make the entry that was taken back again"},
          {"mnuLog", "The log of a lane, to strike, insert and move entries"},
          {"mnuAmend", "Correct the saved race on the console"},
          {"mnuBringBack", "Get back the race that was thrown away with Reset"},
          {"mnuSetEventName", "The contest's name, on reports and in the title"},
          {"mnuHeatsPerRound", "How many heats make a round"},
          {"mnuLaneColors", "Which lane carries which marking"},
          {"mnuTimerSettings", "How finely the clock on the screen is drawn"},
          {"mnuLink", "The radio: its port, the stations, the messages"},
          {"mnuManual", "The manual. Ctrl+F1 opens the page of the window in hand"},
          {"mnuKeyboard", "The keys at a glance"},
          {"mnuAbout", "Version, and what the program is built with"},
          {"cmdDecHeat", "The heat before"},
          {"cmdIncHeat", "The next heat"},
          {"cmdDecRound", "The same heat of the round before"},
          {"cmdIncRound", "The same heat of the next round"},
          {"cmdRefly", "Fly this race again"},
          {"cmdStart", "Start a race by hand"},
          {"cmdReset", "End the race, or throw it away; a race by hand asks first"},
          {"cmdSave", "Write the finished race into the project and go on to the next one (Ctrl+S)"},
          {"cmdPrint", "Print the heat report of the race on the console (Ctrl+P)"},
          {"cmdReorder", "Give the places by hand, lane after lane"}};
}

Tips LaneTips() {
  return {
      {"cmdLap", "This lane completes a lap now"},
      {"cmdCut", "This lane has cut a pylon now"},
      {"cmdTurn", "This lane turns at the far pylon now"},
      {"cmdOrder", "Give this lane this place"},
      {"chkNovice", "A novice flies nine laps for ten. Set it before the start: it stays as it is in a race"},
      {"cmdShow", "The mark in large"}};
}

Tips LinkTips() {
  return {{"cmdHide", "Close this window; the link goes on"},
          {"cmdMore", "Show or hide the messages and their counters"},
          {"cmdStation", "Ask this station how it is"},
          {"cmdPractice", "Fly on a simulated field, without a radio"},
          {"cmdFreeze", "Show the newest message again"},
          {"cmdCopyMsg", "Copy the message to the clipboard"},
          {"cmdCopyCounters", "Copy the counters to the clipboard"}};
}

Tips PracticeTips() {
  return {{"cmdBegin", "Start the simulated field, in a project of its own"},
          {"cmdEnd", "Stop the field and go back to the contest"},
          {"cmdClose", "Close this window; the practice goes on"}};
}

Tips PreviewTips() {
  const char* const nothing = "Does nothing here: the manual is in the console's menu Help";
  return {{"mnuFilePrint", "Print this report"},
          {"mnuFileClose", "Close this window"},
          {"mnuFileScale", "How large the pages are shown"},
          {"mnuHelpContents", nothing},
          {"mnuHelpSearch", nothing},
          {"mnuHelpScreen", nothing}};
}

Tips SmallTips() {
  return {{"cmdClose", "Close this window"},
          {"cmdStrike", "Take the chosen entry out of the log"},
          {"cmdInsert", "Enter a lap that nobody has entered"},
          {"cmdMove", "The chosen cut was at another pylon"}};
}

}  // namespace quorvane
