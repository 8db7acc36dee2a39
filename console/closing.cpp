// The end of the console.

#include "console/frm_judge.h"

namespace quorvane {

// As lines before the question; empty: nothing.
std::string frmJudge::LostByClosing() const {
  std::string lost;
  if (RaceBeingFlown()) lost += "A race is being flown. It is lost when Quorvane closes.\r\r";
  if (!project_.Saved()) {
    lost += "NOT SAVED: " + project_.Problem() +
            "\rWhat was recorded since the last save that worked is lost when Quorvane closes.\r\r";
  }
  return lost;
}

// The radio goes on behind the boxes and the last save may fail: what was not yet lost when the operator was
// asked is asked about again.
void frmJudge::Form_QueryUnload() {
  std::string told;
  do {
    project_.Retry();
    told = LostByClosing();
    DialogBox close{DialogKind::YesNo, "Close Quorvane", told + "Shutdown Quorvane. Are you sure?"};
    if (!told.empty()) {
      close.icon = DialogIcon::Exclamation;
      close.usual = DialogAnswer::Word::No;
    }
    if (door_.Ask(close).word != DialogAnswer::Word::Yes) return;
    if (cmdSave.Enabled()) {
      const DialogBox save{DialogKind::YesNo, "Close Quorvane", "Do you want to save the race first?"};
      if (door_.Ask(save).word == DialogAnswer::Word::Yes) cmdSave_Click();
    }
    project_.Retry();
  } while (!LostByClosing().empty() && LostByClosing() != told);
  Form_Unload();
}

// No box: it would take the keys from the hands that judge.
bool frmJudge::MaySessionEnd() {
  if (!RaceBeingFlown()) return true;
  ShowNotice("A race is being flown: the session was kept from ending");
  return false;
}

void frmJudge::Form_Unload() {
  tmrTimeTick.SetEnabled(false);
  for (const auto& lane : lanes_) lane->SetVisible(false);
  project_.Retry();
  door_.System().EndProgram();
}

}  // namespace quorvane
