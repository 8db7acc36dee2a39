#include "ui/qt_serial.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <utility>

namespace quorvane {
namespace {

constexpr int kErrorNotFound = 2;  // numbers as the operating system gives them
constexpr int kErrorInput = 5;
constexpr int kErrorDenied = 13;
constexpr int kErrorBusy = 16;
constexpr int kTransmitFull = 1010;
constexpr qint64 kMostToWrite = 4096;  // more than four seconds at 9600 baud: nobody is taking the bytes
constexpr int kLookMs = 1000;

// Canonical device path -> name that stays with the piece of hardware.
std::map<QString, QString> NamesById() {
  std::map<QString, QString> names;
  const QDir folder(QStringLiteral("/dev/serial/by-id"));
  for (const QFileInfo& link :
       folder.entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot, QDir::Name)) {
    names.emplace(link.canonicalFilePath(), link.absoluteFilePath());
  }
  return names;
}

std::vector<SerialDevice> ListDevices(const QtSerial::GivenPorts& given) {
  std::vector<SerialDevice> found;
  const std::map<QString, QString> names = NamesById();
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    const QString path = info.systemLocation();
    const auto name = names.find(QFileInfo(path).canonicalFilePath());
    const QString identity = name == names.end() ? path : name->second;
    const SerialDeviceKind kind =
        info.hasVendorIdentifier() ? SerialDeviceKind::Usb : SerialDeviceKind::BuiltIn;
    found.push_back({identity.toStdString(), kind, path.toStdString()});
  }
  for (const auto& [number, path] : given) {
    if (QFileInfo::exists(QString::fromStdString(path))) {
      found.push_back({path, SerialDeviceKind::CommandLine, path});
    }
  }
  return found;
}

bool KnownIdentity(const PortAssignments& assignments, const std::string& identity) {
  for (const auto& [number, known] : assignments) {
    if (known == identity) return true;
  }
  return false;
}

// "9600,n,8,1"; what cannot be read stays as it is by default, which is the same.
void ApplySettings(QSerialPort& port, const QString& settings) {
  const QStringList parts = settings.split(QLatin1Char(','));
  const int baud = parts.value(0).toInt();
  port.setBaudRate(baud > 0 ? baud : 9600);
  const QString parity = parts.value(1).toLower();
  port.setParity(parity == QLatin1String("e")   ? QSerialPort::EvenParity
                 : parity == QLatin1String("o") ? QSerialPort::OddParity
                                                : QSerialPort::NoParity);
  port.setDataBits(parts.value(2) == QLatin1String("7") ? QSerialPort::Data7 : QSerialPort::Data8);
  port.setStopBits(parts.value(3) == QLatin1String("2") ? QSerialPort::TwoStop : QSerialPort::OneStop);
  port.setFlowControl(QSerialPort::NoFlowControl);
}

SerialError Denied(const QFileInfo& file) {
  if (file.isReadable() && file.isWritable()) {
    return {kErrorBusy, "Another program is using " + file.filePath().toStdString() + "."};
  }
  const std::string group = file.group().isEmpty() ? "dialout" : file.group().toStdString();
  return {kErrorDenied, "Permission denied: the user must be in the group \"" + group +
                            "\" (as administrator: usermod -aG " + group + " USER), and log in again."};
}

SerialError ReasonOf(const QSerialPort& port, const std::string& path) {
  switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
      return {kErrorNotFound, path + " is not there."};
    case QSerialPort::PermissionError:
      return Denied(QFileInfo(QString::fromStdString(path)));
    default:
      return {kErrorInput, port.errorString().toStdString()};
  }
}

}  // namespace

QtSerial::QtSerial(SettingsStore& settings, GivenPorts given)
    : settings_(settings), given_(std::move(given)) {
  // Queued: bytes must go on arriving while one of them has opened a dialog box, and a port cannot be closed
  // while it reports an error.
  QObject::connect(
      &device_, &QSerialPort::readyRead, &device_, [this] { TellBytes(); }, Qt::QueuedConnection);
  QObject::connect(
      &device_, &QSerialPort::errorOccurred, &device_,
      [this](QSerialPort::SerialPortError error) {
        if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError) HangUp();
      },
      Qt::QueuedConnection);
  look_.setInterval(kLookMs);
  QObject::connect(&look_, &QTimer::timeout, [this] { Look(); });
}

