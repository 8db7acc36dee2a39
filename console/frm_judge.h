#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "console/heat_printer.h"
#include "forms/door.h"
#include "forms/form.h"
#include "lane/frm_lane.h"
#include "lane/lane_owner.h"
#include "link/frm_serial_port.h"
#include "link/link_owner.h"
#include "race/race_clock.h"
#include "race/race_state.h"
#include "records/project.h"

namespace quorvane {

// The console: owns the four lane panels, the race clock and the buttons that take a race from ready through
// running to finished; turns station frames and keys into race actions; moves between races and keeps them in
// the project file. All times are ms of race time unless said otherwise. A procedure that raises a
// RunTimeError is abandoned.
class frmJudge : public Form, private LaneOwner, private LinkOwner {
 public:
  frmJudge(Door& door, RaceState& race, RaceClock& clock, Project& project);
  ~frmJudge() override;

  void SetLink(frmSerialPort& link) { link_ = &link; }
  void SetPrinter(HeatPrinter* printer) { printer_ = printer; }
  // The project named on the command line; opened at start-up without asking.
  void SetStartupProject(std::string path) { startupProject_ = std::move(path); }
  // The project that is opened, or asked about, at start-up.
  std::string ProjectAtStart() const;
  LinkOwner& ForLink() { return *this; }
  frmLane& Lane(int index) { return *Element(lanes_, index); }  // 0..3
  const frmLane& Lane(int index) const { return *Element(lanes_, index); }

  // Menu bar.
  Control& mnuFile;
  Control& mnuSelectFile;
  // The window opens the first two, and records the session while the third is checked.
  Control& mnuResults;
  Control& mnuScoreboard;
  Control& mnuRecordSession;
  Control& mnuPrintPreview;
  Control& mnuSavePdf;
  Control& mnuPrinterSetup;
  Control& mnuAutoPrint;
  Control& mnuExit;
  Control& mnuSetRaceInfo;
  Control& mnuSetEventName;
  Control& mnuHeatsPerRound;
  Control& mnuLaneColors;
  Control& mnuTimerSettings;
  Control& mnuHelp;
  Control& mnuKeyboard;
  Control& mnuAbout;

  // Clock and race.
  Control& lblStatus;
  Control& lblNotSaved;  // shown while something that was recorded is not on the disk
  Control& lblNotice;    // what became of a heat report; a click on it takes it away
  Control& fraHeatControl;
  Control& txtHeat;
  Control& cmdDecHeat;
  Control& cmdIncHeat;
  Control& txtRound;
  Control& cmdDecRound;
  Control& cmdIncRound;
  Control& cboRaceMode;
  Control& lblRaceMode;
  Control& cmdRefly;
  Control& chkSixtySecondCount;
  Control& chkAudio;
  Control& cmdStart;
  Control& cmdReset;
  Control& cmdSave;
  Control& cmdPrint;
  Control& cmdReorder;
  Control& txtComments;
  Control& lblComm;
  Control& lblReadComm;
  Control& lblWriteComm;
  Control& lblController;  // shown while this console acts for the starter and the timers
  Control& lblSilent;      // beside lblComm: what is wrong with the radio
  ControlArray fraLane;    // 0..3, where the lane panels stand
  Control& tmrTimeTick;
  Control& tmrSaveRetry;  // tries again to write what is not on the disk yet

  // Race lifecycle and clock.
  void Form_Load();
  // `laneStart` is the value of the race clock, less 60000 ms, that the lanes take for their start signal.
  void InitializeRace(std::int32_t laneStart);
  void cmdStart_Click();
  void tmrTimeTick_Timer();
  void DisplayStatus();
  void FinalizeRace();
  void ResetRaceControls() { ResetRaceControls(LaneStartOffset_); }
  // False: nothing was reset, by the operator's choice or because the race was gone.
  bool cmdReset_Click(bool byRadio = false);
  void chkSixtySecondCount_Click();
  bool HasRun(std::int16_t race);
  void ShowCurrentRace();
  void Form_QueryUnload();
  void Form_Unload();
  // The desktop session is about to end and would stay for us: false while a race is flown, and the window
  // says so.
  bool MaySessionEnd();
  void CloseRequested() override { Form_QueryUnload(); }

