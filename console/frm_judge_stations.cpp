// What arriving station frames do to the race.

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/bits.h"
#include "base/time_text.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

constexpr std::int32_t kStartSignal = 60000;  // on the starter's clock
constexpr std::int32_t kEarlyStop = 65000;    // a stop up to here calls the start off
constexpr std::int32_t kHeldUp = 1000;        // ms by which a frame may come late
constexpr std::int32_t kNoise = 50;           // ms by which two clocks that agree may differ

bool HoldBit(const StationMessage& frame) {
  return (frame.ssBtn & BitMask[4]) != 0;
}

// The button only holds in the last seconds of the count.
bool Holds(const StationMessage& frame) {
  const std::int32_t clock = FrameTime(frame);
  return HoldBit(frame) && clock >= 54000 && clock < kStartSignal;
}

}  // namespace

void frmJudge::ProcessMessage(const StationMessage& frame) {
  MessageRaceTime_ = RaceTime();
  StationClock_ = FrameTime(frame);
  LaneStartOffset_ = SubtractLong(StationClock_, (frame.From == kAcknowledgement ? 2 : 1) * frame.Dif);
  if (frame.To != kConsole) {
    if (frame.From == kTimers || (frame.From == kAcknowledgement && frame.To == kTimers)) {
      ProcessTimersMessage(frame);
    } else if (frame.From == kFirstJudge && frame.To == kPylonBox) {
      ProcessPylonMessage(frame);
    } else if (frame.From == kStarter) {
      ProcessStartersMessage(frame);
    }
  }
}

// A lane that refuses its part of a frame (its log is full) must not cost the lanes after it theirs.
void frmJudge::ForEachLane(const std::function<void(frmLane&, std::size_t)>& part) {
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    try {
      part(*lanes_[i], i);
    } catch (const SubscriptError&) {
      ShowNotice("Lane " + std::to_string(i + 1) + " takes no more entries: its log is full");
    } catch (const RunTimeError&) {  // ends this lane's part only
    }
  }
}

void frmJudge::ProcessTimersMessage(const StationMessage& frame) {
  if (!race_.RaceActive) return;
  ForEachLane([&](frmLane& lane, std::size_t i) {
    if (lane.CanDoLap(frame.Lap[i]) && frame.Lit[i] != 0) lane.DoLap(MessageRaceTime_, frame.Lit[i] * 8);
  });
}

void frmJudge::ProcessPylonMessage(const StationMessage& frame) {
  if (!race_.RaceActive || race_.RaceDone) return;
  ForEachLane([&](frmLane& lane, std::size_t i) {
    if (lane.CanDoTurn() && frame.Lit[i] != 0) lane.DoTurn(kTimers, MessageRaceTime_, frame.Lit[i] * 8);
  });
}

void frmJudge::ProcessStartersMessage(const StationMessage& frame) {
  const StarterMeans means = WhatTheStarterMeans(frame);
  if (means == StarterMeans::kNothing) {
    LeaveRaceByHandAlone(frame);
    return;
  }
  // Before its mode is applied: a race must not be recorded under that of the next one.
  if (means == StarterMeans::kConcludes) ConcludeForStarter();
  race_.RaceHolding = HoldBit(frame);
  if (!race_.RaceHolding) ApplyRaceMode(frame.Mode);
  if (means == StarterMeans::kCallsOff) ReadyForNextRace();
  if (means != StarterMeans::kGoesOn || frame.Strt == 0) raceOver_ = kNoRaceYet;
  if (frame.Strt != 0) StarterRuns();
  FinishStartersMessage(frame);
}

// A race by hand is not the starter's to end as long as it only idles or counts, and a race that was flown is
// not called off by a starter that starts anew.
frmJudge::StarterMeans frmJudge::WhatTheStarterMeans(const StationMessage& frame) const {
  if (!race_.RaceActive) return StarterMeans::kGoesOn;
  const bool flownByHand = race_.ManualStart && RaceBeingFlown();
  if (frame.Strt != 0) {
    if (flownByHand) return CountsAfterSignal() ? StarterMeans::kNothing : StarterMeans::kGoesOn;
    if (!BeginsNextRace()) return StarterMeans::kGoesOn;
  } else {
    const bool early = LaneStartOffset_ <= kEarlyStop;
    if (race_.ManualStart && !starterClock_ && !(early && flownByHand)) return StarterMeans::kNothing;
    if (!early) return StarterMeans::kConcludes;
    if (flownByHand && !HasBeenFlown()) return StarterMeans::kNothing;
  }
  return HasBeenFlown() ? StarterMeans::kConcludes : StarterMeans::kCallsOff;
}

