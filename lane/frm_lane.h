#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "forms/form.h"
#include "lane/lane_log.h"
#include "lane/lane_owner.h"
#include "race/race_state.h"

namespace quorvane {

inline constexpr int kFaiLanes = 3;  // that an FAI mode flies
inline constexpr std::array kPlaceWords = {"First", "Second", "Third", "Fourth"};

// The judging panel of one lane: takes laps, cuts and turns from the operator and, through the console, from
// the stations, keeps them in the lane's event log and shows what the log says.
//
// `time` is a value of the race clock in ms; the lane's own race time is TimeBase plus that. A procedure that
// raises a RunTimeError has entered nothing. Reports that come too early, too soon or too late are dropped
// silently.
class frmLane : public Form {
 public:
  frmLane(Forms& forms, RaceState& race, LaneOwner& owner, int laneNumber);  // lanes 1..4: frmLane1..frmLane4

  Control& fraLane;
  Control& chkNovice;
  Control& cmdOrder;
  Control& cmdShow;
  Control& cmdTurn;
  Control& txtLapTen;
  Control& txtLapEleven;
  Control& tmrLaps;
  Control& cmdCut;
  Control& cmdLap;
  Control& tmrTurns;
  ControlArray lblCut;  // 0..39; a mark's anchor is the lap cell of its column
  ControlArray lblLap;  // 0..10
  ControlArray lblHdr;  // 0..10
  Control& lblLaneName;
  Control& lblStatus;
  Control& lblLow;
  Control& lblHigh;

  // Laps. -1000000 for a lane that does not fly: it counts as finished and keeps its time base and controls,
  // but for what it shows of a loaded race. It has no place.
  void InitializeRace(std::int32_t timeBase);
  void DoLap(std::int32_t time,
             std::int32_t lockOut);  // lockOut: ms in which a station's next lap is refused
  // Whether the station's count includes a lap that is not logged yet. The free lap of a novice is added to
  // the station's count here.
  bool CanDoLap(std::uint8_t stationLaps) const;
  int CountLaps() const { return log_.CountLaps(); }
  bool IsFinished() const;
  bool Loaded() const { return loaded_; }  // shows a race from the project file
  // Whether the mode of the race that the panel shows flies this lane.
  bool Flies() const { return !IsFai() || laneNumber_ <= kFaiLanes; }
  void RecalculateLaps(bool display);
  void UpdateLapTime(std::int32_t time);
  // The race clock has been moved by so many ms: what was entered moves with it.
  void AdjustTime(std::int32_t by);
  // For a race whose laps before now were not heard: the lane has its time for the next one from here on.
  void JoinRace();
  void cmdLap_Click();
  void doLap_KeyBoard() { cmdLap_Click(); }
  void tmrLaps_Timer();
  void chkNovice_Click();

  // Turns and cuts. The index of the pylon entries is that of the key on the console and has no meaning here.
  void DoCut(const std::string& cutCode, int source, std::int32_t time);
  void cmdCut_Click();
  void cntrCutP1(int /*index*/) { EnterMissedPylon(1); }
  void cntrCutP2(int /*index*/) { EnterMissedPylon(2); }
  void cntrCutP3(int /*index*/) { EnterMissedPylon(3); }
  void DoTurn(int source, std::int32_t time, std::int32_t interval);  // interval: ms that the turn is shown
  bool CanDoTurn() const;
  void cmdTurn_Click();
  void tmrTurns_Timer();
  void RecalculateCuts(bool display);
  void DisplayCutTotals();
  void lblCut_MouseMove(int index);

  // Finish and places. The final time is 1000000 without a result. A status that the operator gave is locked.
  void GetFinal(std::int32_t& result);
  void FinalizeRace();
  void DisplayTotals();
  bool StatusLocked() const { return lblStatus.Tag() == "Locked"; }
  int PlaceByHand() const;     // 1..4; 0 when the status is not locked, or no place
  void LaneOrder(int place);   // offers place 1..4, or none with 5; an error otherwise; 1 begins anew
  void OfferPlace(int place);  // the same, but goes on with the places given so far
  void GiveUpPlace();          // the lane is ranked by its time again
  void cmdOrder_Click();
  void lblStatus_Click();
  // For the next frame: laps, what is left of the lap or turn light in units of 8 ms (at most 255), cuts per
  // pylon.
  void GetInfo(std::uint8_t& laps, std::uint8_t& lit, std::array<std::int16_t, 4>& cuts) const;

