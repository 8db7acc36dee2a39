// Why a button or a menu entry is grey, for whoever rests the pointer on it.

#include "console/frm_judge.h"

namespace quorvane {
namespace {

void Say(Control& control, const std::string& why) {
  control.SetToolTip(control.Enabled() ? "" : why);
}

}  // namespace

void frmJudge::SayWhyGrey() {
  const bool inFlight = race_.BeingFlown();
  const std::string flown = inFlight ? "Locked while a race is flown" : "";
  const std::string first = race_.WaitsForSave() ? "Save the finished race first" : flown;
  const std::string save = inFlight                               ? "The race is not over yet"
                           : race_.RaceLoaded && Lane(0).Loaded() ? "Locked: this race is saved"
                                                                  : "No race waits to be saved";
  Say(cmdStart, inFlight        ? "A race is being flown"
                : first.empty() ? "This race has been flown: Refly repeats it"
                                : first);
  Say(cmdReset, "No race to end or to throw away");
  Say(cmdSave, save);
  Say(mnuSave, save);
  Say(cmdReorder, "Places are given after the finish");
  Say(cmdRefly, first.empty() ? "Only a race that has been flown can be flown again" : first);
  Say(cboRaceMode, first);
  Say(mnuUndo, "Nothing was entered by hand");
  Say(mnuRedo, "Nothing was taken back");
  Say(mnuAmend, first.empty() ? "Show a saved race first" : first);
  Say(mnuBringBack, first.empty() ? "No race was thrown away" : first);
  Say(mnuProtestSheet, flown);
  for (const auto& lane : lanes_) {
    const std::string over = flown.empty() ? "No race is being flown" : "This lane has flown its laps";
    for (Control* button : {&lane->cmdLap, &lane->cmdCut, &lane->cmdTurn}) Say(*button, over);
  }
}

}  // namespace quorvane