// The starter's clock goes on rising during a race, together with ours; that of the next one falls back. A
// second is allowed for frames that were held up. What rises all the same is the next race when we have heard
// nothing of how that came about, but know that ours has been flown.
bool frmJudge::BeginsNextRace() const {
  const bool counts = LaneStartOffset_ < kStartSignal;
  if (!starterClock_) return counts;
  if (LaneStartOffset_ < *starterClock_ - kHeldUp) return counts || race_.RaceDone;
  if (counts) return *starterClock_ < kStartSignal && (race_.RaceDone || LapFlown());
  // The next race begins a whole count later at least, however late a frame may come. One of which nothing is
  // known but its count may also have been held, and is about to be flown.
  return race_.RaceDone && !race_.ManualStart && ClockAhead() > (NothingFlown() ? 5 * kHeldUp : kStartSignal);
}

// By how much our clock is further on than the starter's.
std::int32_t frmJudge::ClockAhead() const {
  return SubtractLong(RaceTime(), LaneStartOffset_);
}

// The starter counts although the race that was started by hand has had its start signal.
bool frmJudge::CountsAfterSignal() const {
  return LaneStartOffset_ < kStartSignal && AddLong(RaceTime(), laneStart_) >= kStartSignal;
}

bool frmJudge::LapFlown() const {
  return std::any_of(lanes_.begin(), lanes_.end(), [](const auto& lane) { return lane->CountLaps() > 0; });
}

// Nobody has told anything of the race since its count, or since its start by hand.
bool frmJudge::NothingFlown() const {
  if (!race_.ManualStart && starterClock_.value_or(kStartSignal) >= kStartSignal) return false;
  return std::all_of(lanes_.begin(), lanes_.end(),
                     [](const auto& lane) { return lane->EventCount() == 0 && !lane->StatusLocked(); });
}

// Its laps tell as well as the starter's clock, of which we may have heard nothing since the signal.
bool frmJudge::HasBeenFlown() const {
  if (starterClock_.value_or(0) > kEarlyStop || (!race_.ManualStart && LapFlown())) return true;
  const auto finished = [](const auto& lane) { return lane->IsFinished(); };
  const bool done = race_.RaceDone || std::all_of(lanes_.begin(), lanes_.end(), finished);
  return done && !NothingFlown();
}

void frmJudge::LeaveRaceByHandAlone(const StationMessage& frame) {
  race_.RaceHolding = false;
  if (frame.Strt != 0) {
    resetAskedForStarter_ = false;
    starterClock_.reset();
    starterCuts_ = frame.Cuts;
    if (AddLong(RaceTime(), laneStart_) - LaneStartOffset_ > kHeldUp && !countTold_) {
      countTold_ = true;
      ShowNotice(kCountsOverRace);
    }
  } else if (LaneStartOffset_ <= kEarlyStop && RaceBeingFlown()) {
    AskResetForStarter(frame);
  }
  DisplayStatus();
}

void frmJudge::ConcludeForStarter() {
  if (RaceBeingFlown()) {
    FinalizeRace();
    race_.RaceDone = true;
  }
  SettleResult();
  if (mnuAutoPrint.Checked() && starterClock_) cmdPrint_Click();
  cmdSave_Click();
}

void frmJudge::StarterRuns() {
  resetAskedForStarter_ = false;
  if (!race_.RaceActive) {
    if (SignalSinceLastRace()) StartByStarter();
  } else if (SetsClock()) {
    FollowStartersClock();
  }
  if (race_.RaceActive) starterClock_ = LaneStartOffset_;
}

// A starter that runs on after its race was saved or reset runs no other one.
bool frmJudge::SignalSinceLastRace() const {
  return door_.Now() - LaneStartOffset_ + kStartSignal > raceOver_;
}

