// The serial port: which ones there are, which one is chosen, and what becomes of it when it is unplugged.

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/checked.h"
#include "base/text.h"
#include "link/frm_serial_port.h"
#include "link/port_numbers.h"

namespace quorvane {
namespace {

constexpr const char* kPortKey = "CommPort";

const std::map<int, const char*> kReasons = {{kErrorNoSuchPort, " is not there"},
                                             {kErrorNotFound, " is not there"},
                                             {kErrorDenied, ": no permission"},
                                             {kErrorBusy, " is in use"},
                                             {kErrorStaleLock, ": stale lock"}};

bool Contains(const std::vector<int>& ports, double port) {
  return std::ranges::find(ports, port) != ports.end();
}

}  // namespace

std::string frmSerialPort::PortText(int port) const {
  return port == practicePort_ ? "Practice" : fmt::format("COM{}", port);
}

// Tries every port, then opens the saved one again; one that is missing stays saved: it may be unplugged.
void frmSerialPort::BuildPortList() {
  const double saved = LeadingNumber(Setting(kPortKey, "-1"));
  std::vector<int> ports = {kNoPort};
  SerialError savedError;
  ClosePort();
  for (int port = 1; port <= kLastPortNumber; ++port) {
    if (port == practicePort_) continue;
    const SerialError error = MSComm1_.Open(port);
    if (!error) ports.push_back(port);
    if (port == saved) savedError = error;
  }
  ShowPorts(ports);
  const bool found = Contains(ports, saved);
  SelectPort(found ? static_cast<int>(saved) : kNoPort, found || saved < 0);
  if (savedError) AwaitPort(static_cast<int>(saved), savedError);
}

void frmSerialPort::ShowPorts(const std::vector<int>& ports) {
  shownPorts_ = ports;
  for (int i = 0; i <= optPort.Upper(); ++i) {
    const bool used = i < static_cast<int>(ports.size());
    const int port = used ? Element(ports, i) : kNoPort;
    optPort[i].SetCaption(!used ? "" : port == kNoPort ? "None" : PortText(port));
    optPort[i].SetTag(used ? std::to_string(port) : "");
    optPort[i].SetVisible(used);
    if (!used) optPort[i].SetValue(0);
  }
}

void frmSerialPort::TickPort(int port) {
  for (int i = 0; i < static_cast<int>(shownPorts_.size()); ++i) {
    optPort[i].SetValue(Element(shownPorts_, i) == port ? 1 : 0);
  }
}

// The port that is open stays so: opened anew, it would lose what is on the air meanwhile.
void frmSerialPort::optPort_Click(int index) {
  if (race_.CommActive && optPort[index].Value() != 0) return;
  SelectPort(Element(shownPorts_, index), true);
}

void frmSerialPort::SelectPort(int port, bool remember) {
  if (selectingPort_) return;
  const Restored busy(selectingPort_, true);
  TickPort(port);
  PortNumber_ = port;
  if (remember) SaveRadioPort(door_.System().Settings(), port);
  ClosePort();
  AwaitPort(0, {});
  if (port == kNoPort) return owner_.ShowPort("No Comm", false);
  const SerialError error = OpenPort(port);
  if (!error) return;
  const std::string text = fmt::format(
      "Can't open {}.\r\rReason: ({}) {}\r\r"
      "Check the connection to the Maxstream modem.\r"
      "( If a race was active when the modem was\r"
      "   turned on, it will cause the port to be locked. )",
      PortText(port), error.number, error.description);
  door_.Ask({DialogKind::Ok, "Open Serial Comm", text, DialogIcon::Critical});
  ShowPortOff(port);
  AwaitPort(port, error);
  tmrPort.SetEnabled(true);  // it may have come while the box was open
}

SerialError frmSerialPort::OpenPort(int port) {
  SerialError error = MSComm1_.Open(port);
  race_.CommActive = !error;
  if (error) return error;
  receiver_.PortOpened();
  owner_.ShowPort(PortText(port), true);
  return {};
}

void frmSerialPort::ClosePort() {
  MSComm1_.Close();
  race_.CommActive = false;
}

void frmSerialPort::ShowPortOff(int port) {
  owner_.ShowPort(PortText(port) + " - Off", false);
}

// The operator has a race to judge: a port that disappears is opened again by itself when it is back.
void frmSerialPort::PortsChanged(const std::vector<int>& ports) {
  if (practising_) {
    if (practicePort_ != 0 && !Contains(ports, practicePort_)) LosePractice();
  } else if (MSComm1_.PortOpen() && !Contains(ports, PortNumber_)) {
    ClosePort();
    ShowPortOff(PortNumber_);
    AwaitPort(PortNumber_, {kErrorNoSuchPort});
  } else if (awaitedPort_ != 0 && Contains(ports, awaitedPort_)) {
    OpenAwaitedPort();
  }
}

// No port can be chosen meanwhile: what a radio says belongs to the contest.
void frmSerialPort::BeginPractice() {
  practising_ = true;
  for (Control* option : optPort) option->Lock("End the practice first");
  AwaitPort(0, {});
  LosePractice();
}

SerialError frmSerialPort::OpenPractice(int port) {
  PortNumber_ = practicePort_ = port;
  ShowPorts({kNoPort, port});
  TickPort(port);
  ClosePort();
  SerialError error = OpenPort(port);
  if (error) LosePractice();
  return error;
}

void frmSerialPort::LosePractice() {
  ClosePort();
  ShowPortOff(practicePort_);
  ShowRadioState();
}

// The radio's port again, which may have come or gone meanwhile.
void frmSerialPort::EndPractice() {
  practising_ = false;
  for (Control* option : optPort) option->Lock("");
  BuildPortList();
  practicePort_ = 0;
}

// One that does not exist is not tried: the change of the ports tells when it does.
void frmSerialPort::AwaitPort(int port, const SerialError& reason) {
  const bool awaited = awaitedPort_ != 0;
  awaitedPort_ = port;
  awaitedReason_ = reason;
  tmrPort.SetEnabled(port != 0 && reason.number != kErrorNoSuchPort);
  if (awaited || port != 0) lblMessage.SetCaption(AwaitedText());
  ShowRadioState();
}

// Quietly: it is tried again until the port opens or the operator chooses another one.
void frmSerialPort::OpenAwaitedPort() {
  if (awaitedPort_ == 0 || selectingPort_) return;
  if (const SerialError error = OpenPort(awaitedPort_)) return AwaitPort(awaitedPort_, error);
  PortNumber_ = awaitedPort_;
  AwaitPort(0, {});
  std::vector<int> ports = shownPorts_;
  if (!Contains(ports, PortNumber_)) {
    ports.insert(std::ranges::lower_bound(ports, PortNumber_), PortNumber_);
    ShowPorts(ports);
  }
  TickPort(PortNumber_);
}

// For the console, in a few words.
std::string frmSerialPort::AwaitedShort() const {
  const auto reason = kReasons.find(awaitedReason_.number);
  return PortText(awaitedPort_) + (reason == kReasons.end() ? " does not open" : reason->second);
}

std::string frmSerialPort::AwaitedText() const {
  if (awaitedPort_ == 0) return "";
  const std::string port = PortText(awaitedPort_);
  if (awaitedReason_.number == kErrorNoSuchPort)
    return port + " is not there. It opens when it is plugged in.";
  return port + " does not open. " + awaitedReason_.description;
}

}  // namespace quorvane
