#include "console/frm_judge.h"

#include "records/lane_colors.h"

namespace quorvane {
namespace {

std::string Toggled(Control& entry) {
  entry.SetChecked(!entry.Checked());
  return entry.Checked() ? "True" : "False";
}

}  // namespace

JudgeControls::JudgeControls(Forms& forms) : Form(forms, "frmJudge") {
  Form::SetCaption("Quorvane");
  lblNotSaved.SetForeColor(kWhite);
  lblNotSaved.SetBackColor(kRed);
  lblUnsaved.SetBackColor(kAmber);
  lblController.SetBackColor(kAmber);
  lblSilent.SetForeColor(kRed);
  lblPractice.SetBackColor(kAmber);
  for (Control* control :
       {&lblUnsaved, &lblNotSaved, &lblPractice, &lblController, &lblNotice, &lblSilent, &chkAudio}) {
    control->SetVisible(false);
  }
  cboRaceMode.SetItems({kRaceModeNames.begin(), kRaceModeNames.end()});
  tmrSaveRetry.SetInterval(3000);
}

frmJudge::frmJudge(Door& door, RaceState& race, RaceClock& clock, Project& project, frmSerialPort& link,
                   BackgroundFiles& files)
    : JudgeControls(door.AllForms()),
      door_(door),
      race_(race),
      clock_(clock),
      project_(project),
      link_(link),
      notices_(*this, door, project, files),
      desk_(door, race, clock, tmrTimeTick, notices_, [this](auto to, auto from) { Broadcast(to, from); }),
      keeper_(door, race, project, files, lanes_, notices_) {
  HookEvents();
  door.AllForms().SetMain(*this);
}

void frmJudge::HookEvents() {
  cmdStart.onClick = [this] { cmdStart_Click(); };
  cmdReset.onClick = [this] { cmdReset_Click(); };
  cmdReorder.onClick = [this] {
    if (!race_.Amending) OfferSave(true);
    desk_.SetOrder(1);
  };
  chkSixtySecondCount.onClick = [this] {
    chkAudio.SetVisible(chkSixtySecondCount.Value() == 1);
    if (!chkAudio.Visible()) chkAudio.SetValue(0);
  };
  lblComm.onClick = [this] { door_.AllForms().Show(link_); };
  lblNotice.onClick = [this] { ShowNotice({}); };
  tmrTimeTick.onTimer = [this] { tmrTimeTick_Timer(); };
  tmrSaveRetry.onTimer = [this] { project_.RetryByItself(); };
  HookMenu();
  HookProject();
}

void frmJudge::HookMenu() {
  mnuFile.onClick = [this] { mnuFile_Click(); };
  mnuPrint.onClick = [this] { cmdPrint.onClick(); };
  mnuLink.onClick = [this] { door_.AllForms().Show(link_); };
  mnuAutoPrint.onClick = [this] { book_.Keep("AutoPrint", Toggled(mnuAutoPrint)); };
  mnuRecordSession.onClick = [this] {
    door_.System().Settings().SaveSetting(Name(), "RecordSession", Toggled(mnuRecordSession));
  };
  cmdPrint.onClick = [this] { printer_->PrintHeat(RecordNow()); };
  mnuPrintPreview.onClick = [this] { printer_->PreviewHeat(RecordNow()); };
  mnuProtestSheet.onClick = [this] { mnuProtestSheet_Click(); };
  mnuSavePdf.onClick = [this] { mnuSavePdf_Click(); };
  mnuPrinterSetup.onClick = [this] { printer_->SetUpPrinter(); };
  const auto shows = [this](const char* form) {
    return [this, form] { door_.AllForms().Show(*door_.AllForms().Find(form)); };
  };
  mnuTimerSettings.onClick = shows("frmTimer");
  mnuKeyboard.onClick = shows("frmKeyboard");
  mnuAbout.onClick = shows("frmAbout");
  mnuUndo.onClick = [this] { desk_.Undo().Undo(); };
  mnuRedo.onClick = [this] { desk_.Undo().Redo(); };
  mnuLog.onClick = [this] { desk_.ShowLog(LapsAndCuts().cboLane.ListIndex() + 1); };
  mnuAmend.onClick = [this] { mnuAmend_Click(); };
  mnuBringBack.onClick = [this] { mnuBringBack_Click(); };
  practice_.cmdBegin.onClick = [this] { BeginPractice(true); };
  practice_.cmdEnd.onClick = [this] { EndPractice(); };
  mnuExit.onClick = [this] { CloseRequested(); };
}

void frmJudge::Form_Load() {
  clock_.ResetRaceClock(0);
  race_.LaneColorScheme = LoadLaneColorScheme(door_.System().Settings());
  for (int i = 0; i < 4; ++i) {
    Lane(i).InitializeRace(0);
    Lane(i).SetFormParent(fraLane[i]);
  }
  const SettingsStore& settings = door_.System().Settings();
  mnuRecordSession.SetChecked(settings.GetSetting(Name(), "RecordSession", "False") == "True");
  ApplyRaceMode(2);
  DisplayStatus();
  if (!chooser_.OpenAtStart()) return door_.System().EndProgram();
  ShowOpenProject();
  ResetRaceControls(race_.LaneStartOffset);
  OfferRecovery();
  SetVisible(true);
  link_.Form_Load();
  link_.cmdPractice.onClick = [this] { door_.AllForms().Show(practice_); };
  door_.AllForms().Show(link_);
  BeginPracticeAtStart();
  if (!race_.MayCorrect()) return;
  // A race goes on: nothing may lie over its lanes.
  link_.SetVisible(false);
  door_.AllForms().Activate(*this);
}

// Moving to another race, or changing the race mode's meaning, has to wait while a race is in the air: it
// would be recorded under another number. What asks a question waits too, because its box would swallow the
// keys that judge. A finished race that waits to be saved must keep its refly mark.
void frmJudge::EventEnded() {
  const bool free = !race_.BeingFlown();
  const std::string flown = free ? "" : "Locked while a race is flown";
  for (Control* control : {&txtHeat, &cmdDecHeat, &cmdIncHeat, &txtRound, &cmdDecRound, &cmdIncRound,
                           &chkSixtySecondCount, &mnuHeatsPerRound, &mnuNewProject, &mnuSelectFile,
                           &mnuOpenRecent, &mnuSetEventName, &mnuLaneColors}) {
    control->Lock(flown);
  }
  if (free && Practising()) {
    for (Control* entry : {&mnuNewProject, &mnuSelectFile, &mnuOpenRecent}) {
      entry->Lock("End the practice first");
    }
  }
  FollowPractice();
  // What is written over a saved race would be dropped with the next move.
  const std::string saved = Lane(0).Loaded() && !race_.Amending ? "Locked: this race is saved" : "";
  for (const auto& lane : lanes_) {
    lane->lblStatus.Lock(free ? saved : flown);
    lane->txtLapTen.Lock(saved);
    lane->txtLapEleven.Lock(saved);
    lane->FollowLink();
  }
  txtComments.Lock(race_.ReflyMode ? "" : saved);
  cmdRefly.SetEnabled(free && !race_.Amending && !race_.Unsaved && book_.HasTimestamp(race_.RaceNumber));
  mnuSave.SetEnabled(cmdSave.Enabled());
  lblUnsaved.SetVisible(race_.WaitsForSave());
  ShowCorrections();
  mnuProtestSheet.SetEnabled(!RaceBeingFlown());  // what is missing may still come
  mnuBringBack.SetEnabled(!race_.AtStake() && !race_.Amending && keeper_.HasDropped());
  desk_.ShowProgress();
  SayWhyGrey();
  lblController.SetVisible(link_.IsControllerMode());
  if (!race_.WaitsForSave()) notices_.TakeAway(Notices::Kind::kSaveFirst);
  if (race_.MayCorrect()) {
    keeper_.Keep(RunningNow(), [this] { return race_.AtStake() ? RadioInRace() : std::nullopt; });
  } else {
    keeper_.Release();
  }
  keeper_.KeepUnsaved();
  keeper_.KeepReplaced();
  notices_.TellTroubles();
}

// As lines before the question; empty: nothing.
std::string frmJudge::LostByClosing() const {
  std::string lost;
  if (race_.BeingFlown()) {
    lost += "A race is being flown. It can be recovered when Quorvane starts again.\r\r";
  }
  if (race_.Amending) lost += "The race that is being amended stays as it was saved.\r\r";
  if (!project_.Saved()) {
    lost += "NOT SAVED: " + project_.Problem() + "\rWhat was recorded since the last save that worked is " +
            (keeper_.KeepsUnsaved() ? "kept beside the project until Quorvane opens it again.\r\r"
                                    : "lost when Quorvane closes.\r\r");
  }
  return lost;
}

// The radio goes on behind the boxes and the last save may fail: what is lost only since then is asked again.
void frmJudge::CloseRequested() {
  std::string told;
  std::optional<unsigned> declined;  // which race is not to be saved
  do {
    project_.Retry();
    told = LostByClosing();
    DialogBox close{DialogKind::YesNo, "Close Quorvane", told + "Shutdown Quorvane. Are you sure?"};
    if (!told.empty()) {
      close.icon = DialogIcon::Exclamation;
      close.usual = DialogAnswer::Word::No;
    }
    if (door_.Ask(close).word != DialogAnswer::Word::Yes) return;
    const DialogBox save{DialogKind::YesNo, "Close Quorvane", "Do you want to save the race first?"};
    if (race_.Unsaved) {
      const unsigned race = raceSerial_;
      if (door_.Ask(save).word == DialogAnswer::Word::Yes) {
        cmdSave_Click();
      } else {
        declined = race;
      }
    }
    project_.Retry();
  } while (!LostByClosing().empty() && LostByClosing() != told);
  if (declined == raceSerial_ && race_.Unsaved) {
    keeper_.Drop();
    race_.RaceActive = false;
    OfferSave(false);
  }
  EndAmending(false);
  Form_Unload();
}

// No box: it would take the keys from the hands that judge.
bool frmJudge::MaySessionEnd() {
  if (!race_.BeingFlown()) return true;
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
