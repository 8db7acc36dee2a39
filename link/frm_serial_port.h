#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "forms/door.h"
#include "forms/form.h"
#include "link/link_counters.h"
#include "link/port_numbers.h"
#include "link/serial_control.h"
#include "link/station_message.h"
#include "race/race_state.h"

namespace quorvane {

enum class Traffic : std::uint8_t { Received, Sent };

// What the station link asks of the race, and what it has the console show.
class LinkOwner {
 public:
  virtual ~LinkOwner() = default;

  // A good frame has arrived. It is the handler's own copy, which no frame sent in answer changes.
  virtual void ProcessMessage(const StationMessage& frame) = 0;

  // Fills in the race clock, the start state, the race mode and the lanes' laps, lights and cuts.
  virtual void FillRaceData(StationMessage& frame) = 0;
  virtual void IssueRaceEvent() = 0;

  virtual void ShowPort(const std::string& text, bool open) = 0;
  virtual void ShowTraffic(Traffic lamp, bool lit) = 0;
  // In few words, why the port is not open or which stations are silent in the race; empty: all is well.
  // Who is there before a race, or what is wrong (bad).
  virtual void ShowRadioState(const std::string& text, bool bad) = 0;
};

// The station link: works the serial port of the radio modem, hands the frames that it receives to the race,
// sends the console's, polls the stations between races and shows their health, and lets the operator watch
// the traffic. Times are ms of the console clock. A fault of the radio ends up in the message line and never
// stops the program; an error in handling a frame ends only that.
class frmSerialPort : public Form {
  using enum ControlKind;

 public:
  frmSerialPort(Door& door, RaceState& race, LinkOwner& owner, SerialControl& MSComm1);

  // Before the form is shown for the first time.
  void Form_Load();

  // From the door.
  void BytesArrived(const std::vector<std::uint8_t>& bytes);  // ignored while the port is closed
  void LineError(int code);
  void PortsChanged(const std::vector<int>& ports);
  void Activated() override;  // probes the ports, selects the saved one again, restores the controller box

  // The practice field takes the radio's place, whose port is closed until practice ends.
  void BeginPractice();
  SerialError OpenPractice(int port);  // it answers there
  void LosePractice();                 // it does not
  void EndPractice();

  // Only while the link is on and the console does not only listen. OverflowError outside 0..255.
  void SendMessage(int to, int from);
  bool IsControllerMode() const { return chkSystemController.Value() == 1; }
  const LinkCounters& Counters() const { return counters_; }
  // The console begins a race, or goes on with one.
  void BeginRace();
  // How the race on the console was received; none without a radio.
  std::optional<RadioRecord> InRace() const;

  // "None", then the ports found at the last activation, the number as tag; the others are hidden.
  ControlArray optPort{*this, Option, "optPort", 0, 31};
  // Cleared by the ageing timer, which nothing starts anew: steady noise must not hold the polling back.
  Control& lblMessage = Add(Label, "lblMessage");
  Control& chkSystemController = AddCaptioned(CheckBox, "chkSystemController", "System Controller");
  Control& chkListen = AddCaptioned(CheckBox, "chkListen", "Listen Only (Debug Monitor)");
  Control& cmdMore = AddCaptioned(Button, "cmdMore", "<");
  Control& cmdHide = AddCaptioned(Button, "cmdHide", "Hide");
  Control& cmdPractice = AddCaptioned(Button, "cmdPractice", "Practice Field...");  // the console's work
  Control& tmrAging = Add(Timer, "tmrAging");
  Control& tmrIndicators = Add(Timer, "tmrIndicators");
  // Runs from the start of a race until it is saved or called off.
  Control& tmrSilence = Add(Timer, "tmrSilence");
  Control& tmrPort = Add(Timer, "tmrPort");  // runs while a port that exists is awaited

  Control& fraStations = AddCaptioned(Frame, "fraStations", "Stations");
  Control& lblStationHeader = AddCaptioned(Label, "lblStationHeader", "Stn ----  Age Volt Tmp", &fraStations);
  ControlArray lblStation{*this, Label, "lblStation", 0, 7, &fraStations};
  // Its tag: when the station was last heard, empty when never.
  ControlArray lblAge{*this, Label, "lblAge", 0, 7, &fraStations};
  ControlArray lblVolt{*this, Label, "lblVolt", 0, 7, &fraStations};
  ControlArray lblTemp{*this, Label, "lblTemp", 0, 7, &fraStations};
  // Shown beside a station that is silent while a race is flown.
  ControlArray lblSilent{*this, Label, "lblSilent", 0, 7, &fraStations};
  // Lies over the name of the station that alone is polled.
  Control& cmdStation = Add(Button, "cmdStation", &fraStations);

