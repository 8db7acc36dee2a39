// What arriving station frames do to the race, what the console tells the stations, and the keys.

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/stations.h"
#include "base/text.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

bool HoldBit(const StationMessage& frame) {
  return (frame.ssBtn & BitMask[4]) != 0;
}

}  // namespace

void frmJudge::ProcessMessage(const StationMessage& frame) {
  const bool acknowledges = frame.From == kAcknowledgement;
  race_.LaneStartOffset = FrameTime(frame) - (acknowledges ? 2 : 1) * frame.Dif;
  if (frame.To == kConsole) return;
  if (frame.From == kTimers || (acknowledges && frame.To == kTimers)) {
    if (!race_.RaceActive) return;
    desk_.ForEach([&](frmLane& lane, std::size_t i) {
      if (frame.Lit[i] != 0) lane.DoStationLap(frame.Lap[i], clock_.RaceTime(), frame.Lit[i] * 8);
    });
  } else if (frame.From == kFirstJudge && frame.To == kPylonBox) {
    if (!race_.BeingFlown()) return;
    // The stations' clock may have nothing to do with that of a race started by hand.
    const std::int32_t reported = race_.ManualStart ? clock_.RaceTime() : race_.LaneStartOffset;
    desk_.ForEach([&](frmLane& lane, std::size_t i) {
      if (lane.CanDoTurn() && frame.Lit[i] != 0 && !lane.HasTurnOf(reported))
        lane.DoTurn(kTimers, clock_.RaceTime(), frame.Lit[i] * 8);
    });
  } else if (frame.From == kStarter) {
    ProcessStartersMessage(frame);
  }
}

void frmJudge::ProcessStartersMessage(const StationMessage& frame) {
  using Means = Starter::Means;
  const Means means = starter_.FrameMeans(frame.Strt != 0);
  if (means == Means::kNothing) return LeaveRaceByHandAlone(frame);
  // Before its mode is applied: a race must not be recorded under that of the next one.
  if (means == Means::kConcludes) ConcludeForStarter();
  race_.RaceHolding = HoldBit(frame);
  if (!race_.RaceHolding) ApplyRaceMode(frame.Mode);
  if (means == Means::kCallsOff) ReadyForNextRace();
  if (means != Means::kGoesOn || frame.Strt == 0) starter_.Stops();
  if (frame.Strt != 0) StarterRuns();
  FinishStartersMessage(frame);
}

// The clock of a race by hand that is over stays where it was, though frames of a starter still come.
void frmJudge::DisplayStatusForStarter(bool wasHeld) {
  const bool over = race_.RaceActive && race_.RaceDone && race_.ManualStart;
  if (!over || race_.RaceHolding || wasHeld) DisplayStatus();
}

void frmJudge::LeaveRaceByHandAlone(const StationMessage& frame) {
  const bool held = std::exchange(race_.RaceHolding, false);
  if (frame.Strt != 0) {
    starter_.resetAsked = false;
    starter_.RunsNoRaceOfOurs();
    starter_.cuts = frame.Cuts;
    if (starter_.SignalAhead() > Starter::kHeldUp && !std::exchange(starter_.countTold, true)) {
      notices_.Show("The starter is counting. The race started by hand keeps its own clock",
                    Notices::Kind::kCountsOverRace);
    }
  } else if (starter_.StoppedEarly() && race_.BeingFlown()) {
    AskResetForStarter(frame);
  }
  DisplayStatusForStarter(held);
}

void frmJudge::ConcludeForStarter() {
  if (race_.BeingFlown()) FinalizeRace();
  SettleResult();
  if (mnuAutoPrint.Checked() && starter_.Ran()) printer_->PrintHeat(RecordNow());
  cmdSave_Click();
}

void frmJudge::StarterRuns() {
  starter_.resetAsked = false;
  if (!race_.RaceActive) {
    if (!starter_.RunsAnotherRace(door_.Now())) return;
    // However late its first frame is heard: the clock is the starter's, the lanes count from its signal.
    clock_.ResetRaceClock(race_.LaneStartOffset);
    race_.ManualStart = false;
    InitializeRace(0);
    for (const auto& lane : lanes_) {
      if (!starter_.StoppedEarly()) lane->JoinRace();
    }
  } else if (starter_.SetsClock()) {
    FollowStartersClock();
  }
  if (race_.RaceActive) starter_.RunsRace();
}

void frmJudge::FollowStartersClock() {
  const std::int32_t ahead = starter_.ClockAhead();
  clock_.ResetRaceClock(race_.LaneStartOffset);
  desk_.ForEach([&](frmLane& lane, std::size_t) { lane.AdjustTime(-ahead); });
  desk_.Undo().MoveTimes(-ahead);
  desk_.ResultChanged();
  if (std::abs(ahead) > Starter::kNoise && starter_.LapFlown()) {
    ShowNotice("The clock was " + FormatSeconds(std::abs(ahead)) +
               " s off the starter's: the laps so far are " + (ahead > 0 ? "shortened" : "lengthened") +
               " by it");
  }
}

