#include "console/frm_practice.h"

#include "records/race_record.h"

namespace quorvane {

frmPractice::frmPractice(Forms& forms) : Form(forms, "frmPractice") {
  SetCaption("Practice Field");
  std::vector<std::string> modes(kRaceModeNames.begin(), kRaceModeNames.end());
  modes.emplace_back("One after another");
  cboMode.SetItems(modes);
  cboMode.SetListIndex(1);
  cboRadio.SetItems({"Good", "Noisy", "Bad"});
  cboRadio.SetListIndex(0);
  cmdClose.onClick = [this] { CloseRequested(); };
}

PracticeOptions frmPractice::Options() const {
  const bool all = cboMode.ListIndex() == static_cast<int>(kRaceModeNames.size());
  return {.mode = all ? 0 : cboMode.ListIndex() + 1,
          .radio = static_cast<PracticeOptions::Radio>(cboRadio.ListIndex()),
          .silentJudge = chkSilentJudge.Value() != 0,
          .starterRestarts = chkRestart.Value() != 0,
          .lostTimers = chkLostTimers.Value() != 0};
}

void frmPractice::Follow(bool practising, const std::string& trouble, const std::string& locked,
                         const std::string& endLocked) {
  cmdBegin.Lock(locked);
  cmdEnd.Lock(practising ? endLocked : "There is no practice to end");
  cmdBegin.SetCaption(practising ? "Start Again" : "Start Practice");
  std::string state = practising ? "PRACTICE is on. Its races go into a project of its own."
                                 : "Plays all stations of a field: no radio is needed.";
  if (!trouble.empty()) state = trouble;
  if (!locked.empty()) state += "\r" + locked;
  lblState.SetCaption(state);
}

}  // namespace quorvane
