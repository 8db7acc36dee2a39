#include "lane/frm_lane.h"

#include "base/checked.h"

namespace quorvane {
namespace {

constexpr std::int32_t kDoesNotFly = -1000000;
constexpr std::int32_t kCountdown = 60000;  // ms from the base that the console gives to race time 0

}  // namespace

frmLane::frmLane(Forms& forms, RaceState& race, LaneOwner& owner, int laneNumber)
    : Form(forms, "frmLane" + std::to_string(laneNumber)),
      race_(race),
      owner_(owner),
      laneNumber_(laneNumber) {
  for (Control* mark : lblCut) {
    mark->SetCaption("No Cut");
    mark->SetVisible(false);
  }
  for (int i = lblHdr.Lower(); i <= lblHdr.Upper(); ++i) {
    lblHdr[i].SetCaption("Lap " + std::to_string(i + 1));
    lblLap[i].SetBackColor(kWhite);
  }
  lblStatus.SetBackColor(kWindow);
  lblStatus.SetForeColor(kWindowText);
  for (Control* box : {&txtLapTen, &txtLapEleven}) box->SetForeColor(kDarkGrey);
  HookEvents();
}

void frmLane::HookEvents() {
  cmdLap.onClick = [this] { cmdLap_Click(); };
  cmdCut.onClick = [this] { cmdCut_Click(); };
  cmdTurn.onClick = [this] { cmdTurn_Click(); };
  cmdOrder.onClick = [this] { cmdOrder_Click(); };
  chkNovice.onClick = [this] { chkNovice_Click(); };
  lblStatus.onClick = [this] { lblStatus_Click(); };
  tmrLaps.onTimer = [this] { tmrLaps_Timer(); };
  tmrTurns.onTimer = [this] { tmrTurns_Timer(); };
  fraLane.onHover = [this] { HidePopUp(); };
  for (int i = lblCut.Lower(); i <= lblCut.Upper(); ++i) {
    lblCut[i].onHover = [this, i] { lblCut_MouseMove(i); };
  }
  for (Control* box : {&txtLapTen, &txtLapEleven}) {
    box->onGotFocus = [box] { box->SetSelection(0, static_cast<int>(box->Text().size())); };
  }
}

void frmLane::Form_Load() {
  InitializeRace(0);
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

// The operator's hands are wanted only while no stations report.
void frmLane::ShowHandButtons() {
  for (Control* button : {&cmdLap, &cmdCut, &cmdTurn}) button->SetVisible(!race_.CommActive);
  if (!race_.CommActive) EnableHandButtons(counts_.laps <= counts_.lapTarget && owner_.ClockRunning());
}

void frmLane::EnableHandButtons(bool enabled) {
  for (Control* button : {&cmdLap, &cmdCut, &cmdTurn}) button->SetEnabled(enabled);
}

void frmLane::FollowLink() {
  if (cmdLap.Visible() == race_.CommActive) ShowHandButtons();
}

std::int32_t frmLane::ToRaceTime(std::int32_t time) const {
  return AddLong(TimeBase_, time);
}

void frmLane::SetFormParent(Control& frame) {
  frame.SetVisible(false);
  SetVisible(true);
  UpdateLaneColor();
}

void frmLane::UpdateLaneColor() {
  const auto [name, low, high] = owner_.Marking(laneNumber_);
  fraLane.SetCaption(name);
  lblLaneName.SetCaption(name);
  lblLow.SetBackColor(low);
  lblHigh.SetBackColor(high);
}

void frmLane::HidePopUp() {
  cmdShow.SetVisible(false);
  cmdShow.SetTag("");
  popUpOf_ = -1;
}

}  // namespace quorvane
