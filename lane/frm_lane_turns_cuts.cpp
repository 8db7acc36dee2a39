// Turns and pylon cuts.

#include "base/checked.h"
#include "base/text.h"
#include "lane/frm_lane.h"

namespace quorvane {
namespace {

constexpr std::int32_t kPanelTurn = 2000;    // ms that a turn of the operator is shown
constexpr std::int32_t kPreviousLap = 4000;  // so soon after a lap, a cut at pylon 2 or 3 belongs before it
constexpr std::int32_t kBetweenMissedPylons = 3000;

// The judge's two lights for a lane.
int CutsOfCode(const std::string& code) {
  if (code == "1o" || code == "o1") return 1;
  return code == "11" ? 2 : 0;
}

}  // namespace

void frmLane::DoCut(const std::string& cutCode, int source, std::int32_t time) {
  const std::int32_t t = ToRaceTime(time);
  if (doesNotFly_) return;
  if (counts_.laps > kLastLapCell) {
    NeedsCutDisplay_ = true;
    return;
  }
  const bool late =
      (source == 1 || source == 2) && counts_.laps >= 1 && std::int64_t{t} - LastLapTime_ < kPreviousLap;
  log_.EnterCuts({.wanted = source == kPanelSource ? LeadingInteger(cutCode) : CutsOfCode(cutCode),
                  .source = source,
                  .time = t,
                  .laps = counts_.laps,
                  .lapOfCut = counts_.laps - (late ? 1 : 0),
                  .cutsOnLane = counts_.cutCount,
                  .missedPylon = MissedPylon_});
  RecalculateCuts();
  owner_.IssueRaceEvent(true);
  EntryMade();
}

void frmLane::cmdCut_Click() {
  EnterPanelCut(0, race_.RaceActive);
}

void frmLane::cntrCut(int pylon) {
  std::int32_t& lastTime = MissedPylonTimes_[static_cast<std::size_t>(pylon - 1)];
  const std::int32_t now = owner_.RaceTime();
  if (now <= std::int64_t{lastTime} + kBetweenMissedPylons) return;
  EnterPanelCut(pylon, race_.RaceActive && counts_.cutCount < 4);
  lastTime = now;
}

// One more cut than the lane has, named after the missed pylon (0: none). A refused one leaves no name
// behind.
void frmLane::EnterPanelCut(int missedPylon, bool accepted) {
  const int before = MissedPylon_;
  MissedPylon_ = missedPylon;
  if (!accepted) return;
  try {
    DoCut(std::to_string(counts_.cutCount + 1), kPanelSource, owner_.RaceTime());
  } catch (const RunTimeError&) {
    MissedPylon_ = before;
    throw;
  }
}

void frmLane::DoTurn(int source, std::int32_t time, std::int32_t interval) {
  const std::int32_t t = ToRaceTime(time);
  if (doesNotFly_) return;
  const std::int32_t end = AddLong(owner_.RaceTime(), interval);
  log_.AddEvent({"T", t, source, counts_.laps, MissedPylon_});
  tmrLaps.SetEnabled(false);
  tmrTurns.SetInterval(interval);
  tmrTurns.SetEnabled(true);
  lblStatus.SetBackColor(kGreen);
  TurnTimerEnd_ = end;
  // The formula of the speed, 0.50795 / ms * 0.68181818, is below 1 for any time since the last lap.
  if (counts_.laps > 1 && !StatusLocked()) SetStatus("0 MPH");
  RecalculateCuts();
  owner_.IssueRaceEvent(true);
  EntryMade();
}

bool frmLane::CanDoTurn() const {
  return !tmrTurns.Enabled() && !IsFinished();
}

void frmLane::cmdTurn_Click() {
  if (!race_.RaceActive || !CanDoTurn()) return;
  log_.Require(1);
  MissedPylon_ = 0;
  DoTurn(kPanelSource, owner_.RaceTime(), kPanelTurn);
}

void frmLane::tmrTurns_Timer() {
  TurnTimerEnd_ = 0;
  tmrTurns.SetEnabled(false);
  lblStatus.SetBackColor(kWindow);
}

void frmLane::RecalculateCuts() {
  NeedsCutDisplay_ = false;
  const CutRecount r = RecountCuts(log_, IsFai());
  counts_ = r;
  Turns_ = r.turns;
  for (const CutMark& mark : r.marks) {
    Control& label = lblCut[mark.index];
    label.SetCaption(mark.caption);
    label.SetTag(mark.tag);
    label.SetBackColor(mark.grey ? kButtonFace : kWhite);
    label.SetAnchor(&lblLap[mark.column]);
    label.SetVisible(true);
  }
  const int marks = r.turns + r.cutCount;
  for (int i = marks; i <= kLastCutMark; ++i) lblCut[i].SetVisible(false);
  if (popUpOf_ >= marks) HidePopUp();
  ShowEleventhCell();
  DisplayTotals();
}

// A cut that is entered or withdrawn after the tenth lap decides whether there is an eleventh.
void frmLane::ShowEleventhCell() {
  if (Loaded() || doesNotFly_) return;
  Control& cell = lblLap[kLastLapCell];
  const bool owed = counts_.lapTarget > kLastLapCell && counts_.laps >= kLastLapCell;
  if (cell.Visible() == owed) return;
  cell.SetCaption("");
  cell.SetBackColor(kWhite);
  cell.SetVisible(owed);
  if (owed) lblLap[kLastLapCell - 1].SetBackColor(kSilver);  // the tenth is not the finish any more
}

void frmLane::ShowCuts(int cuts) {
  cutsShown_ = cuts;
  cmdCut.SetTag(std::to_string(cuts));
  cmdCut.SetCaption(cuts == 0 ? "Cut" : "Cuts(" + std::to_string(cuts) + ")");
}

void frmLane::DisplayCutTotals() {
  const int cuts = counts_.cutsBeforeFinish;
  if (cuts == cutsShown_ || StatusLocked()) return;
  ShowCuts(cuts);
  SetStatus(cuts >= 2 ? "DBL CUT" : "");
  lblStatus.SetForeColor(cuts == 0 ? kWindowText : kRed);
}

void frmLane::lblCut_MouseMove(int index) {
  Control& mark = lblCut[index];
  if (popUpOf_ == index) return;
  popUpOf_ = index;
  cmdShow.SetAnchor(&mark);
  cmdShow.SetCaption(mark.Caption());
  cmdShow.SetVisible(true);
  cmdShow.SetTag(std::to_string(index));
}

}  // namespace quorvane
