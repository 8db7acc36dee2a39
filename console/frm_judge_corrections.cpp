// Putting a saved race right in its place.

#include <fmt/format.h>

#include "console/frm_judge.h"

namespace quorvane {

bool frmJudge::MayAmend() const {
  return !race_.AtStake() && !race_.Amending && race_.RaceLoaded && !race_.ReflyMode && Lane(0).Loaded();
}

void frmJudge::mnuAmend_Click() {
  if (!MayAmend()) return;
  amendment_.Begin(book_.ShownSection(race_.RaceNumber));
  ++raceSerial_;
  desk_.Undo().Clear();
  fraHeatControl.SetCaption(fraHeatControl.Caption() + " AMEND");
  fraHeatControl.SetForeColor(kRed);
  for (Control* button : {&cmdSave, &cmdReset, &cmdReorder}) button->SetEnabled(true);
  ShowNotice("Amending: Save writes it in its place, Reset leaves it as it was");
}

// Whatever shows another race, or this one anew, leaves what was not saved.
void frmJudge::EndAmending(bool saved) {
  if (!race_.Amending) return;
  amendment_.End();
  for (Control* button : {&cmdSave, &cmdReset, &cmdReorder}) button->SetEnabled(false);
  if (saved) return;
  const std::string notice = "Not amended: the race stays as it was saved";
  ShowNotice(keeper_.Drop() ? notice + ". " + "Its corrections: Bring Back Last Race" : notice);
}

void frmJudge::SaveAmendment() {
  if (!amendment_.Fits()) {
    EndAmending(true);
    keeper_.SetRunningAside(AmendmentOutdated(race_.RaceNumber));
    return ShowCurrentRace();
  }
  desk_.RankLanes();
  const int number = amendment_.Save(txtComments.Text(), door_.LocalNow());
  const RaceRecord record = RecordNow();
  EndAmending(true);
  ShowCurrentRace();
  ShowNotice(fmt::format("Race {} is amended. Amendment {}", race_.RaceNumber, number));
  const DialogBox print{DialogKind::OkCancel, "Amend Race",
                        "The race is amended. Print its heat report again?"};
  if (door_.Ask(print).word == DialogAnswer::Word::Ok) printer_->PrintHeat(record);
}

void frmJudge::ShowCorrections() {
  const auto offer = [](Control& entry, const std::string& word, const std::string& what) {
    entry.SetCaption(what.empty() ? word : word + " " + what);
    entry.SetEnabled(!what.empty());
  };
  const bool may = race_.MayCorrect();
  const auto [undo, redo] = may ? desk_.Undo().Texts() : std::pair<std::string, std::string>();
  offer(mnuUndo, "&Undo", undo);
  offer(mnuRedo, "&Redo", redo);
  mnuAmend.SetEnabled(MayAmend());
  const bool shown = Lane(0).Loaded();
  LapsAndCuts().Follow(may ? "" : shown ? "Locked: this race is saved" : "No race is on the console");
}

}  // namespace quorvane