// The question waits until the frame has been handled, so that reception goes on behind it; it is asked once,
// until the starter has been running again.
void frmJudge::AskResetForStarter(const StationMessage& frame) {
  if (starter_.resetAsked) return;
  starter_.resetAsked = true;
  const unsigned serial = raceSerial_;
  door_.Post([this, serial, frame] {
    if (serial != raceSerial_ || !race_.RaceActive) {
      starter_.resetAsked = false;
      return;
    }
    const bool reset = cmdReset_Click(true);
    if (serial != raceSerial_) starter_.resetAsked = false;  // no more to ask about that race
    if (reset) FinishStartersMessage(frame);
  });
}

void frmJudge::FinishStartersMessage(const StationMessage& frame) {
  if (frame.Strt == 0) race_.RaceActive = false;
  // The button only holds in the last seconds of the count.
  const std::int32_t clock = FrameTime(frame);
  const bool held = race_.RaceHolding;
  race_.RaceHolding = HoldBit(frame) && clock >= 54000 && clock < Starter::kSignal;
  if (HoldBit(frame)) {
    ShowMode("Hold", kRed);
  } else {
    ApplyRaceMode(frame.Mode);
    if (race_.BeingFlown() && !CheckRaceComplete() && !starter_.BeforeSignal()) ApplyStarterCuts(frame);
  }
  // Lights that burn before the start signal are no cuts of the race.
  if (!race_.RaceActive || starter_.BeforeSignal()) starter_.cuts = frame.Cuts;
  DisplayStatusForStarter(held);
}

void frmJudge::ApplyStarterCuts(const StationMessage& frame) {
  const auto before = std::exchange(starter_.cuts, frame.Cuts);
  desk_.ForEach([&](frmLane& lane, std::size_t i) {
    if (frame.Cuts[i] == before[i]) return;
    const std::string now = BitString(frame.Cuts[i]);
    const std::string then = BitString(before[i]);
    for (int k = 0; k < 4; ++k) {
      const auto at = static_cast<std::size_t>((3 - k) * 2);
      const std::string pair = now.substr(at, 2);
      if (pair != then.substr(at, 2)) lane.DoCut(pair, k, clock_.RaceTime());
    }
  });
}

// A console that controls counts its race time from the start signal where there is no 60-second count; the
// stations always count from the start of that minute.
void frmJudge::FillRaceData(StationMessage& frame) {
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    frame.Lap[i] = ToByte(lanes_[i]->Counts().laps);
    frame.Lit[i] = lanes_[i]->LightLeft();
    SetCuts(frame, i, lanes_[i]->Counts().pylonCuts);
  }
  const bool addMinute = chkSixtySecondCount.Value() == 0 && link_.IsControllerMode();
  std::int32_t ms = addMinute ? 59999 : 0;
  if (race_.RaceActive && !race_.StartInfoPending) {
    ms = addMinute ? AddLong(clock_.RaceTime(), Starter::kSignal) : clock_.RaceTime();
  }
  race_.StartInfoPending = false;
  SetFrameTime(frame, ms);
  frame.Strt = race_.RaceActive ? 1 : 0;
  frame.Mode = ToByte(race_.RaceMode);
}

void frmJudge::Broadcast(std::int16_t to, std::int16_t from) {
  if (!link_.IsControllerMode()) return;
  LastTimeSent_ = clock_.RaceTime();
  link_.SendMessage(to, from);
}

// The lamps lose their letters as soon as a port is spoken of.
void frmJudge::ShowPort(const std::string& text, bool open) {
  lblComm.SetCaption(text);
  lblComm.SetForeColor(open ? kButtonText : kRed);
  for (Control* lamp : {&lblReadComm, &lblWriteComm}) lamp->SetForeColor(kButtonFace);
}

void frmJudge::ShowTraffic(Traffic lamp, bool lit) {
  Control& label = lamp == Traffic::Received ? lblReadComm : lblWriteComm;
  label.SetBackColor(lit ? kGreen : kButtonFace);
  if (lit) label.SetTag(std::to_string(door_.Now()));
}

void frmJudge::ShowRadioState(const std::string& text, bool bad) {
  lblSilent.SetCaption(text);
  lblSilent.SetForeColor(bad ? kRed : kWindowText);
  lblSilent.SetVisible(!text.empty());
}

// The keys stand in rows of four, one for each lane. A lane that does not fly has none. After the finish they
// enter nothing: a slip of the hand, or a key meant to start the next race, would change a result that nobody
// looks at any more. The buttons stay for late corrections.
void frmJudge::KeyDown(const std::string& key) {
  const auto found = std::ranges::find(kKeyNames, key);
  if (found == kKeyNames.end()) return;
  if (race_.WaitsForSave()) {
    return notices_.Show("Race over: save it first", Notices::Kind::kSaveFirst);
  }
  if (found == kKeyNames.begin() && !race_.RaceActive) {
    if (cmdStart.Enabled()) cmdStart_Click();
    return;
  }
  const auto index = found - kKeyNames.begin();
  frmLane& lane = Lane(static_cast<int>(index % 4));
  if (!lane.Visible()) return;
  if (index < 4) {
    lane.cmdLap_Click();
  } else {
    lane.cntrCut(static_cast<int>(index / 4));
  }
}

}  // namespace quorvane
