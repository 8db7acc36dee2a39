#include "ui/qt/qt_serial.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSerialPortInfo>
#include <algorithm>
#include <utility>

#include "ui/qt/system_ports.h"

namespace quorvane {
namespace {

constexpr qint64 kMostToWrite = 4096;  // more than four seconds at 9600 baud: nobody is taking the bytes
constexpr int kLookMs = 400;
constexpr qint64 kRestMs = 1000;  // for a device that failed

const QString kById = QStringLiteral("/dev/serial/by-id");

// Behind all links: other programs look for the lock beside the device. Empty: it is not there.
QString DeviceBehind(const std::string& path) {
  return QFileInfo(QString::fromStdString(path)).canonicalFilePath();
}

// Device -> name that stays with the piece of hardware: the first of several.
QHash<QString, QString> NamesById() {
  QHash<QString, QString> names;
  const auto links = QDir(kById).entryInfoList(QDir::System | QDir::Files, QDir::Name | QDir::Reversed);
  for (const QFileInfo& link : links) names[link.canonicalFilePath()] = link.absoluteFilePath();
  return names;
}

QString ChangedAt(const QString& folder) {
  return QString::number(QFileInfo(folder).lastModified().toMSecsSinceEpoch());
}

// Step by step: what else is to do is told once the device has a group, usually "dialout".
std::string Denied(const QFileInfo& file, const std::string& path) {
  const std::string advice = "Permission denied. As administrator: ";
  const bool open = file.permission(QFile::ReadGroup | QFile::WriteGroup) && file.groupId() != 0;
  if (!open || file.group().isEmpty()) return advice + "chgrp dialout " + path + "; chmod g+rw " + path;
  return advice + "usermod -aG " + file.group().toStdString() + " USER, and log in again.";
}

// The lock that programs put beside a device they use; its first line is the number of the process. Empty:
// there is none, or whoever made it still runs.
QString StaleLock(const QString& device) {
  QString name = device;
  if (name.startsWith(QLatin1String("/dev/"))) name.remove(0, 5);
  name = QStringLiteral("LCK..") + name.replace(QLatin1Char('/'), QLatin1Char('_'));
  QFile lock(QStringLiteral("/run/lock/") + name);
  if (!lock.open(QIODevice::ReadOnly)) return {};
  const int process = lock.readLine(40).trimmed().toInt();
  const bool runs = QFileInfo::exists(QStringLiteral("/proc/%1").arg(process));
  return process > 0 && !runs ? lock.fileName() : QString();
}

SerialError Refused(const std::string& path) {
  const QString device = DeviceBehind(path);
  const QByteArray name = QFile::encodeName(device);
  const bool mayBeUsed = faccessat(AT_FDCWD, name.constData(), R_OK | W_OK, AT_EACCESS) == 0;
  if (!mayBeUsed) return {kErrorDenied, Denied(QFileInfo(device), path)};
  const QString lock = StaleLock(device);
  if (lock.isEmpty()) return {kErrorBusy, "Another program is using " + path + "."};
  return {kErrorStaleLock,
          "A program that has ended left a lock behind. As administrator: rm " + lock.toStdString()};
}

// Why it could not be opened and what to do about it, with the path as the operator knows it.
SerialError WhyNotOpen(const QSerialPort& port, const std::string& path) {
  if (port.error() == QSerialPort::DeviceNotFoundError) return {kErrorNotFound, path + " is not there."};
  if (port.error() == QSerialPort::PermissionError) return Refused(path);
  return {kErrorInput, port.errorString().toStdString()};
}

// The line errors counted by the driver, by our codes; empty: it counts none (as for pseudo-terminals).
std::map<int, int> LineErrorsOf(const QSerialPort& port) {
  serial_icounter_struct counts{};
  if (ioctl(port.handle(), TIOCGICOUNT, &counts) != 0) return {};
  return {{kCommBreak, counts.brk},
          {kCommFraming, counts.frame},
          {kCommOverrun, counts.overrun},
          {kCommOverflow, counts.buf_overrun},
          {kCommParity, counts.parity}};
}

}  // namespace

SerialDevices::SerialDevices(GivenPorts given) : given_(std::move(given)) {
  clock_.start();
  MayHaveChanged();
}

bool SerialDevices::MayHaveChanged() {
  QString seen = ChangedAt(QStringLiteral("/dev")) + QLatin1Char(' ') + ChangedAt(kById);
  for (const auto& [number, path] : given_) {
    seen += QFileInfo::exists(QString::fromStdString(path)) ? QLatin1Char('+') : QLatin1Char('-');
  }
  return std::exchange(seen_, seen) != seen || names_.Waiting();
}

std::vector<SerialDevice> SerialDevices::List() {
  const QHash<QString, QString> byId = NamesById();
  const QDateTime now = QDateTime::currentDateTime();
  std::vector<ListedPort> ports;
  for (const SystemPort& port : SystemPorts()) {
    const std::string path = "/dev/" + port.name;
    const QFileInfo file(QString::fromStdString(path));
    const QString device = file.canonicalFilePath();
    const auto given = std::ranges::find_if(
        given_, [&](const auto& entry) { return !device.isEmpty() && DeviceBehind(entry.second) == device; });
    ports.push_back({.path = path,
                     .usb = port.usb,
                     .ageMs = file.metadataChangeTime().msecsTo(now),
                     .byId = byId.value(device).toStdString(),
                     .given = given == given_.end() ? "" : given->second});
  }
  std::vector<SerialDevice> devices = names_.Name(ports, clock_.elapsed());
  // Those that the computer does not list; a path that stands there already counts once.
  for (const auto& [number, path] : given_) {
    if (QFileInfo::exists(QString::fromStdString(path))) {
      devices.push_back({path, SerialDeviceKind::CommandLine, path});
    }
  }
  return devices;
}

QtSerial::QtSerial(SettingsStore& settings, SerialDevices devices)
    : settings_(settings), list_(std::move(devices)) {
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
  if (!look_.isActive()) {
    look_.start();
    List();
    told_ = Ports();
  }
  return devices_;
}

void QtSerial::List() {
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
    return std::ranges::any_of(remembered, [&](const auto& known) { return known.second == added.second; });
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

std::vector<std::pair<int, QString>> QtSerial::NamedPorts() {
  std::vector<std::pair<int, QString>> named;
  for (const auto& [number, device] : Devices()) {
    const QString name = QFileInfo(DeviceBehind(device.path)).fileName();
    const QString what = QSerialPortInfo(name).description();
    named.emplace_back(number, what.isEmpty() ? name : name + QStringLiteral(", ") + what);
  }
  return named;
}

int QtSerial::AddPractice(const std::string& path) {
  RemovePractice();
  const PortAssignments remembered = ReadPortAssignments(settings_);
  practice_ = kLastPortNumber;
  while (practice_ > 1 && (remembered.contains(practice_) || Devices().contains(practice_))) --practice_;
  list_.Give(practice_, path);
  TellPorts();
  return practice_;
}

void QtSerial::RemovePractice() {
  if (practice_ == 0) return;
  list_.TakeBack(std::exchange(practice_, 0));
  TellPorts();
}

// A QSerialPort begins with 9600 baud, no parity, 8 data bits and 1 stop bit.
SerialError QtSerial::OpenDevice(int port) {
  SerialError error = TryDevice(port);
  if (opened_) opened_(port, error.number, error.description);
  return error;
}

SerialError QtSerial::TryDevice(int port) {
  const auto found = Devices().find(port);
  if (found == Devices().end()) return {kErrorNotFound, "There is no such port."};
  const std::string path = found->second.path;
  const QString device = DeviceBehind(path);
  CloseDevice();
  device_.setPortName(device.isEmpty() ? QString::fromStdString(path) : device);
  if (!device_.open(QIODevice::ReadWrite)) return WhyNotOpen(device_, path);
  lineErrors_ = LineErrorsOf(device_);
  openedSince_.start();
  return {};
}

void QtSerial::CloseDevice() {
  ++openings_;
  device_.close();
}

void QtSerial::WriteDevice(const std::vector<std::uint8_t>& bytes) {
  if (!device_.isOpen()) return;
  if (device_.bytesToWrite() > kMostToWrite) {
    return Tell({.kind = EventKind::LineError, .number = kCommSendFull});
  }
  device_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

void QtSerial::TellBytes() {
  // What was lost at the opening is no news, and the link knows that by its coming before the first frame.
  if (device_.isOpen() && openedSince_.elapsed() < kLookMs) TellLineErrors();
  if (!device_.isOpen()) return;
  const QByteArray arrived = device_.readAll();
  if (!arrived.isEmpty()) Tell({.kind = EventKind::Bytes, .bytes = {arrived.begin(), arrived.end()}});
}

void QtSerial::TellPorts() {
  List();
  told_ = Ports();
  Tell({.kind = EventKind::Ports, .numbers = told_});
  if (changed_) changed_();
}

// The device is gone, or no good. The program closes its side when it hears that the port is no more.
void QtSerial::HangUp() {
  if (!device_.isOpen()) return;
  TellBytes();
  CloseDevice();
  failed_ = CommPort();
  failedSince_.start();
  TellPorts();
}

void QtSerial::TellLineErrors() {
  for (const auto& [code, count] : LineErrorsOf(device_)) {
    if (std::exchange(lineErrors_[code], count) != count)
      Tell({.kind = EventKind::LineError, .number = code});
  }
}

void QtSerial::Look() {
  if (device_.isOpen()) TellLineErrors();
  const bool rested = failed_ != 0 && failedSince_.elapsed() >= kRestMs;
  if (!list_.MayHaveChanged() && !rested) return;
  if (rested) failed_ = 0;
  List();
  if (Ports() != told_) TellPorts();
}

}  // namespace quorvane
