// The serial port: which ones there are, which one is chosen, and what becomes of it when it is unplugged.

#include <algorithm>

#include "base/busy_flag.h"
#include "base/text.h"
#include "link/frm_serial_port.h"

namespace quorvane {
namespace {

constexpr const char* kLineSettings = "9600,n,8,1";
constexpr const char* kPortKey = "CommPort";
constexpr int kLastPort = 31;

std::string PortText(int port) {
  return "COM" + std::to_string(port);
}

std::string ReasonText(int error) {
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

std::string CommErrorText(int code) {
  switch (code) {
    case kCommBreak:
      return "A Break signal was received";
    case kCommFraming:
      return "Framing Error. The hardware detected a framing error.";
    case kCommOverrun:
      return "Port Overrun. A character was not read from the hardware before the next character arrived and "
             "was lost.";
    case kCommOverflow:
      return "Receive Buffer Overflow. There is no room in the receive buffer.";
    case kCommParity:
      return "Parity Error. The hardware detected a parity error.";
    case kCommSendFull:
      return "Transmit Buffer Full. The transmit buffer was full while trying to queue a character.";
    case 1011:
      return "Unexpected error retrieving Device Control Block (DCB) for the port.";
    default:
      return "Unexpected error #" + std::to_string(code);
  }
}

}  // namespace

bool frmSerialPort::PortAvailable(int port) {
  return !TryPort(port);
}

SerialError frmSerialPort::TryPort(int port) {
  ClosePort();
  MSComm1_.SetSettings(kLineSettings);
  if (SerialError error = MSComm1_.SetCommPort(port)) return error;
  return MSComm1_.SetPortOpen(true);
}

// Closes the open port and opens the saved one again. A saved port that is missing stays saved: it may only
// be unplugged.
void frmSerialPort::BuildPortList() {
  const double saved = LeadingNumber(Setting(kPortKey, "-1"));
  std::vector<int> ports;
  SerialError savedError;
  for (int port = 1; port <= kLastPort; ++port) {
    const SerialError error = TryPort(port);
    if (!error) ports.push_back(port);
    if (port == saved) savedError = error;
  }
  ShowPorts(ports);
  const auto found = std::find(ports.begin(), ports.end(), saved);
  const bool missing = found == ports.end();
  SelectPort(missing ? 0 : static_cast<int>(found - ports.begin()) + 1, !missing || saved < 0);
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

void frmSerialPort::TickPort(int index) {
  for (int i = 0; i <= optPort.Upper(); ++i) optPort[i].SetValue(i == index ? 1 : 0);
}

// The port that is open stays so: opened anew, it would lose what is on the air meanwhile.
void frmSerialPort::optPort_Click(int index) {
  if (race_.CommActive && optPort[index].Value() != 0) return;
  SelectPort(index, true);
}

void frmSerialPort::SelectPort(int index, bool remember) {
  if (selectingPort_) return;
  const BusyFlag busy(selectingPort_);
  TickPort(index);
  PortNumber_ = LeadingInteger(optPort[index].Tag());
  if (remember) SaveSetting(kPortKey, std::to_string(PortNumber_));
  ClosePort();
  AwaitPort(0, {});
  if (PortNumber_ >= 0) {
    if (const SerialError error = OpenPort(PortNumber_)) {
      ReportOpenFailure(error);
      owner_.ShowPort(PortText(PortNumber_) + " - Off", false);
      AwaitPort(PortNumber_, error);
    }
  } else {
    owner_.ShowPort("No Comm", false);
  }
}

SerialError frmSerialPort::OpenPort(int port) {
  MSComm1_.SetSettings(kLineSettings);
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

void frmSerialPort::ReportOpenFailure(const SerialError& error) {
  DialogBox box;
  box.kind = DialogKind::Ok;
  box.icon = DialogIcon::Critical;
  box.title = "Open Serial Comm";
  box.text = "Can't open " + PortText(PortNumber_) + ".\r\rReason: (" + std::to_string(error.number) + ") " +
             error.description +
             "\r\rCheck the connection to the Maxstream modem.\r"
             "( If a race was active when the modem was\r"
             "   turned on, it will cause the port to be locked. )";
  door_.Ask(box);
}

// The operator has a race to judge: a port that disappears is opened again by itself when it is back.
void frmSerialPort::PortsChanged(const std::vector<int>& ports) {
  const auto exists = [&](int port) { return std::find(ports.begin(), ports.end(), port) != ports.end(); };
  if (MSComm1_.PortOpen() && !exists(PortNumber_)) {
    ClosePort();
    owner_.ShowPort(PortText(PortNumber_) + " - Off", false);
    AwaitPort(PortNumber_, {kErrorNoSuchPort});
  } else if (awaitedPort_ != 0 && exists(awaitedPort_)) {
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

void frmSerialPort::tmrPort_Timer() {
  OpenAwaitedPort();
}

// Quietly: it is tried again until the port opens or the operator chooses another one.
void frmSerialPort::OpenAwaitedPort() {
  if (awaitedPort_ == 0 || selectingPort_) return;
  if (const SerialError error = OpenPort(awaitedPort_)) return AwaitPort(awaitedPort_, error);
  PortNumber_ = ToInteger(awaitedPort_);
  AwaitPort(0, {});
  std::vector<int> ports = shownPorts_;
  auto place = std::lower_bound(ports.begin(), ports.end(), PortNumber_);
  if (place == ports.end() || *place != PortNumber_) {
    place = ports.insert(place, PortNumber_);
    ShowPorts(ports);
  }
  TickPort(static_cast<int>(place - ports.begin()) + 1);
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

void frmSerialPort::DisplayCommError() {
  const int code = MSComm1_.CommEvent();
  // A modem that was sending already fills the buffers before the console reads them for the first time.
  if ((code == kCommOverrun || code == kCommOverflow) && receiver_.PortJustOpened()) return;
  ShowLinkMessage(CommErrorText(code));
}

}  // namespace quorvane