  // The panel. It stands in the place of the console's frame.
  void SetFormParent(Control& frame, int laneIndex);
  Control* Container() const { return container_; }  // null before SetFormParent and after Form_Unload
  void UpdateLaneColor();
  void Form_Load();
  void Form_Resize();
  // The hands' buttons come back when the link has dropped, and go when it is there again.
  void FollowLink();
  void Form_Unload();
  void fraLane_MouseMove();
  void Resized() override { Form_Resize(); }

  // Records. `section` is that of the race, "Race7" or "Refly2"; the lane's own is "Race7_Lane3". Values that
  // are read may be anything: an entry that makes no sense leaves its slot of the log as it was. A loaded
  // lane is recounted under the race mode that the race's section names and counts as finished until the next
  // InitializeRace.
  void SaveLane(const std::string& section);
  void LoadLane(const std::string& section);
  void LoadStatus(const std::string& section);

  // The lane's variables.
  std::int32_t TimeBase() const { return TimeBase_; }
  std::int32_t LastLapTime() const { return LastLapTime_; }
  std::int32_t FinalTime() const { return FinalTime_; }
  bool InNoviceClick() const { return InNoviceClick_; }
  int EventCount() const { return log_.EventCount(); }
  const LaneLog& Events() const { return log_; }
  std::int16_t CutCount() const { return CutCount_; }
  std::int16_t Laps() const { return Laps_; }
  std::int16_t LapTarget() const { return LapTarget_; }
  std::int16_t CutsBeforeFinish() const { return CutsBeforeFinish_; }
  bool NeedsCutDisplay() const { return NeedsCutDisplay_; }
  const PylonTally& PylonCuts() const { return PylonCuts_; }
  std::int16_t MissedPylon() const { return MissedPylon_; }
  const std::array<std::int32_t, 3>& MissedPylonTimes() const { return MissedPylonTimes_; }
  std::int16_t Turns() const { return Turns_; }
  std::int32_t TurnTimerEnd() const { return TurnTimerEnd_; }

 private:
  std::int32_t ToRaceTime(std::int32_t time) const;
  std::int64_t SinceLastLap() const;
  bool IsFai() const { return loaded_ ? loadedFai_ : race_.IsFaiMode; }
  bool HasCell(int lap) const;

  void HookEvents();
  void TurnToAnotherRace();
  void ClearControls();
  void ShowHandButtons();
  void FreezeCell(std::int32_t time);
  void StartLapLight(std::int32_t lockOut, std::int64_t end);
  void ShowEleventhCell();
  void EnterMissedPylon(std::int16_t pylon);
  void EnterPanelCut(std::int16_t missedPylon, bool accepted);
  void PlaceCutMark(const CutMark& mark);
  void HidePopUp();
  void ShowResult();
  void EntryMade();

  std::string LaneSection(const std::string& section) const;
  void LoadLog(const std::string& laneSection);
  void LoadCaptions(const std::string& laneSection, const char* key, const ControlArray& labels);

  RaceState& race_;
  LaneOwner& owner_;
  const int laneNumber_;
  int laneIndex_;
  Control* container_ = nullptr;

  std::int32_t TimeBase_ = 0;
  std::int32_t LastLapTime_ = 0;
  std::int32_t FinalTime_ = kNoFinalTime;
  bool InNoviceClick_ = false;
  LaneLog log_;
  std::int16_t CutCount_ = 0;
  std::int16_t Laps_ = 0;
  std::int16_t LapTarget_ = 10;
  std::int16_t CutsBeforeFinish_ = 0;
  bool NeedsCutDisplay_ = false;
  PylonTally PylonCuts_ = {};
  std::int16_t MissedPylon_ = 0;
  std::array<std::int32_t, 3> MissedPylonTimes_ = {};
  std::int16_t Turns_ = 0;
  std::int32_t TurnTimerEnd_ = 0;

  std::int64_t lapLightEnd_ = 0;  // race clock at which the lap lock-out ends
  bool doesNotFly_ = false;
  bool loaded_ = false;      // shown from the project file
  bool loadedFai_ = false;   // the race mode it was flown in
  unsigned raceSerial_ = 0;  // changes whenever the lane turns to another race
};

}  // namespace quorvane
