#include "ui/serial_devices.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <utility>

namespace quorvane {
namespace {

const QString kById = QStringLiteral("/dev/serial/by-id");

// Canonical device path -> name that stays with the piece of hardware.
std::map<QString, QString> NamesById() {
  std::map<QString, QString> names;
  const QDir folder(kById);
  for (const QFileInfo& link :
       folder.entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot, QDir::Name)) {
    names.emplace(link.canonicalFilePath(), link.absoluteFilePath());
  }
  return names;
}

QString ChangedAt(const QString& folder) {
  return QString::number(QFileInfo(folder).lastModified().toMSecsSinceEpoch());
}

bool MayBeUsed(const QString& path) {
  return faccessat(AT_FDCWD, QFile::encodeName(path).constData(), R_OK | W_OK, AT_EACCESS) == 0;
}

// A group that has been given the device, as "dialout" usually has.
bool OpenToItsGroup(const QFileInfo& file) {
  return file.permission(QFile::ReadGroup | QFile::WriteGroup) && file.groupId() != 0 &&
         !file.group().isEmpty();
}

// One step after the other: what is left to do is told when the first step is done.
std::string Denied(const QFileInfo& file, const std::string& path) {
  const std::string advice = "Permission denied. As administrator: ";
  if (!OpenToItsGroup(file)) return advice + "chgrp dialout " + path + "; chmod g+rw " + path;
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
  const QFileInfo file(QFileInfo(QString::fromStdString(path)).canonicalFilePath());
  const QString device = file.filePath();
  if (!MayBeUsed(device)) return {kErrorDenied, Denied(file, path)};
  const QString lock = StaleLock(device);
  if (lock.isEmpty()) return {kErrorBusy, "Another program is using " + path + "."};
  return {kErrorStaleLock,
          "A program that has ended left a lock behind. As administrator: rm " + lock.toStdString()};
}

}  // namespace

bool SerialDevices::MayHaveChanged() {
  QString seen = ChangedAt(QStringLiteral("/dev")) + QLatin1Char(' ') + ChangedAt(kById);
  for (const auto& [number, path] : given_) {
    seen += QFileInfo::exists(QString::fromStdString(path)) ? QLatin1Char('+') : QLatin1Char('-');
  }
  const bool changed = std::exchange(seen_, seen) != seen;
  return changed || names_.Waiting();
}

std::string SerialDevices::GivenNameOf(const QString& device) const {
  for (const auto& [number, path] : given_) {
    if (QFileInfo(QString::fromStdString(path)).canonicalFilePath() == device) return path;
  }
  return {};
}

std::vector<SerialDevice> SerialDevices::List() {
  const std::map<QString, QString> byId = NamesById();
  const QDateTime now = QDateTime::currentDateTime();
  std::vector<ListedPort> ports;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    const QFileInfo file(info.systemLocation());
    const QString device = file.canonicalFilePath();
    const auto name = byId.find(device);
    ports.push_back({.path = info.systemLocation().toStdString(),
                     .usb = info.hasVendorIdentifier(),
                     .ageMs = file.metadataChangeTime().msecsTo(now),
                     .byId = name == byId.end() ? std::string() : name->second.toStdString(),
                     .given = device.isEmpty() ? std::string() : GivenNameOf(device)});
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

SerialError WhyNotOpen(const QSerialPort& port, const std::string& path) {
  switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
      return {kErrorNotFound, path + " is not there."};
    case QSerialPort::PermissionError:
      return Refused(path);
    default:
      return {kErrorInput, port.errorString().toStdString()};
  }
}

std::map<int, int> LineErrorsOf(const QSerialPort& port) {
  serial_icounter_struct counts{};
  if (ioctl(port.handle(), TIOCGICOUNT, &counts) != 0) return {};
  return {{kCommBreak, counts.brk},
          {kCommFraming, counts.frame},
          {kCommOverrun, counts.overrun},
          {kCommOverflow, counts.buf_overrun},
          {kCommParity, counts.parity}};
}

}  // namespace quorvane
