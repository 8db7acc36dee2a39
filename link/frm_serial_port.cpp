#include "link/frm_serial_port.h"

#include "base/stations.h"
#include "base/text.h"
#include "link/port_numbers.h"

namespace quorvane {
namespace {

constexpr const char* kName = "frmSerialPort";  // also its section in the settings store
constexpr const char* kControllerKey = "chkSystemController";

}  // namespace

frmSerialPort::frmSerialPort(Door& door, RaceState& race, LinkOwner& owner, SerialControl& MSComm1)
    : Form(door.AllForms(), kName), door_(door), race_(race), owner_(owner), MSComm1_(MSComm1) {
  SetCaption("Station Link");
  ShowPorts({kNoPort});
  for (Control* control : {&cmdStation, &cmdFreeze, &fraMore}) control->SetVisible(false);
  for (Control* label : lblSilent) {
    label->SetCaption("Silent");
    label->SetForeColor(kRed);
    label->SetVisible(false);
  }
  tmrSilence.SetInterval(500);
  tmrPort.SetInterval(1000);
  for (int i = 0; i <= kLastPortNumber; ++i) optPort[i].onClick = [this, i] { optPort_Click(i); };
  for (int i = 0; i < kStations; ++i) lblStation[i].onClick = [this, i] { lblStation_Click(i); };
  cmdStation.onClick = [this] {
    selectedStation_.reset();
    cmdStation.SetVisible(false);
  };
  chkSystemController.onClick = [this] { chkSystemController_Click(); };
  cmdMore.onClick = [this] { ShowDetail(!fraMore.Visible()); };
  cmdHide.onClick = [this] { SetVisible(false); };
  lblMsg.onClick = [this] { Freeze(!Frozen_); };
  cmdFreeze.onClick = [this] { Freeze(false); };
  cmdCopyMsg.onClick = [this] { CopyText(fraMore.Caption() + "\r" + lblMsg.Caption()); };
  cmdCopyCounters.onClick = [this] { CopyText(CountersText()); };
  tmrSilence.onTimer = [this] {
    WatchForSilence();
    MarkSilentStations();
  };
  tmrPort.onTimer = [this] { OpenAwaitedPort(); };
  tmrAging.onTimer = [this] { tmrAging_Timer(); };
  tmrIndicators.onTimer = [this] { tmrIndicators_Timer(); };
}

void frmSerialPort::Form_Load() {
  ClosePort();
  ShowPortOff(MSComm1_.CommPort());
  tmrAging.SetInterval(2000);
  tmrAging.SetEnabled(true);
  tmrIndicators.SetEnabled(false);
  tmrIndicators.SetInterval(100);
  for (int i = 0; i < kStations; ++i) {
    lblStation[i].SetCaption(std::string(Element(StationNames, i)));
    lblAge[i].SetCaption("Off");
  }
  ShowDetail(Setting("More", "<") == ">");
}

void frmSerialPort::Activated() {
  if (!practising_) BuildPortList();
  chkSystemController.SetValue(LeadingNumber(Setting(kControllerKey, "0")) == 1 ? 1 : 0);
}

// A starter heard while the question is open has cleared the box. Answered with No, the box stays ticked: the
// console controls all the same, it only does not tell the stations at once.
void frmSerialPort::chkSystemController_Click() {
  const DialogBox confirm{DialogKind::YesNo, "Enabling CONTROLLER mode",
                          "Do you want to CONTROL the race equipment\rfrom this computer\r\r"
                          "Confirm that you really want to do this.",
                          DialogIcon::Exclamation};
  chkListen.SetEnabled(true);
  if (IsControllerMode() && door_.Ask(confirm).word == DialogAnswer::Word::Yes && IsControllerMode()) {
    chkListen.SetEnabled(false);
    owner_.IssueRaceEvent();
  }
  SaveSetting(kControllerKey, std::to_string(chkSystemController.Value()));
}

// The box is shown once the frame has been handled, so that reception goes on behind it.
void frmSerialPort::CancelControllerOnStarter() {
  if (!IsControllerMode()) return;
  chkSystemController.SetValue(0);
  door_.Post([this] {
    DialogBox box{DialogKind::OkCancel, "Cancel CONTROLLER mode",
                  "CONTROLLER mode is cancelled\rbecause the STARTER was detected", DialogIcon::Exclamation};
    box.byRadio = true;
    door_.Ask(box);
  });
}

std::string frmSerialPort::Setting(const std::string& key, const std::string& fallback) {
  return door_.System().Settings().GetSetting(kName, key, fallback);
}

void frmSerialPort::SaveSetting(const std::string& key, const std::string& value) {
  door_.System().Settings().SaveSetting(kName, key, value);
}

}  // namespace quorvane
