// The project that is open: saving a race into it, and the heat report of the race on the console.

#include <algorithm>

#include "base/text.h"
#include "console/frm_judge.h"
#include "console/race_on_console.h"

namespace quorvane {

void frmJudge::mnuSelectFile_Click() {
  if (race_.BeingFlown()) return;
  // A finished race belongs to the project it was flown in.
  cmdSave_Click();
  if (chooser_.Ask(false)) ShowOpenProject();
}

void frmJudge::ShowOpenProject() {
  projectOpen_ = true;
  race_.ProjectBaseName = WithoutExtension(race_.ProjectFile);
  race_.ResultsFile = race_.ProjectBaseName + ".csv";
  CreateResultsFile(race_.ResultsFile);
  eventName_ = book_.Text("Title");
  race_.RaceNumber = std::max<std::int16_t>(book_.Number("Race", 1), 1);
  race_.HeatsPerRound = book_.Number("HeatsPerRound", 1);
  mnuAutoPrint.SetChecked(LeadingNumber(book_.Text("AutoPrint")) != 0.0);
  book_.SkipRacesRun();
  ShowCurrentRace();
  race_.NumberReflys = book_.Number("NumberReflys", 0);
  {
    const Project::Group group(project_);
    book_.Keep("NumberReflys", std::to_string(race_.NumberReflys));
    book_.Keep("EventFormat", "Lap, Station, EventType, Pylon, Time");
  }
  if (race_.HeatsPerRound < 2) mnuHeatsPerRound_Click();
  if (eventName_.empty()) {
    mnuSetEventName_Click();
  } else {
    SetCaption();
  }
  if (!race_.AtStake()) OfferSave(false);
}

// Saving concludes the race: the reset at the end would otherwise find it active and record it a second time.
// What it writes, and the move to the next race, are one replacement of the file.
void frmJudge::cmdSave_Click() {
  if (!race_.Unsaved) return;
  const Project::Group group(project_);
  race_.RaceActive = false;
  race_.ManualStart = false;
  IssueRaceEvent(true);
  SettleResult();
  const std::string section = book_.Write(shownMode_, txtComments.Text(), door_.LocalNow());
  for (const auto& lane : lanes_) {
    lane->SaveLane(section);
    lane->chkNovice.SetValue(0);
  }
  txtComments.SetText(kDefaultComments);
  race_.ReflyMode = false;
  OfferSave(false);
  cmdReset_Click();
}

// The places and the number that the race is printed and saved with. The operator may have given only some of
// the places.
void frmJudge::SettleResult() {
  const Project::Group group(project_);
  RankLanes();
  if (race_.ReflyMode) return;
  if (const std::string moved = book_.TakeFreeNumber(); !moved.empty()) ShowNotice(moved);
}

RaceRecord frmJudge::RecordNow() {
  return RecordOnConsole(*this, race_, OpenProject(project_, race_), door_.LocalNow());
}

// The race is taken before the question: behind the box the console may move on to the next one.
void frmJudge::mnuSavePdf_Click() {
  const RaceRecord race = RecordNow();
  const std::string name = race_.ProjectBaseName + " race " + std::to_string(race.number);
  const DialogAnswer answer = door_.Ask({.kind = DialogKind::SaveFile,
                                         .title = "Save Heat Report as PDF",
                                         .text = "",
                                         .preset = name + (race.refly != 0 ? " refly" : "") + ".pdf",
                                         .folder = ParentFolder(race_.ProjectFile),
                                         .defaultExtension = ".pdf"});
  if (answer.word == DialogAnswer::Word::File && !answer.text.empty()) printer_->SaveHeat(race, answer.text);
}

}  // namespace quorvane
