#include "lane/frm_lane.h"

#include <algorithm>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::int32_t kCountdown = 60000;  // ms from the base that the console gives to race time 0
constexpr const char* kNoCaptions = ",,,,,,,,,,,,,";

std::string Captions(const ControlArray& labels, int number) {
  std::vector<std::string> captions;
  for (int i = 0; i < number; ++i) captions.push_back(labels[i].Caption());
  return Join(captions, ',');
}

void ShowCaptions(const ControlArray& labels, const std::string& captions) {
  const std::vector<std::string> fields = Split(captions, ',');
  std::size_t i = 0;
  for (Control* label : labels) {
    label->SetCaption(i < fields.size() ? fields[i] : " ");
    label->SetVisible(i++ < fields.size());
  }
}

}  // namespace

frmLane::frmLane(Forms& forms, RaceState& race, LaneOwner& owner, int laneNumber)
    : Form(forms, "frmLane" + std::to_string(laneNumber)),
      race_(race),
      owner_(owner),
      laneNumber_(laneNumber) {
  for (int i = 0; i <= kLastCutMark; ++i) {
    lblCut[i].SetCaption("No Cut");
    lblCut[i].SetVisible(false);
    lblCut[i].onHover = [this, i] { lblCut_MouseMove(i); };
  }
  for (int i = 0; i <= kLastLapCell; ++i) {
    lblHdr[i].SetCaption("Lap " + std::to_string(i + 1));
    lblLap[i].SetBackColor(kWhite);
  }
  lblStatus.SetBackColor(kWindow);
  lblStatus.SetForeColor(kWindowText);
  for (Control* box : {&txtLapTen, &txtLapEleven}) box->SetForeColor(kDarkGrey);
  cmdLap.onClick = [this] { cmdLap_Click(); };
  cmdCut.onClick = [this] { EnterPanelCut(0, race_.RaceActive); };
  cmdTurn.onClick = [this] { cmdTurn_Click(); };
  cmdOrder.onClick = [this] { cmdOrder_Click(); };
  chkNovice.onClick = [this] { chkNovice_Click(); };
  lblStatus.onClick = [this] { lblStatus_Click(); };
  mnuLog.onClick = [this] { owner_.ShowLog(laneNumber_); };
  fraLane.onHover = [this] { HidePopUp(); };
  tmrLaps.onTimer = [this] {
    tmrLaps.SetEnabled(false);
    lblStatus.SetBackColor(kWindow);
  };
  tmrTurns.onTimer = [this] {
    TurnTimerEnd_ = 0;
    tmrTurns.SetEnabled(false);
    lblStatus.SetBackColor(kWindow);
  };
}

void frmLane::InitializeRace(std::int32_t timeBase) {
  if (timeBase != kDoesNotFly) {
    TimeBase_ = SubtractLong(timeBase, kCountdown);
    LastLapTime_ = 0;
    MissedPylonTimes_.fill(0);
    ClearCells();
    ShowHandButtons();
  } else if (Loaded()) {
    ClearCells();  // what the panel shows is of a race that was flown before
  }
  TurnToAnotherRace();
  doesNotFly_ = timeBase == kDoesNotFly;
  loadedFai_.reset();
  log_.Clear();
  stationLaps_ = 0;
  refused_ = {};
  SetPosition("");
  RecalculateCuts();
}

// What belongs to the race that the panel has shown so far: its lights, the place it was offered, a pop-up.
void frmLane::TurnToAnotherRace() {
  ++raceSerial_;
  tmrLaps.SetEnabled(false);
  tmrTurns.SetEnabled(false);
  lblStatus.SetBackColor(kWindow);
  cmdOrder.SetVisible(false);
  cmdOrder.SetTag("");
  placeOffered_ = 0;
  HidePopUp();
}

void frmLane::ClearCells() {
  for (Control* cell : lblLap) {
    cell->SetCaption("");
    cell->SetVisible(cell == &lblLap[0]);
    cell->SetBackColor(kWhite);
  }
}

