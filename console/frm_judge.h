#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "console/amendment.h"
#include "console/frm_practice.h"
#include "console/heat_printer.h"
#include "console/lane_desk.h"
#include "console/race_keeper.h"
#include "link/frm_serial_port.h"

namespace quorvane {

// The console: takes a race from ready through running to finished; turns station frames and keys into race
// actions; moves between races and keeps them in the project file. Times are ms of race time. A procedure
// that raises a RunTimeError is abandoned.
class frmJudge : public JudgeControls, public LinkOwner {
 public:
  // The link is not used before Form_Load. The race on the console is kept through `files`.
  frmJudge(Door& door, RaceState& race, RaceClock& clock, Project& project, frmSerialPort& link,
           BackgroundFiles& files);

  // Null: prints nothing.
  void SetPrinter(HeatPrinter* printer) { printer_ = printer != nullptr ? printer : &noPrinter_; }
  // Null: there is none.
  void SetPracticeField(PracticeField* field) { field_ = field != nullptr ? field : &noField_; }
  void SetStartupProject(std::string path) { chooser_.SetStartupProject(std::move(path)); }
  std::string ProjectAtStart() const { return chooser_.ProjectAtStart(); }
  frmLog& LapsAndCuts() { return desk_.Log(); }
  frmPractice& Practice() { return practice_; }
  bool Practising() const { return !contest_.empty(); }
  frmLane& Lane(int index) const { return *Element(lanes_, index); }  // 0..3

  // Race lifecycle.
  void Form_Load();
  void FinalizeRace();
  // False: nothing was reset, by the operator's choice or because the race was gone.
  bool cmdReset_Click(bool byRadio = false);
  void cmdSave_Click();
  void Form_Unload();
  void CloseRequested() override;
  // Whether the desktop session may end: not while a race is flown, and the window says so.
  bool MaySessionEnd();

  // Moving between races.
  void ApplyRaceMode(int index);
  void ShowCurrentRace();
  bool HasRun(int race) { return book_.HasRun(race); }

  void FieldChanged(int port, const std::string& trouble);  // see EventKind::Field

  void KeyDown(const std::string& key) override;
  void ShowNotice(const std::string& text) { notices_.Show(text); }
  void ShowDone(const std::string& text) { notices_.ShowDone(text); }
  // Run after every event: what may be touched now follows from the state of the race.
  void EventEnded();

  // The race on the console, flown, waiting, shown or not run yet. `now`: its date if it is not in the file.
  RaceRecord RecordAt(const LocalDateTime& now) const;
  // How it was received; none without a radio.
  std::optional<RadioRecord> RadioInRace() const;

  bool RaceBeingFlown() const { return race_.BeingFlown(); }
  const std::string& EventName() const { return eventName_; }

 private:
  // LinkOwner
  void ProcessMessage(const StationMessage& frame) override;
  void FillRaceData(StationMessage& frame) override;
  void ShowPort(const std::string& text, bool open) override;
  void ShowTraffic(Traffic lamp, bool lit) override;
  void ShowRadioState(const std::string& text, bool bad) override;
  void IssueRaceEvent() override { desk_.IssueRaceEvent(); }

  void HookEvents();
  void HookMenu();
  void HookProject();
  bool MayAmend() const;
  void mnuAmend_Click();
  void SaveAmendment();
  void EndAmending(bool saved);
  static std::string AmendmentOutdated(int race);
  void ShowCorrections();
  void SayWhyGrey();
  std::string LostByClosing() const;

  // `laneStart`: see Starter::RaceBegins.
  void InitializeRace(std::int32_t laneStart);
  void RunRace();
  void ResetRaceControls(std::int32_t laneStart);
  void ResetKeepingComments(std::int32_t laneStart);
  void cmdStart_Click();
  void ConcludeByReset(bool save);
  void ReleaseHold();
  void ReadyForNextRace();
  void SettleResult();
  void OfferSave(bool offered);

  void tmrTimeTick_Timer();
  void GoOnTicking();
  bool CheckRaceComplete();
  void DisplayStatus();
  bool ShowClock();
  void DisplayStatusForStarter(bool wasHeld);

  void ShowHeatCaption(bool refly, Color color);
  void ShowMode(const std::string& text, Color color);
  void MoveBy(int races);
  void MoveTo(std::int16_t race);
  void MoveToTyped(Control& box, bool isHeat);
  void cmdRefly_Click();
  void mnuHeatsPerRound_Click();
  void mnuSetEventName_Click();
  void mnuLaneColors_Click();
  void SetCaption();
  void mnuFile_Click();
  void OpenAnother(const std::function<bool()>& open);
  void mnuOpenRecent_Change();
  void ShowOpenProject();
  void mnuSavePdf_Click();
  void mnuProtestSheet_Click();
  RaceRecord RecordNow() const { return RecordAt(door_.LocalNow()); }

  std::string WhyRaceKeepsProject() const;
  std::string WhySaveFirst() const;
  std::string WhyNoPractice() const;
  std::string NewPracticeFile() const;
  void BeginPractice(bool ask);
  void BeginPracticeAtStart();
  bool OpenPracticeProject();
  bool MayEndPractice();
  void EndPractice();
  void FollowPractice();

  RunningRace RunningNow() const;
  void mnuBringBack_Click();
  void OfferRecovery();
  bool MayTakeUp(const KeptRace& kept);
  void TakeUp(const KeptRace& kept);
  void ResumeAmending(const KeptRace& kept);
  void ShowAsItWas(const KeptRace& kept);
  bool HasBegun(const KeptRace& kept) const;
  void FlyOn(const Starter::Memory& starter, std::int32_t raceTime);

  void ProcessStartersMessage(const StationMessage& frame);
  void FinishStartersMessage(const StationMessage& frame);
  void LeaveRaceByHandAlone(const StationMessage& frame);
  void AskResetForStarter(const StationMessage& frame);
  void ConcludeForStarter();
  void StarterRuns();
  void FollowStartersClock();
  void ApplyStarterCuts(const StationMessage& frame);
  void Broadcast(std::int16_t to, std::int16_t from);

  Door& door_;
  RaceState& race_;
  RaceClock& clock_;
  Project& project_;
  frmSerialPort& link_;
  HeatPrinter noPrinter_;
  HeatPrinter* printer_ = &noPrinter_;
  PracticeField noField_;
  PracticeField* field_ = &noField_;
  Notices notices_;
  LaneDesk desk_;
  const LanePanels& lanes_ = desk_.Panels();
  RaceBook book_{project_, race_};
  ProjectChooser chooser_{door_, race_, project_, notices_};
  Starter starter_{race_, clock_, lanes_};
  Amendment amendment_{race_, project_, lanes_};
  RaceKeeper keeper_;
  frmPractice practice_{door_.AllForms()};

  std::string eventName_;
  std::string shownMode_;
  std::string moved_;  // how a race that is about to be saved got another number
  // Changes with the race on the console: tells who waited for an answer whether its race is still there.
  unsigned raceSerial_ = 0;
  bool CountdownRunning_ = false;
  std::int32_t LastTimeSent_ = 0;
  std::string contest_;  // the project that is put aside while there is practice; empty: there is none
  std::pair<std::int16_t, std::string> lastOfContest_;  // LastRaceRun and its file, meanwhile
  std::string fieldTrouble_;                            // why the practice field does not answer
  std::string recovered_;  // how the race on the console was, in words for its record; empty: it was not
  std::optional<RadioRecord> radioBefore_;  // of a recovered race: what its kept file tells
};

}  // namespace quorvane
