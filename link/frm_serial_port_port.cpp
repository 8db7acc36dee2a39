// The serial port: which ones there are, which one is chosen, and what becomes of it when it is unplugged.

#include <fmt/format.h>

#include <algorithm>

#include "base/busy_flag.h"
#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr const char* kPortKey = "CommPort";
constexpr int kLastPort = 31;

std::string PortText(int port) {
  return fmt::format("COM{}", port);
}

const char* ReasonText(int error) {
  switch (error) {
    case kErrorNoSuchPort:
    case kErrorNotFound:
      return " is not there";
    case kErrorDenied:
      return ": no permission";
    case kErrorBusy:
      return " is in use";
    case kErrorStaleLock:
      return ": stale lock";
    default:
      return " does not open";
  }
}

bool Contains(const std::vector<int>& ports, int port) {
  return std::ranges::find(ports, port) != ports.end();
}

}  // namespace

// Tries every port, closes the open one and opens the saved one again. A saved port that is missing stays
// saved: it may only be unplugged.
void frmSerialPort::BuildPortList() {
  const double saved = LeadingNumber(Setting(kPortKey, "-1"));
  std::vector<int> ports;
  SerialError savedError;
  for (int port = 1; port <= kLastPort; ++port) {
    ClosePort();
    SerialError error = MSComm1_.SetCommPort(port);
    if (!error) error = MSComm1_.SetPortOpen(true);
    if (!error) ports.push_back(port);
    if (port == saved) savedError = error;
  }
  ShowPorts(ports);
  const auto found = std::ranges::find(ports, saved);
  const bool missing = found == ports.end();
  SelectPort(missing ? 0 : static_cast<std::size_t>(found - ports.begin()) + 1, !missing || saved < 0);
  if (savedError) AwaitPort(static_cast<int>(saved), savedError);
}

void frmSerialPort::ShowPorts(const std::vector<int>& ports) {
  shownPorts_ = ports;
  optPort[0].SetCaption("None");
  optPort[0].SetTag("-1");
  for (int i = 1; i <= optPort.Upper(); ++i) {
    const bool used = i <= static_cast<int>(ports.size());
    const int port = used ? Element(ports, i - 1) : 0;
    optPort[i].SetCaption(used ? PortText(port) : "");
    optPort[i].SetTag(used ? std::to_string(port) : "");
    optPort[i].SetVisible(used);
    if (!used) optPort[i].SetValue(0);
  }
}

void frmSerialPort::TickPort(std::size_t index) {
  for (int i = 0; i <= optPort.Upper(); ++i) optPort[i].SetValue(i == static_cast<int>(index) ? 1 : 0);
}

// The port that is open stays so: opened anew, it would lose what is on the air meanwhile.
void frmSerialPort::optPort_Click(int index) {
  if (race_.CommActive && optPort[index].Value() != 0) return;
  SelectPort(static_cast<std::size_t>(index), true);
}

void frmSerialPort::SelectPort(std::size_t index, bool remember) {
  if (selectingPort_) return;
  const BusyFlag busy(selectingPort_);
  TickPort(index);
  PortNumber_ = index == 0 ? -1 : shownPorts_.at(index - 1);
  if (remember) SaveSetting(kPortKey, std::to_string(PortNumber_));
  ClosePort();
  AwaitPort(0, {});
  if (PortNumber_ < 0) return owner_.ShowPort("No Comm", false);
  if (const SerialError error = OpenPort(PortNumber_)) {
    ReportOpenFailure(error);
    ShowPortOff(PortNumber_);
    AwaitPort(PortNumber_, error);
  }
}

SerialError frmSerialPort::OpenPort(int port) {
  SerialError error = MSComm1_.SetCommPort(port);
  if (!error) error = MSComm1_.SetPortOpen(true);
  race_.CommActive = !error;
  if (error) return error;
  receiver_.PortOpened();
  owner_.ShowPort(PortText(port), true);
  return {};
}

void frmSerialPort::ClosePort() {
  MSComm1_.SetPortOpen(false);
  race_.CommActive = false;
}

void frmSerialPort::ShowPortOff(int port) {
  owner_.ShowPort(PortText(port) + " - Off", false);
}

void frmSerialPort::ReportOpenFailure(const SerialError& error) {
  const std::string text = fmt::format(
      "Can't open {}.\r\rReason: ({}) {}\r\r"
      "Check the connection to the Maxstream modem.\r"
      "( If a race was active when the modem was\r"
      "   turned on, it will cause the port to be locked. )",
      PortText(PortNumber_), error.number, error.description);
  door_.Ask({DialogKind::Ok, "Open Serial Comm", text, DialogIcon::Critical});
}

// The operator has a race to judge: a port that disappears is opened again by itself when it is back.
void frmSerialPort::PortsChanged(const std::vector<int>& ports) {
  if (MSComm1_.PortOpen() && !Contains(ports, PortNumber_)) {
    ClosePort();
    ShowPortOff(PortNumber_);
    AwaitPort(PortNumber_, {kErrorNoSuchPort});
  } else if (awaitedPort_ != 0 && Contains(ports, awaitedPort_)) {
    OpenAwaitedPort();
  }
}

// One that does not exist is not tried: the change of the ports tells when it does.
void frmSerialPort::AwaitPort(int port, const SerialError& reason) {
  const bool awaited = awaitedPort_ != 0;
  awaitedPort_ = port;
  awaitedReason_ = reason;
  tmrPort.SetEnabled(port != 0 && reason.number != kErrorNoSuchPort);
  if (awaited || port != 0) lblMessage.SetCaption(AwaitedText());
  ShowRadioWarning();
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
  TickPort(static_cast<std::size_t>(std::ranges::find(ports, PortNumber_) - ports.begin()) + 1);
}

// For the console, in a few words.
std::string frmSerialPort::AwaitedShort() const {
  return PortText(awaitedPort_) + ReasonText(awaitedReason_.number);
}

std::string frmSerialPort::AwaitedText() const {
  if (awaitedPort_ == 0) return "";
  const std::string port = PortText(awaitedPort_);
  if (awaitedReason_.number == kErrorNoSuchPort)
    return port + " is not there. It opens when it is plugged in.";
  return port + " does not open. " + awaitedReason_.description;
}

}  // namespace quorvane
