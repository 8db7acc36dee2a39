#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "console/frm_log.h"
#include "console/notices.h"
#include "console/undo.h"
#include "forms/door.h"
#include "race/race_state.h"

namespace quorvane {

// The four lane panels of the console: makes them, answers what they ask of the race, ranks them, and knows
// what the hands have entered in them. Times are ms of race time.
class LaneDesk : private LaneOwner {
 public:
  // Tells the stations of the race, from address `from`.
  using Tell = std::function<void(std::int16_t to, std::int16_t from)>;

  // `tick`: the timer of the race clock.
  LaneDesk(Door& door, RaceState& race, const RaceClock& clock, const Control& tick, Notices& notices,
           Tell tell);

  const LanePanels& Panels() const { return lanes_; }
  UndoStack& Undo() { return undo_; }
  frmLog& Log() { return log_; }

  // `laneStart`: see Starter::RaceBegins.
  void InitializeRace(std::int32_t laneStart);
  void IssueRaceEvent() override { tell_(6, 3); }
  void ShowLog(int lane) override;
  // Each lane's part of a frame, by index. One that refuses its own costs the others nothing.
  void ForEach(const std::function<void(frmLane& lane, std::size_t index)>& part);

  void RankLanes();
  // In each panel how far its lane has come. Does nothing while nothing has changed.
  void ShowProgress();
  void SetOrder(int place) override;
  void ResultChanged() override;

 private:
  std::int32_t RaceTime() const override { return clock_.RaceTime(); }
  bool ClockRunning() const override { return tick_.Enabled(); }
  void IssueLapEvent() override { tell_(3, 4); }
  void TakePlace(int lane, int place) override;
  void EnteredByHand(int lane, const std::vector<unsigned>& serials) override {
    undo_.Entered(lane, serials);
  }
  void Corrected(int lane, const Correction& correction) override;
  std::string Timestamp() const override { return TimestampText(door_.LocalNow()); }
  DialogAnswer Ask(const DialogBox& box) override { return door_.Ask(box); }
  LaneMarking Marking(int lane) const override;
  int NextFreePlace(int place) const;

  Door& door_;
  RaceState& race_;
  const RaceClock& clock_;
  const Control& tick_;
  Notices& notices_;
  const Tell tell_;
  LanePanels lanes_;
  // Of what was shown last: of each lane its race, the state of its log, how it flies.
  std::vector<unsigned> progressOf_;
  UndoStack undo_{lanes_};
  frmLog log_{door_, lanes_, undo_};
};

}  // namespace quorvane
