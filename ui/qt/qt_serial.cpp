#include "ui/qt/qt_serial.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr qint64 kMostToWrite = 4096;  // more than four seconds at 9600 baud: nobody is taking the bytes
constexpr int kLookMs = 400;
constexpr qint64 kRestMs = 1000;  // for a device that failed

}  // namespace

QtSerial::QtSerial(SettingsStore& settings, GivenPorts given) : settings_(settings), list_(std::move(given)) {
  // Queued: bytes must go on arriving while one of them has opened a dialog box, and a port cannot be closed
  // while it reports an error. By then another device may be open, which the error does not concern.
  QObject::connect(
      &device_, &QSerialPort::readyRead, &device_, [this] { TellBytes(); }, Qt::QueuedConnection);
  QObject::connect(&device_, &QSerialPort::errorOccurred, [this](QSerialPort::SerialPortError error) {
    if (error != QSerialPort::ResourceError && error != QSerialPort::ReadError) return;
    const auto hangUp = [this, opening = openings_] {
      if (opening == openings_) HangUp();
    };
    QMetaObject::invokeMethod(&device_, hangUp, Qt::QueuedConnection);
  });
  look_.setInterval(kLookMs);
  QObject::connect(&look_, &QTimer::timeout, [this] { Look(); });
}

// The program hears of every change by an event, and finds the list as it was told in between: what it does
// follows from what came in and from nothing else.
const std::map<int, SerialDevice>& QtSerial::Devices() {
  if (!listed_) {
    List();
    told_ = Ports();
    look_.start();
  }
  return devices_;
}

void QtSerial::List() {
  listed_ = true;
  list_.MayHaveChanged();
  const PortAssignments remembered = ReadPortAssignments(settings_);
  PortAssignments saved = remembered;
  for (const auto& [number, path] : list_.Given()) {
    std::erase_if(saved, [&p = path](const auto& entry) { return entry.second == p; });
    saved[number] = path;
  }
  PortNumbering numbering = AssignPortNumbers(saved, list_.List());
  // A device that gave its number to one of the command line keeps it for other days.
  std::erase_if(numbering.added, [&](const auto& added) {
    return std::any_of(remembered.begin(), remembered.end(),
                       [&](const auto& known) { return known.second == added.second; });
  });
  if (!numbering.added.empty()) SavePortAssignments(settings_, numbering.added);
  devices_ = std::move(numbering.devices);
}

std::vector<int> QtSerial::Ports() {
  std::vector<int> numbers;
  for (const auto& [number, device] : Devices()) {
    if (number != failed_) numbers.push_back(number);
  }
  return numbers;
}

bool QtSerial::DeviceExists(int port) {
  return Devices().contains(port);
}

// "9600,n,8,1" is how a QSerialPort begins.
SerialError QtSerial::OpenDevice(int port, const std::string& /*settings*/) {
  SerialError error = TryDevice(port);
  if (opened_) opened_(port, error.number, error.description);
  return error;
}

// By the path behind all links, so that the lock beside the device is the one that other programs look for.
SerialError QtSerial::TryDevice(int port) {
  const auto found = Devices().find(port);
  if (found == Devices().end()) return {kErrorNotFound, "There is no such port."};
  const std::string path = found->second.path;
  const QString device = QFileInfo(QString::fromStdString(path)).canonicalFilePath();
  CloseDevice();
  device_.setPortName(device.isEmpty() ? QString::fromStdString(path) : device);
  if (!device_.open(QIODevice::ReadWrite)) return WhyNotOpen(device_, path);
  lineErrors_ = LineErrorsOf(device_);
  return {};
}

void QtSerial::CloseDevice() {
  ++openings_;
  device_.close();
}

void QtSerial::WriteDevice(const std::vector<std::uint8_t>& bytes) {
  if (!device_.isOpen()) return;
  if (device_.bytesToWrite() > kMostToWrite)
    return Tell({.kind = EventKind::LineError, .number = kCommSendFull});
  device_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

void QtSerial::TellBytes() {
  if (!device_.isOpen()) return;
  const QByteArray arrived = device_.readAll();
  if (!arrived.isEmpty()) Tell({.kind = EventKind::Bytes, .bytes = {arrived.begin(), arrived.end()}});
}

void QtSerial::TellPorts() {
  told_ = Ports();
  Tell({.kind = EventKind::Ports, .numbers = told_});
}

// The device is gone, or no good. The program closes its side when it hears that the port is no more.
void QtSerial::HangUp() {
  if (!device_.isOpen()) return;
  TellBytes();
  CloseDevice();
  failed_ = CommPort();
  failedSince_.start();
  List();
  TellPorts();
}

void QtSerial::Look() {
  if (device_.isOpen()) {
    const std::map<int, int> now = LineErrorsOf(device_);
    const std::map<int, int> before = std::exchange(lineErrors_, now);
    for (const auto& [code, count] : now) {
      const auto was = before.find(code);
      if (was != before.end() && was->second != count) Tell({.kind = EventKind::LineError, .number = code});
    }
  }
  const bool rested = failed_ != 0 && failedSince_.elapsed() >= kRestMs;
  if (!list_.MayHaveChanged() && !rested) return;
  if (rested) failed_ = 0;
  List();
  if (Ports() != told_) TellPorts();
}

}  // namespace quorvane
