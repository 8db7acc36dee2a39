// Putting right what was entered, while the race is flown and until it is saved.

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "console/frm_judge.h"
#include "results/race_records.h"

namespace quorvane {

void frmJudge::Corrected(int lane, const Correction& correction) {
  door_.NoteCorrected(fmt::format("lane {}: {}", lane, CorrectionText(correction)));
}

void frmJudge::ShowLog(int lane) {
  log_.ShowLane(lane);
  door_.AllForms().Show(log_);
}

// Amending: a saved race is unlocked, put right, and saved in its place.

bool frmJudge::MayAmend() const {
  return !race_.AtStake() && !amended_ && race_.RaceLoaded && !race_.ReflyMode && Lane(0).Loaded();
}

void frmJudge::mnuAmend_Click() {
  if (!MayAmend()) return;
  const std::string section = book_.ShownSection(race_.RaceNumber);
  amended_ = Amended{section, project_.GetProjectValue(section, "Timestamp", "")};
  for (std::size_t i = 0; i < lanes_.size(); ++i) amended_->logs[i] = lanes_[i]->Events().Revision();
  ++raceSerial_;
  undo_.Clear();
  fraHeatControl.SetCaption(fraHeatControl.Caption() + " AMEND");
  fraHeatControl.SetForeColor(kRed);
  cmdSave.SetEnabled(true);
  cmdReset.SetEnabled(true);
  ShowNotice("Amending: Save writes it in its place, Reset leaves it as it was");
}

// Whatever shows another race, or this one anew, leaves what was not saved.
void frmJudge::EndAmending(bool saved) {
  if (!amended_) return;
  amended_.reset();
  cmdSave.SetEnabled(false);
  cmdReset.SetEnabled(false);
  if (!saved) ShowNotice("Not amended: the race stays as it was saved");
}

// What was there before stays beside it, under a number for each amendment. Lanes that were not touched keep
// what the file says of them.
void frmJudge::SaveAmendment() {
  const Amended amended = *amended_;
  if (project_.GetProjectValue(amended.section, "Timestamp", "") != amended.timestamp) {
    ShowCurrentRace();
    return ShowNotice("Not amended: another program has changed this race");
  }
  RankLanes();
  const int number =
      1 + static_cast<int>(std::clamp(
              LeadingNumber(project_.GetProjectValue(amended.section, "Amendments", "")), 0.0, 9999.0));
  const auto keep = [&](const std::string& section, const std::string& key, const std::string& value) {
    constexpr const char* kNone = "\x01";
    const std::string before = project_.GetProjectValue(section, key, kNone);
    if (before == value) return;
    if (before != kNone) project_.SetProjectValue(section, fmt::format("Was{}_{}", number, key), before);
    project_.SetProjectValue(section, key, value);
  };
  {
    const Project::Group group(project_);
    for (std::size_t i = 0; i < lanes_.size(); ++i) {
      const bool corrected = lanes_[i]->Events().Revision() != amended.logs[i];
      lanes_[i]->SaveLane(amended.section, [&](const auto& section, const auto& key, const auto& value) {
        if (corrected || key == "Placing" || key == "Position") keep(section, key, value);
      });
    }
    keep(amended.section, "Comments", txtComments.Text());
    project_.SetProjectValue(amended.section, "Amendments", std::to_string(number));
    project_.SetProjectValue(amended.section, fmt::format("Amended{}", number),
                             TimestampText(door_.LocalNow()));
  }
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
  const bool may = MayCorrect();
  offer(mnuUndo, "&Undo", may ? undo_.UndoText() : "");
  offer(mnuRedo, "&Redo", may ? undo_.RedoText() : "");
  mnuAmend.SetEnabled(MayAmend());
  const bool shown = Lane(0).Loaded();
  log_.Follow(may ? "" : shown ? "Locked: this race is saved" : "No race is on the console");
}

}  // namespace quorvane
