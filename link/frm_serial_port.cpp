#include "link/frm_serial_port.h"

#include "base/stations.h"

namespace quorvane {
namespace {

constexpr const char* kName = "frmSerialPort";  // also its section in the settings store

constexpr int kLastOption = 31;
constexpr int kLastStation = 7;
constexpr std::int32_t kIndicatorsMs = 100;
constexpr std::int32_t kSilenceMs = 500;
constexpr std::int32_t kPortMs = 1000;

}  // namespace

frmSerialPort::frmSerialPort(Door& door, RaceState& race, LinkOwner& owner, SerialControl& MSComm1)
    : Form(door.AllForms(), kName),
      optPort(*this, ControlKind::Option, "optPort", 0, kLastOption),
      lblMessage(Add(ControlKind::Label, "lblMessage")),
      chkSystemController(AddCaptioned(ControlKind::CheckBox, "chkSystemController", "System Controller")),
      chkListen(AddCaptioned(ControlKind::CheckBox, "chkListen", "Listen Only (Debug Monitor)")),
      cmdMore(AddCaptioned(ControlKind::Button, "cmdMore", "<")),
      cmdHide(AddCaptioned(ControlKind::Button, "cmdHide", "Hide")),
      tmrAging(Add(ControlKind::Timer, "tmrAging")),
      tmrIndicators(Add(ControlKind::Timer, "tmrIndicators")),
      tmrSilence(Add(ControlKind::Timer, "tmrSilence")),
      tmrPort(Add(ControlKind::Timer, "tmrPort")),
      fraStations(AddCaptioned(ControlKind::Frame, "fraStations", "Stations")),
      lblStationHeader(
          AddCaptioned(ControlKind::Label, "lblStationHeader", "Stn ----  Age Volt Tmp", &fraStations)),
      lblStation(*this, ControlKind::Label, "lblStation", 0, kLastStation, &fraStations),
      lblAge(*this, ControlKind::Label, "lblAge", 0, kLastStation, &fraStations),
      lblVolt(*this, ControlKind::Label, "lblVolt", 0, kLastStation, &fraStations),
      lblTemp(*this, ControlKind::Label, "lblTemp", 0, kLastStation, &fraStations),
      lblSilent(*this, ControlKind::Label, "lblSilent", 0, kLastStation, &fraStations),
      cmdStation(Add(ControlKind::Button, "cmdStation", &fraStations)),
      fraMore(AddCaptioned(ControlKind::Frame, "fraMore", "Msg")),
      lblMsg(Add(ControlKind::Label, "lblMsg", &fraMore)),
      cmdFreeze(AddCaptioned(ControlKind::Button, "cmdFreeze", "Thaw", &fraMore)),
      cmdCopyMsg(AddCaptioned(ControlKind::Button, "cmdCopyMsg", "Copy", &fraMore)),
      fraCounters(AddCaptioned(ControlKind::Frame, "fraCounters", "Since start", &fraMore)),
      lblCounters(Add(ControlKind::Label, "lblCounters", &fraCounters)),
      cmdCopyCounters(AddCaptioned(ControlKind::Button, "cmdCopyCounters", "Copy", &fraCounters)),
      door_(door),
      race_(race),
      owner_(owner),
      MSComm1_(MSComm1) {
  SetCaption("Station Link");
  ShowPorts({});
  cmdStation.SetVisible(false);
  cmdFreeze.SetVisible(false);
  fraMore.SetVisible(false);
  for (Control* label : lblSilent) {
    label->SetCaption("Silent");
    label->SetForeColor(kRed);
    label->SetVisible(false);
  }
  tmrSilence.SetInterval(kSilenceMs);
  tmrPort.SetInterval(kPortMs);
  HookEvents();
}

void frmSerialPort::HookEvents() {
  for (int i = 0; i <= kLastOption; ++i) optPort[i].onClick = [this, i] { optPort_Click(i); };
  for (int i = 0; i <= kLastStation; ++i) lblStation[i].onClick = [this, i] { lblStation_Click(i); };
  cmdStation.onClick = [this] { cmdStation_Click(); };
  chkSystemController.onClick = [this] { chkSystemController_Click(); };
  cmdMore.onClick = [this] { cmdMore_Click(); };
  cmdHide.onClick = [this] { cmdHide_Click(); };
  lblMsg.onClick = [this] { lblMsg_Click(); };
  cmdFreeze.onClick = [this] { cmdFreeze_Click(); };
  cmdCopyMsg.onClick = [this] { cmdCopyMsg_Click(); };
  cmdCopyCounters.onClick = [this] { cmdCopyCounters_Click(); };
  tmrSilence.onTimer = [this] { tmrSilence_Timer(); };
  tmrPort.onTimer = [this] { tmrPort_Timer(); };
  tmrAging.onTimer = [this] { tmrAging_Timer(); };
  tmrIndicators.onTimer = [this] { tmrIndicators_Timer(); };
}

void frmSerialPort::Form_Load() {
  ClosePort();
  owner_.ShowPort("COM" + std::to_string(MSComm1_.CommPort()) + " - Off", false);
  tmrAging.SetInterval(kAgingMs);
  tmrAging.SetEnabled(true);
  tmrIndicators.SetEnabled(false);
  tmrIndicators.SetInterval(kIndicatorsMs);
  for (int i = 0; i <= kLastStation; ++i) {
    lblStation[i].SetCaption(std::string(Element(StationNames, i)));
    lblAge[i].SetCaption("Off");
    lblVolt[i].SetCaption("");
    lblTemp[i].SetCaption("");
  }
  cmdMore.SetCaption(Setting("More", "<"));
  cmdMore_Click();
}

void frmSerialPort::Activated() {
  BuildPortList();
  RestoreControllerBox();
}

void frmSerialPort::cmdHide_Click() {
  SetVisible(false);
}

// The link keeps running behind its closed window.
void frmSerialPort::CloseRequested() {
  SetVisible(false);
}

std::string frmSerialPort::Setting(const std::string& key, const std::string& fallback) {
  return door_.System().Settings().GetSetting(kName, key, fallback);
}

void frmSerialPort::SaveSetting(const std::string& key, const std::string& value) {
  door_.System().Settings().SaveSetting(kName, key, value);
}

}  // namespace quorvane
