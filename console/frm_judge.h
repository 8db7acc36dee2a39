#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "console/frm_judge_controls.h"
#include "console/frm_log.h"
#include "console/heat_printer.h"
#include "console/open_project.h"
#include "console/running_race.h"
#include "console/starter.h"
#include "console/undo.h"
#include "files/background_files.h"
#include "forms/door.h"
#include "lane/frm_lane.h"
#include "link/frm_serial_port.h"
#include "records/lane_colors.h"

namespace quorvane {

// The console: owns the four lane panels, the race clock and the buttons that take a race from ready through
// running to finished; turns station frames and keys into race actions; moves between races and keeps them in
// the project file. Times are ms of race time. A procedure that raises a RunTimeError is abandoned.
class frmJudge : public JudgeControls, private LaneOwner, public LinkOwner {
 public:
  // The link is not used before Form_Load. The race on the console is kept through `keeper`.
  frmJudge(Door& door, RaceState& race, RaceClock& clock, Project& project, frmSerialPort& link,
           BackgroundFiles& keeper);

  // Null: prints nothing.
  void SetPrinter(HeatPrinter* printer) { printer_ = printer != nullptr ? printer : &noPrinter_; }
  void SetStartupProject(std::string path) { chooser_.SetStartupProject(std::move(path)); }
  std::string ProjectAtStart() const { return chooser_.ProjectAtStart(); }
  frmLog& LapsAndCuts() { return log_; }
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

  void KeyDown(const std::string& key) override;
  // Says it in the window and asks nothing; the empty text takes the last notice away.
  // A notice of another kind goes when its reason does.
  enum class Notice : std::uint8_t { kNews, kSaveFirst, kCountsOverRace, kNotSaved };
  void ShowNotice(const std::string& text, Notice kind = Notice::kNews);
  // Run after every event: what may be touched now follows from the state of the race.
  void EventEnded();

  // The race on the console, flown, waiting, shown from the file or not run yet. `now`: its date if it is not
  // in the file.
  RaceRecord RecordAt(const LocalDateTime& now) const;

  bool RaceBeingFlown() const { return race_.BeingFlown(); }
  const std::string& EventName() const { return eventName_; }

 private:
  // LaneOwner
  std::int32_t RaceTime() const override { return clock_.RaceTime(); }
  bool ClockRunning() const override { return tmrTimeTick.Enabled(); }
  void SetOrder(int place) override;
  void TakePlace(int lane, int place) override;
  void ResultChanged() override;
  void IssueLapEvent() override { Broadcast(3, 4); }
  void EnteredByHand(int lane, const std::vector<unsigned>& serials) override {
    undo_.Entered(lane, serials);
  }
  void Corrected(int lane, const Correction& correction) override;
  void ShowLog(int lane) override;
  DialogAnswer Ask(const DialogBox& box) override { return door_.Ask(box); }
  LaneMarking Marking(int lane) const override { return LaneMarkingOf(race_.LaneColorScheme, lane); }
  // LinkOwner
  void ProcessMessage(const StationMessage& frame) override;
  void FillRaceData(StationMessage& frame) override;
  void ShowPort(const std::string& text, bool open) override;
  void ShowTraffic(Traffic lamp, bool lit) override;
  void ShowRadioState(const std::string& text, bool bad) override;
  // Both
  void IssueRaceEvent() override { Broadcast(6, 3); }

  void HookEvents();
  void HookMenu();
  // Whether the logs of the race that is shown may be put right.
  bool MayCorrect() const { return amended_.has_value() || (race_.AtStake() && !race_.RaceLoaded); }
  bool MayAmend() const;
  void mnuAmend_Click();
  void SaveAmendment();
  void EndAmending(bool saved);
  void ShowCorrections();
  void TakeAwayNotice(Notice kind);
  void ShowSaveState();
  std::string LostByClosing() const;

  // `laneStart`: see Starter::RaceBegins.
  void InitializeRace(std::int32_t laneStart);
  void RunRace();
  void InitializeLanes(std::int32_t laneStart);
  void ResetRaceControls(std::int32_t laneStart);
  void ResetKeepingComments(std::int32_t laneStart);
  void cmdStart_Click();
  void ConcludeByReset(bool save);
  void ReleaseHold();
  void ReadyForNextRace();
  void RankLanes();
  int NextFreePlace(int place) const;
  void SettleResult();
  void OfferSave(bool offered);

  void tmrTimeTick_Timer();
  void GoOnTicking();
  bool CheckRaceComplete();
  void DisplayStatus();
  bool ShowClock();

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
  void mnuSelectFile_Click();
  void ShowOpenProject();
  void mnuSavePdf_Click();
  void mnuProtestSheet_Click();
  RaceRecord RecordNow() const { return RecordAt(door_.LocalNow()); }

  // The race on the console kept on the disk.
  struct KeptState {
    RunningRace race;
    std::array<frmLane::RunningState, 4> lanes;
    bool operator==(const KeptState&) const = default;
  };
  void KeepRunningRace();
  RunningRace RunningNow() const;
  std::string RunningText(const RunningRace& race);
  void DropRunningRace();
  void ForgetDroppedRace();
  void mnuBringBack_Click();
  void FindKeptRaces();
  void OfferRecovery();
  bool InProject(const KeptRace& kept, const ProfileFile& file);
  std::string StoryOf(const RunningRace& race, const ProfileFile& file) const;
  void SetAsideWhatWasFound();
  void TakeUp(const KeptRace& kept, const ProfileFile& file);

  template <typename Part>
  void ForEachLane(const Part& part);
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
  BackgroundFiles& keeper_;
  HeatPrinter noPrinter_;
  HeatPrinter* printer_ = &noPrinter_;
  LanePanels lanes_;
  RaceBook book_{project_, race_};
  ProjectChooser chooser_{door_, race_, project_};
  Starter starter_{race_, clock_, lanes_};
  UndoStack undo_{lanes_};
  frmLog log_{door_, lanes_, undo_};

  bool projectOpen_ = false;
  std::string eventName_;
  std::string shownMode_;
  // Changes with the race on the console: tells who waited for an answer whether its race is still there.
  unsigned raceSerial_ = 0;
  bool CountdownRunning_ = false;
  std::int32_t LastTimeSent_ = 0;
  Notice notice_ = Notice::kNews;
  int errorsTold_ = 0;
  std::string problemTold_;        // why a save has failed
  std::string unkeptTold_;         // why the race on the console could not be kept
  std::optional<KeptState> kept_;  // of the race on the console, as it was kept last
  std::string keptText_;
  std::string keptFile_;
  std::string found_;        // kept by a program that died, until the operator has decided
  std::string droppedText_;  // of the last race that went without being saved; empty: none
  // A saved race that is being put right; empty: none.
  struct Amended {
    std::string section;                // "Race7", "Refly2"
    std::string timestamp;              // of the race as it was shown
    std::array<unsigned, 4> logs = {};  // the revisions of its logs
  };
  std::optional<Amended> amended_;
  std::string recovered_;  // how the race on the console was, in words for its record; empty: it was not
};

}  // namespace quorvane
