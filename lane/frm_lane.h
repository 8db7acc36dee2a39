#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <tuple>

#include "forms/form.h"
#include "forms/platform.h"
#include "lane/lane_log.h"
#include "lane/lane_progress.h"
#include "race/project_values.h"
#include "race/race_state.h"

namespace quorvane {

// What a lane panel asks of the race. Lanes are numbered 1..4 here.
class LaneOwner {
 public:
  virtual ~LaneOwner() = default;

  virtual std::int32_t RaceTime() const = 0;  // the lane's "clock now", ms
  virtual bool ClockRunning() const = 0;      // the race clock's timer is on
  virtual void IssueLapEvent() = 0;
  virtual void IssueRaceEvent() = 0;
  // 1: offer the places anew, from the first on; otherwise offer the next place that is free.
  virtual void SetOrder(int place) = 0;
  // The operator is giving the lane this place: any other one that has it gives it up.
  virtual void TakePlace(int lane, int place) = 0;
  // The lane's result has changed after the race was done: an entry came late, or the operator wrote one.
  virtual void ResultChanged() = 0;
  // These entries have just been made at the panel or with a key. A novice's free lap is none of them: it
  // comes, goes and stays with the lap that is the first.
  virtual void EnteredByHand(int lane, const std::vector<unsigned>& serials) = 0;
  virtual void Corrected(int lane, const Correction& correction) = 0;
  virtual std::string Timestamp() const = 0;  // the computer's time, as the project file keeps one
  // The operator wants to see the lane's log.
  virtual void ShowLog(int lane) = 0;
  virtual DialogAnswer Ask(const DialogBox& box) = 0;
  virtual LaneMarking Marking(int lane) const = 0;
};

// The time base of a lane that does not fly.
inline constexpr std::int32_t kDoesNotFly = -1000000;

// The judging panel of one lane: takes laps, cuts and turns from the operator and the stations, keeps them in
// the lane's event log and shows what the log says. `time` is the race clock in ms; the lane's own race time
// is TimeBase plus that. A procedure that raises a RunTimeError has entered nothing. Reports that come too
// early, too soon or too late are dropped silently.
class frmLane : public Form {
  using enum ControlKind;

 public:
  frmLane(Forms& forms, RaceState& race, LaneOwner& owner, int laneNumber);  // lanes 1..4: frmLane1..frmLane4

  Control& fraLane = Add(Frame, "fraLane");
  Control& chkNovice = AddCaptioned(CheckBox, "chkNovice", "9 Laps", &fraLane);
  Control& cmdOrder = Add(Button, "cmdOrder", &fraLane);
  Control& cmdShow = Add(Button, "cmdShow", &fraLane);
  Control& cmdTurn = AddCaptioned(Button, "cmdTurn", "Turn", &fraLane);
  Control& txtLapTen = Add(TextBox, "txtLapTen", &fraLane);
  Control& txtLapEleven = Add(TextBox, "txtLapEleven", &fraLane);
  Control& tmrLaps = Add(Timer, "tmrLaps");
  Control& cmdCut = AddCaptioned(Button, "cmdCut", "Cut", &fraLane);
  Control& cmdLap = AddCaptioned(Button, "cmdLap", "Lap", &fraLane);
  Control& tmrTurns = Add(Timer, "tmrTurns");
  // The anchor of a cut mark is the lap cell of its column.
  ControlArray lblCut{*this, Label, "lblCut", 0, kLastCutMark, &fraLane};
  ControlArray lblLap{*this, Label, "lblLap", 0, kLastLapCell, &fraLane};
  ControlArray lblHdr{*this, Label, "lblHdr", 0, kLastLapCell, &fraLane};
  Control& lblLaneName = Add(Label, "lblLaneName", &fraLane);
  Control& lblStatus = Add(Label, "lblStatus", &fraLane);
  Control& lblLow = Add(Label, "lblLow", &fraLane);
  Control& lblHigh = Add(Label, "lblHigh", &fraLane);
  // How far the lane has come; see ShowProgress.
  Control& lblFlown = Add(Label, "lblFlown", &fraLane);
  Control& lblLastLap = Add(Label, "lblLastLap", &fraLane);
  Control& lblGap = Add(Label, "lblGap", &fraLane);
  Control& mnuLog = AddCaptioned(Menu, "mnuLog", "&Laps and Cuts ...");  // of the panel's own menu

