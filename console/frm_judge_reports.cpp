// The heat report of the race on the console, and the small windows of the menu.

#include "console/frm_judge.h"
#include "console/race_on_console.h"

namespace quorvane {

RaceRecord frmJudge::RecordNow() {
  return RecordOnConsole(*this, race_, OpenProject(project_, race_), door_.LocalNow());
}

void frmJudge::cmdPrint_Click() {
  if (printer_ != nullptr) printer_->PrintHeat(RecordNow());
}

void frmJudge::mnuPrintPreview_Click() {
  if (printer_ != nullptr) printer_->PreviewHeat(RecordNow());
}

// The race is taken before the question: behind the box the console may move on to the next one.
void frmJudge::mnuSavePdf_Click() {
  const RaceRecord race = RecordNow();
  DialogBox box;
  box.kind = DialogKind::SaveFile;
  box.title = "Save Heat Report as PDF";
  box.preset = race_.ProjectBaseName + " race " + std::to_string(race.number) +
               (race.refly != 0 ? " refly" : "") + ".pdf";
  box.folder = ParentFolder(race_.ProjectFile);
  box.defaultExtension = ".pdf";
  const DialogAnswer answer = door_.Ask(box);
  if (answer.word != DialogAnswer::Word::File || answer.text.empty()) return;
  if (printer_ != nullptr) printer_->SaveHeat(race, answer.text);
}

void frmJudge::mnuPrinterSetup_Click() {
  if (printer_ != nullptr) printer_->SetUpPrinter();
}

void frmJudge::ShowNotice(const std::string& text) {
  lblNotice.SetCaption(text);
  lblNotice.SetVisible(!text.empty());
}

void frmJudge::ShowSmallForm(const char* name) {
  if (Form* form = door_.AllForms().Find(name)) door_.AllForms().Show(*form);
}

}  // namespace quorvane