  // Heats, rounds, race modes and reflies.
  void ApplyRaceMode(int index);
  void GetRaceMode(int& mode) const;
  void cboRaceMode_Change();
  void SetOrder(int place) override;
  void TakePlace(int lane, int place) override;
  void cmdReorder_Click();
  void mnuHeatsPerRound_Click();
  void cmdIncHeat_Click();
  void cmdDecHeat_Click();
  void cmdIncRound_Click();
  void cmdDecRound_Click();
  void txtHeat_Change();
  void txtRound_Change();
  void cmdRefly_Click();
  void SetCaption();
  void mnuSetEventName_Click();
  void mnuLaneColors_Click();

  // Stations and keys.
  void ProcessMessage(const StationMessage& frame) override;
  void LoadStartInfo(std::array<std::uint8_t, 4>& time, std::uint8_t& start, std::uint8_t& mode) override;
  void GetLaneInfo(std::uint8_t lane, std::uint8_t& laps, std::uint8_t& lit,
                   std::array<std::int16_t, 4>& cuts) override;
  void IssueRaceEvent(bool flag) override;
  void IssueLapEvent() override;
  void IssueTimeEvent();
  void KeyDown(const std::string& key) override;
  void lblComm_Click();

  // Records.
  void mnuSelectFile_Click();
  void mnuAutoPrint_Click();
  void mnuRecordSession_Click();
  void cmdSave_Click();
  void LoadRaceHeader();

  // Heat report.
  void cmdPrint_Click();
  void mnuPrintPreview_Click();
  void mnuSavePdf_Click();
  void mnuPrinterSetup_Click();
  // Says it in the window and asks nothing; the empty text takes the last notice away.
  void ShowNotice(const std::string& text);

  // Run after every event: what may be touched now follows from the state of the race.
  void EventEnded();

  bool RaceBeingFlown() const { return race_.RaceActive && !race_.RaceDone; }
  // A finished race has to be saved: it keeps its number and its mode, and no key adds to it.
  bool WaitsForSave() const { return race_.RaceDone && cmdSave.Enabled(); }
  // A race is being flown or waits to be saved. It may have been started by radio while a box was open.
  bool RaceAtStake() const { return RaceBeingFlown() || cmdSave.Enabled(); }
  std::int16_t Heat() const { return heat_; }
  std::int16_t Round() const { return round_; }
  const std::string& EventName() const { return eventName_; }
  std::int32_t LaneStartOffset() const { return LaneStartOffset_; }

 private:
  // LaneOwner
  std::int32_t RaceTime() const override { return clock_.RaceTime(); }
  bool ClockRunning() const override { return tmrTimeTick.Enabled(); }
  void ResultChanged() override;
  DialogAnswer Ask(const DialogBox& box) override { return door_.Ask(box); }
  std::string LaneColorName(int lane) const override;
  Color LaneLowColor(int lane) const override;
  Color LaneHighColor(int lane) const override;
  std::string GetProjectValue(const std::string& section, const std::string& key,
                              const std::string& fallback) override;
  void SetProjectValue(const std::string& section, const std::string& key, const std::string& value) override;
  // LinkOwner
  void ShowPort(const std::string& text, bool open) override;
  void ShowTraffic(Traffic lamp, bool lit) override;
  void ShowRadioWarning(const std::string& text) override;

  void HookEvents();
  std::string LostByClosing() const;
  void CheckRaceComplete(bool& allFinished);
  void RankLanes();
  void SettleResult();
  bool ShowClock();
  void ShowClockTick();
  void ArmTick();
  void ResetRaceControls(std::int32_t laneStart);
  void ResetKeepingComments(std::int32_t laneStart);
  void InitializeLanes(std::int32_t laneStart);
  void ReleaseHold();
  void ReadyForNextRace();
  std::string RaceSection(std::int16_t race) const;
  bool HasTimestamp(std::int16_t race);
  void SkipRacesRun();
  void ShowRaceLanes();
  std::int16_t HeatsInRound() const;
  void ShowHeatCaption(bool refly);
  void DeriveHeat();

  void MoveBy(std::int64_t races);
  void MoveToTyped(Control& box, bool isHeat);
  std::int16_t AskHeatsPerRound();