// The program hears of every change by an event, and finds the list as it was told in between: what it does
// follows from what came in and from nothing else.
const std::map<int, SerialDevice>& QtSerial::Devices() {
  if (!listed_) {
    List();
    look_.start();
  }
  return devices_;
}

void QtSerial::List() {
  listed_ = true;
  MayHaveChanged();
  const PortAssignments remembered = ReadPortAssignments(settings_);
  PortAssignments saved = remembered;
  for (const auto& [number, path] : given_) {
    std::erase_if(saved, [&p = path](const auto& entry) { return entry.second == p; });
    saved[number] = path;
  }
  PortNumbering numbering = AssignPortNumbers(saved, ListDevices(given_));
  // A device that gave its number to one of the command line keeps it for other days.
  std::erase_if(numbering.added, [&](const auto& entry) { return KnownIdentity(remembered, entry.second); });
  if (!numbering.added.empty()) SavePortAssignments(settings_, numbering.added);
  devices_ = std::move(numbering.devices);
}

// Cheap, because it runs every second. Where devices are no files it cannot tell.
bool QtSerial::MayHaveChanged() {
  const QFileInfo folder(QStringLiteral("/dev"));
  QString seen = QString::number(folder.lastModified().toMSecsSinceEpoch());
  for (const auto& [number, path] : given_) {
    seen += QFileInfo::exists(QString::fromStdString(path)) ? QLatin1Char('+') : QLatin1Char('-');
  }
  return std::exchange(seen_, seen) != seen || !folder.exists();
}

std::vector<int> QtSerial::Ports() {
  std::vector<int> numbers;
  for (const auto& [number, device] : Devices()) {
    if (number != lost_) numbers.push_back(number);
  }
  return numbers;
}

bool QtSerial::DeviceExists(int port) {
  return Devices().contains(port);
}

SerialError QtSerial::OpenDevice(int port, const std::string& settings) {
  SerialError error = TryDevice(port, settings);
  if (opened_) opened_(port, error.number, error.description);
  return error;
}

SerialError QtSerial::TryDevice(int port, const std::string& settings) {
  const auto found = Devices().find(port);
  if (found == Devices().end()) return {kErrorNotFound, "There is no such port."};
  const std::string path = found->second.path;
  device_.close();
  device_.setPortName(QString::fromStdString(path));
  if (!device_.open(QIODevice::ReadWrite)) return ReasonOf(device_, path);
  ApplySettings(device_, QString::fromStdString(settings));
  lost_ = 0;
  return {};
}

void QtSerial::CloseDevice() {
  device_.close();
}

void QtSerial::WriteDevice(const std::vector<std::uint8_t>& bytes) {
  if (!device_.isOpen()) return;
  if (device_.bytesToWrite() > kMostToWrite) return TellLineError(kTransmitFull);
  device_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

void QtSerial::TellBytes() {
  if (!device_.isOpen()) return;
  const QByteArray arrived = device_.readAll();
  if (arrived.isEmpty() || door_ == nullptr) return;
  Event event;
  event.kind = EventKind::Bytes;
  event.bytes.assign(arrived.begin(), arrived.end());
  door_->Enter(event);
}

void QtSerial::TellLineError(int code) {
  if (door_ == nullptr) return;
  Event event;
  event.kind = EventKind::LineError;
  event.number = code;
  door_->Enter(event);
}

void QtSerial::TellPorts() {
  if (door_ == nullptr) return;
  Event event;
  event.kind = EventKind::Ports;
  event.numbers = Ports();
  door_->Enter(event);
}

// The device is gone. The program closes its side when it hears that the port is no more.
void QtSerial::HangUp() {
  if (!device_.isOpen()) return;
  TellBytes();
  device_.close();
  lost_ = CommPort();
  List();
  TellPorts();
}

void QtSerial::Look() {
  if (lost_ != 0) return LookForLost();
  if (!MayHaveChanged()) return;
  const std::vector<int> before = Ports();
  List();
  if (Ports() != before) TellPorts();
}

void QtSerial::LookForLost() {
  List();
  const bool heard = !PortOpen();
  if (!heard || !DeviceExists(lost_)) return TellPorts();
  const int back = std::exchange(lost_, 0);
  TellPorts();
  if (!device_.isOpen()) lost_ = back;  // there, but it does not open yet
}

}  // namespace quorvane