// The cells as the laps of the log have left them, the next one open.
void frmLane::ShowLoggedLaps() {
  ClearCells();
  for (const LaneEvent& event : log_.Entries()) {
    const int cell = event.Count - 1;
    if (event.Kind != "L" || cell < 0 || !HasCell(cell)) continue;
    lblLap[cell].SetCaption(FormatSeconds(event.EventTime));
    lblLap[cell].SetBackColor(kSilver);
    if (HasCell(cell + 1)) lblLap[cell + 1].SetVisible(true);
  }
  if (chkNovice.Value() != 0 && !Loaded()) lblLap[1].SetVisible(false);
}

// The operator's hands are wanted only while no stations report; after the finish for a late correction.
void frmLane::ShowHandButtons() {
  for (Control* button : {&cmdLap, &cmdCut, &cmdTurn}) button->SetVisible(!race_.CommActive);
  if (race_.CommActive) return;
  const bool overUnsaved = race_.RaceActive && race_.RaceDone;
  EnableHandButtons(overUnsaved || (counts_.laps <= counts_.lapTarget && owner_.ClockRunning()));
}

void frmLane::EnableHandButtons(bool enabled) {
  for (Control* button : {&cmdLap, &cmdCut, &cmdTurn}) button->SetEnabled(enabled);
}

void frmLane::FollowLink() {
  if (cmdLap.Visible() == race_.CommActive) ShowHandButtons();
}

void frmLane::SetFormParent(Control& frame) {
  frame.SetVisible(false);
  SetVisible(true);
  UpdateLaneColor();
}

void frmLane::UpdateLaneColor() {
  const LaneMarking marking = owner_.Marking(laneNumber_);
  for (Control* shown : {&fraLane, &lblLaneName}) shown->SetCaption(marking.name);
  lblLow.SetBackColor(marking.low);
  lblHigh.SetBackColor(marking.high);
}

LaneProgress frmLane::Progress() const {
  LaneProgress progress = ProgressOf(log_, IsFai(), !Loaded() && chkNovice.Value() != 0);
  progress.shown = !doesNotFly_ && (Loaded() || race_.RaceActive);
  const bool noResult = (Loaded() || race_.RaceDone) && counts_.finalTime >= kNoResult;
  if (!progress.shown || noResult) progress.mayWin = false;
  return progress;
}

void frmLane::ShowProgress(const LaneProgress& progress, const std::string& gap) {
  const std::string flown = std::to_string(progress.flown) + "/" + std::to_string(progress.due);
  const bool timed = progress.shown && progress.lastLap > 0;
  lblFlown.SetCaption(progress.shown ? flown : "");
  lblLastLap.SetCaption(timed ? "Last " + FormatSeconds(progress.lastLap) : "");
  lblGap.SetCaption(gap);
}

void frmLane::HidePopUp() {
  cmdShow.SetVisible(false);
  cmdShow.SetTag("");
  popUpOf_ = -1;
}

void frmLane::SaveLane(const std::string& section, const KeepValue& keep, const ReadValue& there) const {
  const std::string lane = LaneSection(section, laneNumber_);
  const auto set = [&](const std::string& key, const std::string& value) { keep(lane, key, value); };
  set("NumEvents", std::to_string(log_.EventCount()));
  set("NumCuts", std::to_string(counts_.cutCount));
  set("NumLaps", std::to_string(counts_.laps));
  set("Placing", status_);
  set("Position", position_);
  set("Time", counts_.finalTime < kNoResult ? FormatSeconds(counts_.finalTime) : "nt");
  set("Laps", Captions(lblLap, kLastLapCell + 1));
  set("Cuts", Captions(lblCut, std::min<int>(counts_.cutCount, kLastCutMark)));
  const auto event = [](int i) { return "Event" + std::to_string(i); };
  for (int i = 0; i < log_.EventCount(); ++i) set(event(i), EventText(log_[i]));
  for (int i = log_.EventCount(); there && !there(lane, event(i), "").empty(); ++i) set(event(i), "");
  if (!log_.Corrections().empty()) log_.KeepCorrections(set, false);
}