  // Laps. With kDoesNotFly the lane counts as finished, has no place, and keeps its time base.
  void InitializeRace(std::int32_t timeBase);
  // lockOut: ms in which a station's next lap is refused.
  void DoLap(std::int32_t time, std::int32_t lockOut);
  // Whether the station, which does not see a novice's free lap, counts one that is not logged yet.
  bool CanDoLap(std::uint8_t stationLaps) const;
  // A lap of the station, if it can be one.
  void DoStationLap(std::uint8_t stationLaps, std::int32_t time, std::int32_t lockOut);
  int CountLaps() const { return log_.CountLaps(); }
  bool IsFinished() const;
  bool Loaded() const { return loadedFai_.has_value(); }  // shows a race from the project file
  // Whether the mode of the race that the panel shows flies this lane.
  bool Flies() const { return !IsFai() || laneNumber_ <= kFaiLanes; }
  void UpdateLapTime(std::int32_t time);
  // The race clock has been moved by so many ms: what was entered moves with it.
  void AdjustTime(std::int32_t by);
  // For a race whose laps before now were not heard: the lane has its time for the next one from here on.
  void JoinRace();
  // For one of which nothing was heard since a crash: nearly as much, but a lap is taken at once.
  void ResumeFlight();
  void cmdLap_Click();

  // Turns and cuts.
  void DoCut(const std::string& cutCode, int source, std::int32_t time);
  void cntrCut(int pylon);                                            // 1..3
  void DoTurn(int source, std::int32_t time, std::int32_t interval);  // interval: ms that the turn is shown
  bool CanDoTurn() const;
  // Whether a report of this moment (ms of the race clock) is of a turn that was counted already: a
  // program that was held up, that died, or in which the turn was struck, hears the same report again.
  bool HasTurnOf(std::int32_t time) const;

  // Putting entries of the log right, named by their serials. Counts, cells and result follow, and a lane
  // that is still flown gets nearly the time of a whole lap from now. An entry that is not there stays so.
  std::optional<LaneLog::Taken> Strike(unsigned serial, const char* what = "struck");
  void PutBack(const LaneLog::Taken& taken, const char* what = "redone");
  std::optional<unsigned> InsertLap(std::int32_t lapTime);  // ms of race time; none: no lap can be there
  void MoveCut(unsigned serial, int pylon);                 // 1..3
  bool CreditsLap() const;                                  // a novice's
  // Of the race that the panel shows, until it shows another one.
  unsigned RaceSerial() const { return raceSerial_; }

  // Finish and places.
  std::int32_t GetFinal();  // kNoResult without a result
  void FinalizeRace();
  // What the status reads: a place, a time, why there is none. Its position is "1".."4", "100" without a
  // result, empty before the ranking, "Locked" when the operator has given it.
  const std::string& Status() const { return status_; }
  const std::string& Position() const { return position_; }
  bool StatusLocked() const { return position_ == "Locked"; }
  int PlaceByHand() const;         // 1..4; 0 when the status is not locked, or no place
  void Rank(int place);            // 1..4; 0: it has no result
  void LaneOrder(int place);       // offers place 1..4, or none with 5; an error otherwise; 1 begins anew
  void OfferPlace(int place);      // the same, but goes on with the places given so far
  void GiveUpPlace();              // the lane is ranked by its time again
  std::uint8_t LightLeft() const;  // of the lap or turn light, in units of 8 ms, at most 255

  // The panel.
  void SetFormParent(Control& frame);  // the console's, in whose place it stands
  void UpdateLaneColor();
  // The hands' buttons come back when the link has dropped, and go when it is there again.
  void FollowLink();
  void ShowHandButtons();

  // Laps flown of those that are due, the last one's time, the gap to the leader, which the owner knows.
  LaneProgress Progress() const;
  void ShowProgress(const LaneProgress& progress, const std::string& gap);

  // `section` is that of the race, "Race7" or "Refly2"; the lane's own is "Race7_Lane3". A loaded lane is
  // recounted under the mode that the race's section names and counts as finished until the next
  // InitializeRace. Values that are read may be anything. What is `there` behind the log is emptied.
  void SaveLane(const std::string& section, const KeepValue& keep, const ReadValue& there = {}) const;
  void LoadLane(const std::string& section, const ReadValue& read);
  // The same of a race that is flown, to be taken up after the program has died. Its lights are lost.
  void KeepRunning(const std::string& section, const KeepValue& keep) const;
  void ResumeRace(const std::string& section, const ReadValue& read);
  // The log that the section's lane has in the file.
  LaneLog LogIn(const std::string& section, const ReadValue& read) const;
  // The revision of its log, and what of a running race is not in that: another one whenever it changes.
  using RunningState = std::tuple<unsigned, std::int32_t, std::int32_t, std::array<std::int32_t, 3>,
                                  std::string, std::string, int, bool>;
  RunningState Running() const;