// The count does. After that a frame may come late but never early: when the starter is further on than we
// are, our clock was set by a late one (twice, lest a damaged frame sets it). The first frame after the count
// may also tell that the count was held unheard; if it was only late, the next ones tell that. A finished
// race is still set right until it is saved.
bool frmJudge::SetsClock() {
  if (LaneStartOffset_ < kStartSignal) return !race_.RaceDone;
  if (race_.ManualStart) return false;
  const std::int32_t ahead = ClockAhead();
  const bool wasEarly = std::exchange(starterEarly_, ahead < -kNoise);
  if (starterEarly_) return wasEarly;
  return ahead > kNoise && starterClock_.value_or(kStartSignal) < kStartSignal;
}

void frmJudge::FollowStartersClock() {
  const std::int32_t ahead = ClockAhead();
  clock_.ResetRaceClock(LaneStartOffset_, "ProcessStartersMessage");
  MessageRaceTime_ = LaneStartOffset_;
  ForEachLane([&](frmLane& lane, std::size_t) { lane.AdjustTime(-ahead); });
  ResultChanged();
  if (std::abs(ahead) > kNoise && LapFlown()) {
    ShowNotice("The clock was " + FormatSeconds(std::abs(ahead)) +
               " s off the starter's: the laps so far are " + (ahead > 0 ? "shortened" : "lengthened") +
               " by it");
  }
}

// However late the first frame is heard, the clock is the starter's from then on, and the lanes count from
// its start signal.
void frmJudge::StartByStarter() {
  clock_.ResetRaceClock(LaneStartOffset_, "ProcessStartersMessage");
  MessageRaceTime_ = LaneStartOffset_;
  starterCuts_ = {};
  starterEarly_ = false;
  race_.ManualStart = false;
  InitializeRace(0);
  if (LaneStartOffset_ <= kEarlyStop) return;
  for (const auto& lane : lanes_) lane->JoinRace();
}

// The question waits until the frame has been handled, so that reception goes on behind it; it is asked once,
// until the starter has been running again.
void frmJudge::AskResetForStarter(const StationMessage& frame) {
  if (resetAskedForStarter_) return;
  resetAskedForStarter_ = true;
  const unsigned serial = raceSerial_;
  door_.Post([this, serial, frame] {
    if (serial != raceSerial_ || !race_.RaceActive) {
      resetAskedForStarter_ = false;
      return;
    }
    const bool reset = cmdReset_Click(true);
    if (serial != raceSerial_) resetAskedForStarter_ = false;  // no more to ask about that race
    if (reset) FinishStartersMessage(frame);
  });
}

void frmJudge::FinishStartersMessage(const StationMessage& frame) {
  if (frame.Strt == 0) race_.RaceActive = false;
  race_.RaceHolding = Holds(frame);
  if (HoldBit(frame)) {
    lblRaceMode.SetCaption("Hold");
    lblRaceMode.SetForeColor(kRed);
  } else {
    ApplyRaceMode(frame.Mode);
    if (RaceBeingFlown()) {
      bool allFinished = false;
      CheckRaceComplete(allFinished);
      if (!allFinished && LaneStartOffset_ >= kStartSignal) ApplyStarterCuts(frame);
    }
  }
  // Lights that burn before the start signal are no cuts of the race.
  if (!race_.RaceActive || LaneStartOffset_ < kStartSignal) starterCuts_ = frame.Cuts;
  DisplayStatus();
}

void frmJudge::ApplyStarterCuts(const StationMessage& frame) {
  const auto before = std::exchange(starterCuts_, frame.Cuts);
  ForEachLane([&](frmLane& lane, std::size_t i) {
    if (frame.Cuts[i] == before[i]) return;
    const std::string now = BitString(frame.Cuts[i]);
    const std::string then = BitString(before[i]);
    for (int k = 0; k < 4; ++k) {
      const auto at = static_cast<std::size_t>((3 - k) * 2);
      const std::string pair = now.substr(at, 2);
      if (pair != then.substr(at, 2)) lane.DoCut(pair, k, MessageRaceTime_);
    }
  });
}

}  // namespace quorvane