void frmLane::LoadLane(const std::string& section, const ReadValue& read) {
  const std::string lane = LaneSection(section, laneNumber_);
  const auto value = [&](const std::string& key) { return read(lane, key, ""); };
  const double mode = LeadingNumber(read(section, "RaceMode", ""));
  TurnToAnotherRace();
  loadedFai_ = mode >= 1 && mode < 7 ? mode >= kFirstFaiMode : race_.IsFaiMode;
  ShowCaptions(lblLap, read(lane, "Laps", kNoCaptions));
  ShowCaptions(lblCut, read(lane, "Cuts", kNoCaptions));
  // The counts and the time that the file gives are for its readers; the log has the last word here.
  log_.Read(value);
  // A lane that flew was saved with a place, or with why it has none.
  doesNotFly_ = !Flies() || (log_.EventCount() == 0 && value("Placing").empty());

  const int laps = RecountLaps(log_, *loadedFai_).laps;
  for (int i = 0; i <= kLastLapCell; ++i) lblLap[i].SetBackColor(i < laps ? kSilver : kWhite);
  SetPosition("");
  NeedsCutDisplay_ = true;
  FinalizeRace();
  for (Control* cell : lblLap) cell->SetVisible(cell->Caption().find_first_not_of(' ') != std::string::npos);
  SetStatus(value("Placing"));
  SetPosition(value("Position"));
}

LaneLog frmLane::LogIn(const std::string& section, const ReadValue& read) const {
  LaneLog log;
  log.Read([&](const std::string& key) { return read(LaneSection(section, laneNumber_), key, ""); });
  return log;
}

frmLane::RunningState frmLane::Running() const {
  return {log_.Revision(), TimeBase_, LastLapTime_,  MissedPylonTimes_,
          status_,         position_, placeOffered_, chkNovice.Value() != 0};
}

void frmLane::KeepRunning(const std::string& section, const KeepValue& keep) const {
  SaveLane(section, keep);
  const std::string lane = LaneSection(section, laneNumber_);
  const auto set = [&](const std::string& key, int value) { keep(lane, key, std::to_string(value)); };
  set("Flies", doesNotFly_ ? 0 : 1);
  set("Novice", chkNovice.Value());
  set("TimeBase", TimeBase_);
  set("LastLapTime", LastLapTime_);
  set("PlaceOffered", placeOffered_);
  for (std::size_t i = 0; i < MissedPylonTimes_.size(); ++i) {
    set("MissedPylon" + std::to_string(i + 1), MissedPylonTimes_[i]);
  }
  set("StationLaps", StationLapsTaken());
  log_.KeepCorrections([&](const std::string& key, const std::string& text) { keep(lane, key, text); }, true);
}

void frmLane::ResumeRace(const std::string& section, const ReadValue& read) {
  const std::string lane = LaneSection(section, laneNumber_);
  const auto value = [&](const std::string& key) { return read(lane, key, ""); };
  const auto number = [&](const std::string& key) { return LeadingLong(value(key)); };
  const bool flies = number("Flies") != 0;
  InitializeRace(flies ? AddLong(number("TimeBase"), kCountdown) : kDoesNotFly);
  chkNovice.SetValue(number("Novice") != 0 ? 1 : 0);
  ShowNovice();
  log_.Read(value);
  LastLapTime_ = number("LastLapTime");
  stationLaps_ = number("StationLaps");
  for (std::size_t i = 0; i < MissedPylonTimes_.size(); ++i) {
    MissedPylonTimes_[i] = number("MissedPylon" + std::to_string(i + 1));
  }
  RecalculateCuts();
  counts_ = RecountLaps(log_, IsFai());
  ShowLoggedLaps();
  SetStatus(value("Placing"));
  SetPosition(value("Position"));
  const int offered = number("PlaceOffered");
  if (offered >= 1 && offered <= 5) {
    OfferPlace(offered);
    cmdOrder.SetVisible(!StatusLocked() && GetFinal() < kNoResult);
  }
}

}  // namespace quorvane