  // The lane's variables.
  int Number() const { return laneNumber_; }  // 1..4
  std::int32_t TimeBase() const { return TimeBase_; }
  std::int32_t LastLapTime() const { return LastLapTime_; }
  bool InNoviceClick() const { return InNoviceClick_; }
  int EventCount() const { return log_.EventCount(); }
  const LaneLog& Events() const { return log_; }
  const LapRecount& Counts() const { return counts_; }
  bool NeedsCutDisplay() const { return NeedsCutDisplay_; }
  int MissedPylon() const { return MissedPylon_; }
  const std::array<std::int32_t, 3>& MissedPylonTimes() const { return MissedPylonTimes_; }
  std::int16_t Turns() const { return Turns_; }
  std::int32_t TurnTimerEnd() const { return TurnTimerEnd_; }

 private:
  static constexpr std::int32_t kLapOverdue = 30001;  // ms after the last lap

  std::int32_t ToRaceTime(std::int32_t time) const { return AddLong(TimeBase_, time); }
  bool IsFai() const { return loadedFai_.value_or(race_.IsFaiMode); }
  bool HasCell(int lap) const;

  void chkNovice_Click();
  void ShowNovice();
  void cmdTurn_Click();
  void lblCut_MouseMove(int index);
  void cmdOrder_Click();
  void lblStatus_Click();
  void TurnToAnotherRace();
  void ClearCells();
  void ShowLoggedLaps();
  void EnableHandButtons(bool enabled);
  void FreezeCell(std::int32_t time);
  void ShowEleventhCell();
  void EnterPanelCut(int missedPylon, bool accepted);
  void EnterByHand(const std::function<void()>& enter);
  std::int32_t CorrectionTime() const;
  bool NoviceWithoutLap() const;
  bool HasLapOf(int stationLaps) const;
  int StationLapsTaken() const;
  void NoteRefused(int stationLaps, std::int32_t time);
  std::int64_t SinceLastLap() const { return std::int64_t{owner_.RaceTime()} + TimeBase_ - LastLapTime_; }
  void Correct(const std::function<void()>& change);
  void ShowCorrected(bool timedOut);
  void ResetLocks(const LaneEvent& struck);
  void RecalculateCuts();
  void HidePopUp();
  void SetStatus(std::string text);
  void SetPosition(std::string position);
  void ShowCuts(int cuts);
  void DisplayTotals();
  void DisplayCutTotals();
  void ShowResult();
  void EntryMade();

  RaceState& race_;
  LaneOwner& owner_;
  const int laneNumber_;

  std::int32_t TimeBase_ = 0;
  std::int32_t LastLapTime_ = 0;
  bool InNoviceClick_ = false;
  LaneLog log_;
  LapRecount counts_;
  bool NeedsCutDisplay_ = false;
  int MissedPylon_ = 0;
  std::array<std::int32_t, 3> MissedPylonTimes_ = {};
  std::int16_t Turns_ = 0;
  std::int32_t TurnTimerEnd_ = 0;
  int stationLaps_ = 0;  // that the station had counted when its last lap was taken
  struct Refused {       // the station's lap that was first reported when one by hand was there for it
    int laps = 0;
    std::int32_t time = 0;
    unsigned by = 0;  // the serial of that
  };
  Refused refused_;

  std::string status_;
  std::string position_;
  int placeOffered_ = 0;          // 1..4, 5 after the last; 0: none yet
  int cutsShown_ = 0;             // before the finish, as the Cut button tells
  int popUpOf_ = -1;              // the cut mark that the pop-up repeats; -1: none
  std::int64_t lapLightEnd_ = 0;  // race clock at which the lap lock-out ends
  bool doesNotFly_ = false;
  std::optional<bool> loadedFai_;  // the mode of a race that is shown from the project file
  unsigned raceSerial_ = 0;        // changes whenever the lane turns to another race
};

}  // namespace quorvane
