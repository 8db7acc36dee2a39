// What arriving station frames do to the race.

#include "common/bits.h"
#include "console/frm_judge.h"

namespace quorvane {
namespace {

constexpr std::int32_t kStartSignal = 60000;  // on the starter's clock
constexpr std::int32_t kEarlyStop = 65000;    // a stop up to here calls the start off

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
  // After the dispatch: the handlers compare with the station's frame before this one.
  if (frame.From < frmSerialPort::kLastStationMessages) link_->LastStationMessage(frame.From) = frame;
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
  ForEachLane([&](frmLane& lane, std::size_t i) {
    if (lane.CanDoLap(frame.Lap[i]) && frame.Lit[i] != 0) lane.DoLap(MessageRaceTime_, frame.Lit[i] * 8);
  });
}

void frmJudge::ProcessPylonMessage(const StationMessage& frame) {
  if (race_.RaceDone) return;
  ForEachLane([&](frmLane& lane, std::size_t i) {
    if (lane.CanDoTurn() && frame.Lit[i] != 0) lane.DoTurn(kTimers, MessageRaceTime_, frame.Lit[i] * 8);
  });
}

void frmJudge::ProcessStartersMessage(const StationMessage& frame) {
  // Nobody has saved the finished race yet: it must not be lost, nor recorded under the next one's mode.
  if (BeginsNextCount(frame)) cmdSave_Click();
  race_.RaceHolding = HoldBit(frame);
  if (!race_.RaceHolding) ApplyRaceMode(frame.Mode);
  if (frame.Strt != 0) {
    StarterRuns();
  } else {
    starterMayStart_ = true;
    if (race_.RaceActive && !StarterStopped(frame)) {
      race_.RaceHolding = Holds(frame);
      DisplayStatus();
      return;
    }
  }
  FinishStartersMessage(frame);
}

// The count of the race itself goes on rising; only the next one falls back. A second is allowed for frames
// that were held up.
bool frmJudge::BeginsNextCount(const StationMessage& frame) const {
  if (frame.Strt == 0 || LaneStartOffset_ >= kStartSignal || !race_.RaceActive || !race_.RaceDone)
    return false;
  return !starterClock_ || LaneStartOffset_ < *starterClock_ - 1000;
}

void frmJudge::StarterRuns() {
  resetAskedForStarter_ = false;
  const bool counting = LaneStartOffset_ < kStartSignal;
  if (counting) {
    starterMayStart_ = true;
    clock_.ResetRaceClock(LaneStartOffset_, "ProcessStartersMessage");
    for (const auto& lane : lanes_) lane->AdjustTime();
  }
  if (!race_.RaceActive && starterMayStart_) {
    // A start joined in its second minute: the lanes take their time from the starter's clock, so the race
    // clock has to begin at nothing and not where the race before it left off.
    if (!counting) clock_.ResetRaceClock(0, "ProcessStartersMessage");
    race_.ManualStart = false;
    InitializeRace();
  }
  starterMayStart_ = counting;
  if (race_.RaceActive) starterClock_ = LaneStartOffset_;
}

// The starter says "stopped" while a race is active. False: the race is not the starter's to end, and the
// frame changes nothing more.
bool frmJudge::StarterStopped(const StationMessage& frame) {
  // A starter that only idles on the air leaves a race by hand alone; its places may still have to be given.
  const bool idles = race_.ManualStart && !starterClock_;
  if (idles && race_.RaceDone) return false;
  if (LaneStartOffset_ <= kEarlyStop) {
    if (race_.ManualStart && RaceBeingFlown()) {
      bool allFinished = false;
      CheckRaceComplete(allFinished);
      if (!allFinished) {
        AskResetForStarter(frame);
        return false;
      }
    }
    cmdReset_Click();
    return true;
  }
  if (idles) return false;
  if (RaceBeingFlown()) {
    FinalizeRace();
    race_.RaceDone = true;
  }
  if (mnuAutoPrint.Checked()) cmdPrint_Click();
  cmdSave_Click();
  return true;
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
    const bool reset = cmdReset_Click();
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
  DisplayStatus();
}

void frmJudge::ApplyStarterCuts(const StationMessage& frame) {
  const StationMessage& before = link_->LastStationMessage(kStarter);
  ForEachLane([&](frmLane& lane, std::size_t i) {
    if (frame.Cuts[i] == before.Cuts[i]) return;
    const std::string now = BitString(frame.Cuts[i]);
    const std::string then = BitString(before.Cuts[i]);
    for (int k = 0; k < 4; ++k) {
      const auto at = static_cast<std::size_t>((3 - k) * 2);
      const std::string pair = now.substr(at, 2);
      if (pair != then.substr(at, 2)) lane.DoCut(pair, k, MessageRaceTime_);
    }
  });
}

}  // namespace quorvane
