// Putting right what was entered, while the race is flown and until it is saved.

#include <fmt/format.h>

#include "console/frm_judge.h"

namespace quorvane {

void frmJudge::Corrected(int lane, const Correction& correction) {
  door_.NoteCorrected(fmt::format("lane {}: {}", lane, CorrectionText(correction)));
}

void frmJudge::ShowLog(int lane) {
  log_.ShowLane(lane);
  door_.AllForms().Show(log_);
}

void frmJudge::ShowCorrections() {
  const auto offer = [](Control& entry, const std::string& word, const std::string& what) {
    entry.SetCaption(what.empty() ? word : word + " " + what);
    entry.SetEnabled(!what.empty());
  };
  const bool may = MayCorrect();
  offer(mnuUndo, "&Undo", may ? undo_.UndoText() : "");
  offer(mnuRedo, "&Redo", may ? undo_.RedoText() : "");
  const bool shown = Lane(0).Loaded();
  log_.Follow(may ? "" : shown ? "Locked: this race is saved" : "No race is on the console");
}

}  // namespace quorvane