  void ForEachLane(const std::function<void(frmLane&, std::size_t)>& part);
  void ProcessTimersMessage(const StationMessage& frame);
  void ProcessPylonMessage(const StationMessage& frame);
  void ProcessStartersMessage(const StationMessage& frame);
  // What a frame of the starter does to the race on the console: nothing at all, or it goes on, is saved or
  // is called off.
  enum class StarterMeans { kNothing, kGoesOn, kConcludes, kCallsOff };
  StarterMeans WhatTheStarterMeans(const StationMessage& frame) const;
  bool BeginsNextRace() const;
  bool CountsAfterSignal() const;
  bool LapFlown() const;
  bool NothingFlown() const;
  bool HasBeenFlown() const;
  bool SignalSinceLastRace() const;
  bool SetsClock();
  void FollowStartersClock();
  std::int32_t ClockAhead() const;
  void LeaveRaceByHandAlone(const StationMessage& frame);
  void ConcludeForStarter();
  void StarterRuns();
  void StartByStarter();
  void AskResetForStarter(const StationMessage& frame);
  void FinishStartersMessage(const StationMessage& frame);
  void ApplyStarterCuts(const StationMessage& frame);
  bool AddStartDelay() const;
  void LapKey(int lane);

  std::string DefaultFolder() const;
  std::string TodaysProjectName() const;
  bool ChooseProject(bool atStart);
  bool OpenAtStart();
  bool AskProjectFile(bool atStart);
  std::string TroubleOpening(const std::string& file);
  std::string WhyNotOpened(const std::string& file);
  bool AskAgain(const std::string& trouble, bool atStart);
  void ShowOpenProject();
  std::int16_t StoredInteger(const std::string& key, const std::string& fallback);
  void WriteRace();
  void TakeFreeNumber();
  std::int16_t NextRefly();
  std::string ShownSection();
  void TellErrors();
  void ShowSaveState();
  void tmrSaveRetry_Timer();
  RaceRecord RecordNow();
  void ShowSmallForm(const char* name);

  static constexpr const char* kSaveFirst = "Race over: save it first";

  Door& door_;
  RaceState& race_;
  RaceClock& clock_;
  Project& project_;
  frmSerialPort* link_ = nullptr;
  HeatPrinter* printer_ = nullptr;
  std::array<std::unique_ptr<frmLane>, 4> lanes_;

  std::int32_t LaneStartOffset_ = 0;
  std::int32_t LaneStartOffsetCopy_ = 0;
  bool laneFlags_[2] = {false, false};
  bool CountdownRunning_ = false;
  std::int32_t LastTimeSent_ = 0;
  bool ShowingRace_ = false;
  std::int32_t MessageRaceTime_ = 0;
  std::int32_t StationClock_ = 0;

  std::int16_t heat_ = 1;
  std::int16_t round_ = 1;
  std::string eventName_;
  std::string startupProject_;
  int errorsTold_ = 0;
  std::string saveNotice_;  // what the window says of a save that has failed
  bool projectOpen_ = false;
  std::string shownSection_;  // of the race on the console, or of its refly
  // Changes whenever the console turns to another race, so that a procedure that waited for an answer can see
  // whether its race is still there.
  unsigned raceSerial_ = 0;

  static constexpr std::int64_t kNoRaceYet = INT64_MIN;
  // When the last race on the console was saved or reset, in ms of the console clock, unless the starter has
  // stopped since.
  std::int64_t raceOver_ = kNoRaceYet;
  bool starterEarly_ = false;  // by our clock, in its last frame of the flight
  // The starter's corrected clock when it was last running during the race on the console; empty: it was not.
  std::optional<std::int32_t> starterClock_;
  bool resetAskedForStarter_ = false;
  std::array<std::uint8_t, 4> starterCuts_{};  // those that the next frame is compared with
  static constexpr const char* kCountsOverRace =
      "The starter is counting. The race started by hand keeps its own clock";
  bool countTold_ = false;      // that the starter counts over the race by hand
  std::int32_t laneStart_ = 0;  // added to the race clock it gives 60000 at the start signal
};

}  // namespace quorvane
