#include "console/frm_judge.h"

#include <utility>

#include "base/text.h"
#include "forms/control.h"
#include "records/lane_colors.h"
#include "records/race_record.h"

namespace quorvane {

frmJudge::frmJudge(Door& door, RaceState& race, RaceClock& clock, Project& project)
    : Form(door.AllForms(), "frmJudge"),
      mnuFile(AddCaptioned(ControlKind::Menu, "mnuFile", "&File")),
      mnuSelectFile(AddCaptioned(ControlKind::Menu, "mnuSelectFile", "&Open Project...", &mnuFile)),
      mnuResults(AddCaptioned(ControlKind::Menu, "mnuResults", "&Results...", &mnuFile)),
      mnuScoreboard(AddCaptioned(ControlKind::Menu, "mnuScoreboard", "Score&board", &mnuFile)),
      mnuRecordSession(AddCaptioned(ControlKind::Menu, "mnuRecordSession", "Record Sessio&n", &mnuFile)),
      mnuPrintPreview(AddCaptioned(ControlKind::Menu, "mnuPrintPreview", "Print Pre&view", &mnuFile)),
      mnuSavePdf(AddCaptioned(ControlKind::Menu, "mnuSavePdf", "&Save as PDF...", &mnuFile)),
      mnuPrinterSetup(AddCaptioned(ControlKind::Menu, "mnuPrinterSetup", "&Printer Setup...", &mnuFile)),
      mnuAutoPrint(AddCaptioned(ControlKind::Menu, "mnuAutoPrint", "Enable AutoPrint", &mnuFile)),
      mnuExit(AddCaptioned(ControlKind::Menu, "mnuExit", "E&xit", &mnuFile)),
      mnuSetRaceInfo(AddCaptioned(ControlKind::Menu, "mnuSetRaceInfo", "&Set Race Info")),
      mnuSetEventName(AddCaptioned(ControlKind::Menu, "mnuSetEventName", "Set &Event Name", &mnuSetRaceInfo)),
      mnuHeatsPerRound(
          AddCaptioned(ControlKind::Menu, "mnuHeatsPerRound", "Set &Heats per Round", &mnuSetRaceInfo)),
      mnuLaneColors(AddCaptioned(ControlKind::Menu, "mnuLaneColors", "Set &Lane Colors", &mnuSetRaceInfo)),
      mnuTimerSettings(
          AddCaptioned(ControlKind::Menu, "mnuTimerSettings", "&Timer Settings...", &mnuSetRaceInfo)),
      mnuHelp(AddCaptioned(ControlKind::Menu, "mnuHelp", "&Help")),
      mnuKeyboard(AddCaptioned(ControlKind::Menu, "mnuKeyboard", "&Keyboard", &mnuHelp)),
      mnuAbout(AddCaptioned(ControlKind::Menu, "mnuAbout", "&About Quorvane...", &mnuHelp)),
      lblStatus(Add(ControlKind::Label, "lblStatus")),
      lblNotSaved(AddCaptioned(ControlKind::Label, "lblNotSaved", "NOT SAVED")),
      lblNotice(Add(ControlKind::Label, "lblNotice")),
      fraHeatControl(Add(ControlKind::Frame, "fraHeatControl")),
      txtHeat(Add(ControlKind::TextBox, "txtHeat", &fraHeatControl)),
      cmdDecHeat(AddCaptioned(ControlKind::Button, "cmdDecHeat", "-", &fraHeatControl)),
      cmdIncHeat(AddCaptioned(ControlKind::Button, "cmdIncHeat", "+", &fraHeatControl)),
      txtRound(Add(ControlKind::TextBox, "txtRound", &fraHeatControl)),
      cmdDecRound(AddCaptioned(ControlKind::Button, "cmdDecRound", "-", &fraHeatControl)),
      cmdIncRound(AddCaptioned(ControlKind::Button, "cmdIncRound", "+", &fraHeatControl)),
      cboRaceMode(Add(ControlKind::ComboBox, "cboRaceMode")),
      lblRaceMode(Add(ControlKind::Label, "lblRaceMode")),
      cmdRefly(AddCaptioned(ControlKind::Button, "cmdRefly", "Refly")),
      chkSixtySecondCount(AddCaptioned(ControlKind::CheckBox, "chkSixtySecondCount", "60 Second Count")),
      chkAudio(AddCaptioned(ControlKind::CheckBox, "chkAudio", "Audio Countdown")),
      cmdStart(AddCaptioned(ControlKind::Button, "cmdStart", "Start")),
      cmdReset(AddCaptioned(ControlKind::Button, "cmdReset", "Reset")),
      cmdSave(AddCaptioned(ControlKind::Button, "cmdSave", "Save")),
      cmdPrint(AddCaptioned(ControlKind::Button, "cmdPrint", "Print")),
      cmdReorder(AddCaptioned(ControlKind::Button, "cmdReorder", "Order")),
      txtComments(Add(ControlKind::TextBox, "txtComments")),
      lblComm(Add(ControlKind::Label, "lblComm")),
      lblReadComm(AddCaptioned(ControlKind::Label, "lblReadComm", "R")),
      lblWriteComm(AddCaptioned(ControlKind::Label, "lblWriteComm", "T")),
      lblController(AddCaptioned(ControlKind::Label, "lblController", "CONTROLLER")),
      lblSilent(Add(ControlKind::Label, "lblSilent")),
      fraLane(*this, ControlKind::Frame, "fraLane", 0, 3),
      tmrTimeTick(Add(ControlKind::Timer, "tmrTimeTick")),
      tmrSaveRetry(Add(ControlKind::Timer, "tmrSaveRetry")),
      door_(door),
      race_(race),
      clock_(clock),
      project_(project) {
  Form::SetCaption("Quorvane");
  lblNotSaved.SetVisible(false);
  lblNotSaved.SetForeColor(kWhite);
  lblNotSaved.SetBackColor(kRed);
  lblController.SetVisible(false);
  lblController.SetBackColor(Color::Rgb(0xFFC840));
  lblNotice.SetVisible(false);
  lblSilent.SetVisible(false);
  lblSilent.SetForeColor(kRed);
  chkAudio.SetVisible(false);
  tmrSaveRetry.SetInterval(3000);
  for (int i = 0; i < 4; ++i) {
    lanes_[static_cast<std::size_t>(i)] =
        std::make_unique<frmLane>(door.AllForms(), race, static_cast<LaneOwner&>(*this), i + 1);
  }
  HookEvents();
  door.AllForms().SetMain(*this);
}

frmJudge::~frmJudge() = default;

void frmJudge::HookEvents() {
  cmdStart.onClick = [this] { cmdStart_Click(); };
  cmdReset.onClick = [this] { cmdReset_Click(); };
  cmdSave.onClick = [this] { cmdSave_Click(); };
  cmdPrint.onClick = [this] { cmdPrint_Click(); };
  cmdReorder.onClick = [this] { cmdReorder_Click(); };
  cmdRefly.onClick = [this] { cmdRefly_Click(); };
  cmdIncHeat.onClick = [this] { cmdIncHeat_Click(); };
  cmdDecHeat.onClick = [this] { cmdDecHeat_Click(); };
  cmdIncRound.onClick = [this] { cmdIncRound_Click(); };
  cmdDecRound.onClick = [this] { cmdDecRound_Click(); };
  txtHeat.onChange = [this] { txtHeat_Change(); };
  txtRound.onChange = [this] { txtRound_Change(); };
  for (Control* box : {&txtHeat, &txtRound, &txtComments}) {
    box->onGotFocus = [box] { SelectAllText(*box); };
  }
  cboRaceMode.onChange = [this] { cboRaceMode_Change(); };
  chkSixtySecondCount.onClick = [this] { chkSixtySecondCount_Click(); };
  lblComm.onClick = [this] { lblComm_Click(); };
  tmrTimeTick.onTimer = [this] { tmrTimeTick_Timer(); };
  tmrSaveRetry.onTimer = [this] { tmrSaveRetry_Timer(); };
  mnuSelectFile.onClick = [this] { mnuSelectFile_Click(); };
  mnuAutoPrint.onClick = [this] { mnuAutoPrint_Click(); };
  mnuRecordSession.onClick = [this] { mnuRecordSession_Click(); };
  mnuPrintPreview.onClick = [this] { mnuPrintPreview_Click(); };
  mnuSavePdf.onClick = [this] { mnuSavePdf_Click(); };
  mnuPrinterSetup.onClick = [this] { mnuPrinterSetup_Click(); };
  lblNotice.onClick = [this] { ShowNotice({}); };
  mnuTimerSettings.onClick = [this] { ShowSmallForm("frmTimer"); };
  mnuKeyboard.onClick = [this] { ShowSmallForm("frmKeyboard"); };
  mnuAbout.onClick = [this] { ShowSmallForm("frmAbout"); };
  mnuExit.onClick = [this] { Form_QueryUnload(); };
  mnuHeatsPerRound.onClick = [this] { mnuHeatsPerRound_Click(); };
  mnuSetEventName.onClick = [this] { mnuSetEventName_Click(); };
  mnuLaneColors.onClick = [this] { mnuLaneColors_Click(); };
}

void frmJudge::Form_Load() {
  clock_.ResetRaceClock(0, "Null");
  race_.LaneColorScheme = LoadLaneColorScheme(door_.System().Settings());
  for (int i = 0; i < 4; ++i) {
    Lane(i).Form_Load();
    Lane(i).SetFormParent(fraLane[i]);
  }
  mnuAutoPrint.SetChecked(LeadingNumber(GetProjectValue("Current", "AutoPrint", "False")) != 0.0);
  const SettingsStore& settings = door_.System().Settings();
  mnuRecordSession.SetChecked(settings.GetSetting(Name(), "RecordSession", "False") == "True");
  ApplyRaceMode(2);
  race_.RaceHolding = false;
  race_.RaceActive = false;
  DisplayStatus();
  cboRaceMode.SetItems({kRaceModeNames.begin(), kRaceModeNames.end()});
  cboRaceMode.SetListIndex(1);
  if (!ChooseProject(true)) return;
  ResetRaceControls();
  SetVisible(true);
  if (link_ != nullptr) {
    link_->Form_Load();
    door_.AllForms().Show(*link_);
  }
}

// Moving to another race, or changing the race mode's meaning, has to wait while a race is in the air: it
// would be recorded under another number. What asks a question waits too, because its box would swallow the
// keys that judge. A finished race that waits to be saved must keep its refly mark.
void frmJudge::EventEnded() {
  const bool free = !RaceBeingFlown();
  const std::string flown = free ? "" : "Locked while a race is flown";
  const auto lock = [](Control& control, const std::string& why) {
    control.SetEnabled(why.empty());
    control.SetToolTip(why);
  };
  for (Control* control :
       {&txtHeat, &cmdDecHeat, &cmdIncHeat, &txtRound, &cmdDecRound, &cmdIncRound, &chkSixtySecondCount,
        &mnuHeatsPerRound, &mnuSelectFile, &mnuSetEventName, &mnuLaneColors}) {
    lock(*control, flown);
  }
  // What is written over a saved race would be dropped with the next move.
  const std::string saved = Lane(0).Loaded() ? "Locked: this race is saved" : "";
  for (const auto& lane : lanes_) {
    lock(lane->lblStatus, free ? saved : flown);
    lock(lane->txtLapTen, saved);
    lock(lane->txtLapEleven, saved);
  }
  lock(txtComments, race_.ReflyMode ? "" : saved);
  cmdRefly.SetEnabled(free && !cmdSave.Enabled() && projectOpen_ && HasTimestamp(race_.RaceNumber));
  if (!WaitsForSave() && lblNotice.Caption() == kSaveFirst) ShowNotice({});
  for (const auto& lane : lanes_) lane->FollowLink();
  lblController.SetVisible(link_ != nullptr && link_->IsControllerMode());
  ShowSaveState();
  TellErrors();
}

// Such an error is a fault of the program, or a full log: what was asked for has not been done.
void frmJudge::TellErrors() {
  const int errors = door_.ErrorsContained();
  if (std::exchange(errorsTold_, errors) == errors) return;
  ShowNotice("Something failed and was left undone: " + door_.LastError());
}

// A disk that hangs would hold up the hands at the console; what waits is safe in memory.
void frmJudge::tmrSaveRetry_Timer() {
  if (!RaceBeingFlown()) project_.Retry();
}

void frmJudge::ShowSaveState() {
  if (const auto moved = project_.TakeMoved(); !moved.empty()) ShowNotice(Join(moved, ';'));
  const bool saved = project_.Saved();
  lblNotSaved.SetVisible(!saved);
  tmrSaveRetry.SetEnabled(!saved);
  std::string notice = saved ? std::string() : "Not saved: " + project_.Problem();
  if (notice == saveNotice_) return;
  // A notice of something else stays when all is saved again.
  if (!saved || lblNotice.Caption() == saveNotice_) ShowNotice(notice);
  saveNotice_ = std::move(notice);
}

std::string frmJudge::LaneColorName(int lane) const {
  return quorvane::LaneColorName(race_, lane);
}
Color frmJudge::LaneLowColor(int lane) const {
  return quorvane::LaneLowColor(race_, lane);
}
Color frmJudge::LaneHighColor(int lane) const {
  return quorvane::LaneHighColor(race_, lane);
}

std::string frmJudge::GetProjectValue(const std::string& section, const std::string& key,
                                      const std::string& fallback) {
  return project_.GetProjectValue(section, key, fallback);
}

void frmJudge::SetProjectValue(const std::string& section, const std::string& key, const std::string& value) {
  project_.SetProjectValue(section, key, value);
}

}  // namespace quorvane
