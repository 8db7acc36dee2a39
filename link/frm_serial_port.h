#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "forms/door.h"
#include "forms/form.h"
#include "link/frame_receiver.h"
#include "link/link_counters.h"
#include "link/link_owner.h"
#include "link/serial_control.h"
#include "link/station_message.h"
#include "race/race_state.h"

namespace quorvane {

inline constexpr std::int32_t kAgingMs = 2000;  // between two looks at the stations' ages

// The station link: chooses and works the serial port of the radio modem, cuts frames out of what it receives
// and hands them to the race, sends the console's frames, polls the stations between races and shows their
// health, and lets the operator watch the traffic. Lives as long as the program; closing its window only
// hides it.
//
// Times are ms of the console clock. A fault of the radio ends up in the message line and never stops the
// program; an error while a frame is handled ends the handling of that frame only.
class frmSerialPort : public Form, private FrameSink {
 public:
  frmSerialPort(Door& door, RaceState& race, LinkOwner& owner, SerialControl& MSComm1);

  // Before the form is shown for the first time.
  void Form_Load();

  // From the door.
  void BytesArrived(const std::vector<std::uint8_t>& bytes);  // ignored while the port is closed
  void LineError(int code);
  void PortsChanged(const std::vector<int>& ports);
  void Activated() override;  // probes the ports, selects the saved one again, restores the controller box
  void CloseRequested() override;

  // Port. One that was chosen and does not open, or is unplugged, is awaited: it comes up by itself as soon
  // as it can be opened, and the reason is shown until then.
  bool PortAvailable(int port);  // leaves the port open when it is
  void optPort_Click(int index);
  void DisplayCommError();
  void tmrPort_Timer();

  // Frames.
  void MSComm1_OnComm();
  std::int32_t ReadMessage();
  // Sends nothing while the link is off or the console only listens. An address outside 0..255 is an
  // OverflowError.
  void SendMessage(std::int16_t to, std::int16_t from);
  void ShowLinkMessage(const std::string& text);

  // Stations.
  void MarkStationHeard(int address);
  void UpdateStationRow(const StationMessage& frame);
  void tmrAging_Timer();
  void tmrIndicators_Timer();
  void lblStation_Click(int index);
  void cmdStation_Click();

  // Controller mode.
  void chkSystemController_Click();
  bool IsControllerMode() const { return chkSystemController.Value() == 1; }
  void CancelControllerOnStarter();

  // Message detail.
  void ShowMessageDetail(const StationMessage& frame);
  void lblMsg_Click();
  void cmdFreeze_Click();
  void cmdMore_Click();
  void cmdHide_Click();

  // Counters since the start, copies as text, and stations that fall silent while a race is flown.
  const LinkCounters& Counters() const { return counters_; }
  std::string CountersText() const;
  void cmdCopyMsg_Click();
  void cmdCopyCounters_Click();
  void tmrSilence_Timer();

  // Ports found at the last activation, in rising order behind "None"; the others are hidden. The tag is the
  // number.
  ControlArray optPort;
  Control& lblMessage;
  Control& chkSystemController;
  Control& chkListen;
  Control& cmdMore;
  Control& cmdHide;
  Control& tmrAging;
  Control& tmrIndicators;
  Control& tmrSilence;  // runs from the start of a race until it is saved or called off
  Control& tmrPort;     // runs while a port that exists is awaited

  Control& fraStations;
  Control& lblStationHeader;
  ControlArray lblStation;
  ControlArray lblAge;  // its tag: when the station was last heard, empty when never
  ControlArray lblVolt;
  ControlArray lblTemp;
  ControlArray lblSilent;  // shown beside a station that is silent while a race is flown
  Control& cmdStation;     // lies over the name of the station that alone is polled

  Control& fraMore;
  Control& lblMsg;
  Control& cmdFreeze;
  Control& cmdCopyMsg;
  Control& fraCounters;
  Control& lblCounters;
  Control& cmdCopyCounters;

 private:
  // FrameSink
  void GoodFrame(const StationMessage& frame) override;
  void DamagedFrame(const StationMessage& frame, std::uint8_t computedEcc) override;
  void Unexpected(std::uint8_t first, std::uint8_t second) override;

  void HookEvents();
  void BuildPortList();
  void ShowPorts(const std::vector<int>& ports);
  void TickPort(int index);
  void SelectPort(int index, bool remember);
  SerialError OpenPort(int port);
  void ClosePort();
  void ReportOpenFailure(const SerialError& error);
  SerialError TryPort(int port);
  void AwaitPort(int port, const SerialError& reason);
  void OpenAwaitedPort();
  std::string AwaitedText() const;
  std::string AwaitedShort() const;

  void HandleFrame(const StationMessage& frame);
  void FillRaceData();
  void Transmit(const StationMessage& message);
  void LightLamp(Traffic lamp);
  void AgeStation(int address);
  void PollNextStation();
  void ShowStationHealth(const StationMessage& frame);
  int NoteOnAir(const StationMessage& frame);  // who sent it; kAcknowledgement when nobody knows
  void NoteSignOfLife(int from);
  void WatchForSilence();
  void MarkSilentStations();
  bool IsExpected(int address) const;
  bool IsQuiet(int address) const;
  std::string SilenceText() const;
  void ShowRadioWarning();
  bool ConfirmControl();
  void RestoreControllerBox();
  std::string Setting(const std::string& key, const std::string& fallback);
  void SaveSetting(const std::string& key, const std::string& value);

  static constexpr std::int64_t kLongAgo = -1000000;

  Door& door_;
  RaceState& race_;
  LinkOwner& owner_;
  SerialControl& MSComm1_;
  FrameReceiver receiver_;
  LinkCounters counters_;

  StationMessage TxMessage_;  // keeps its contents between sends

  std::int16_t PortNumber_ = -1;  // -1: no port
  int awaitedPort_ = 0;           // 0: none
  SerialError awaitedReason_;
  std::vector<int> shownPorts_;
  bool selectingPort_ = false;
  bool receiving_ = false;

  std::array<std::int64_t, 2> litAt_ = {kLongAgo, kLongAgo};  // by Traffic
  std::int16_t PollStation_ = 0;                              // 0..7
  std::int16_t LastToAddress_ = 0;
  std::int16_t LastShownFrom_ = 0;
  bool Frozen_ = false;
  std::int64_t raceSeen_ = 0;  // when the race that is flown was first seen
  std::array<bool, LinkCounters::kStations> silent_ = {};
  // Of the last frame that was no acknowledgement, received or sent.
  std::uint8_t onAirFrom_ = kConsole;
  std::uint8_t onAirTo_ = kConsole;
};

}  // namespace quorvane