  Control& fraMore = AddCaptioned(Frame, "fraMore", "Msg");
  Control& lblMsg = Add(Label, "lblMsg", &fraMore);
  Control& cmdFreeze = AddCaptioned(Button, "cmdFreeze", "Thaw", &fraMore);
  Control& cmdCopyMsg = AddCaptioned(Button, "cmdCopyMsg", "Copy", &fraMore);
  Control& fraCounters = AddCaptioned(Frame, "fraCounters", "Since start", &fraMore);
  Control& lblCounters = Add(Label, "lblCounters", &fraCounters);
  Control& cmdCopyCounters = AddCaptioned(Button, "cmdCopyCounters", "Copy", &fraCounters);

 private:
  static constexpr int kStations = LinkCounters::kStations;

  std::string Setting(const std::string& key, const std::string& fallback);
  void SaveSetting(const std::string& key, const std::string& value);

  // Controller mode: the console acts for the starter and the timers, until a real starter is heard.
  void chkSystemController_Click();
  void CancelControllerOnStarter();

  // Port. A chosen one that does not open, or is unplugged, is awaited: shown with the reason until it opens.
  void BuildPortList();
  void ShowPorts(const std::vector<int>& ports);
  void TickPort(int port);
  void optPort_Click(int index);
  void SelectPort(int port, bool remember);
  SerialError OpenPort(int port);
  void ClosePort();
  void ShowPortOff(int port);
  std::string PortText(int port) const;
  void AwaitPort(int port, const SerialError& reason);
  void OpenAwaitedPort();
  std::string AwaitedText() const;
  std::string AwaitedShort() const;

  // Frames.
  void FrameFound(Found found, const StationMessage& frame);
  void GoodFrame(const StationMessage& frame);
  void HandleFrame(const StationMessage& frame);
  void LightLamp(Traffic lamp);
  void tmrIndicators_Timer();
  int NoteOnAir(const StationMessage& frame);
  void Count(const std::function<void(LinkCounters& counters)>& count);

  // Stations.
  void MarkStationHeard(int address);
  void UpdateStationRow(const StationMessage& frame);
  void tmrAging_Timer();
  void AgeStation(int address);
  void PollNextStation();
  void AwaitAnswer(int address);
  void lblStation_Click(int index);

  // Stations that fall silent while a race is flown.
  void WatchForSilence();
  void MarkSilentStations();
  bool IsExpected(int address) const;
  bool IsQuiet(int address) const;
  std::string SilenceText() const;
  void ShowRadioState();

  // The roll call before a race.
  enum class Presence : std::uint8_t { kUnknown, kHere, kMissing };
  Presence PresenceOf(int address) const;
  bool BatteryLow(int address) const;
  void CallRoll();

  // The message detail panel.
  void ShowMessageDetail(const StationMessage& frame);
  void ShowDetail(bool show);
  void Freeze(bool frozen);
  std::string CountersText() const { return counters_.Text(receiver_.RxCount(), door_.Now()); }
  void CopyText(const std::string& text);

  Door& door_;
  RaceState& race_;
  LinkOwner& owner_;
  SerialControl& MSComm1_;
  FrameReceiver receiver_;
  LinkCounters counters_;
  StationMessage TxMessage_;  // keeps its contents between sends

  int PortNumber_ = kNoPort;
  int awaitedPort_ = 0;  // 0: none
  SerialError awaitedReason_;
  std::vector<int> shownPorts_;  // by option button: kNoPort, then the ports
  bool selectingPort_ = false;
  bool practising_ = false;
  int practicePort_ = 0;  // of the field; 0: it is not there
  bool receiving_ = false;

  std::array<std::optional<std::int64_t>, 2> litAt_;            // by Traffic
  std::array<std::optional<std::int64_t>, kStations> heardAt_;  // as shown
  std::optional<int> selectedStation_;                          // that alone is polled and shown
  // Since when an answer is awaited, or was until it came; 0: not asked yet.
  std::array<std::int64_t, kStations> awaitedSince_ = {};
  std::array<std::uint8_t, kStations> volt_ = {};  // as it came
  int PollStation_ = 0;                            // 0..7
  std::uint8_t LastToAddress_ = 0;
  std::uint8_t LastShownFrom_ = 0;
  bool Frozen_ = false;
  LinkCounters ofRace_;
  std::int64_t raceUntil_ = 0;  // as far as those go
  std::int64_t raceSeen_ = 0;   // when the race that is flown was first seen
  std::array<bool, kStations> silent_ = {};
  // Of the last frame that was no acknowledgement, received or sent.
  std::uint8_t onAirFrom_ = kConsole;
  std::uint8_t onAirTo_ = kConsole;
};

}  // namespace quorvane
