#pragma once

#include <QElapsedTimer>
#include <QString>
#include <map>
#include <string>
#include <vector>

#include "console/serial_ports.h"

class QSerialPort;

namespace quorvane {

// The serial devices of the computer, and those of the command line.
class SerialDevices {
 public:
  using GivenPorts = std::map<int, std::string>;  // COM number -> path

  explicit SerialDevices(GivenPorts given) : given_(std::move(given)) { clock_.start(); }

  const GivenPorts& Given() const { return given_; }
  bool MayHaveChanged();  // cheap
  std::vector<SerialDevice> List();

 private:
  std::string GivenNameOf(const QString& device) const;

  const GivenPorts given_;
  DeviceNames names_;
  QElapsedTimer clock_;
  QString seen_;  // what the last list was made of
};

// Why that port could not be opened, in words that say what to do about it. The path is the one that the
// operator knows.
SerialError WhyNotOpen(const QSerialPort& port, const std::string& path);

// The line errors that the device's driver counts, where it does: pseudo-terminals and some adapters do not.
class LineErrors {
 public:
  // The device has been opened.
  void Begin(const QSerialPort& port);
  // The codes of the errors since the last look, each kind once.
  std::vector<int> Look(const QSerialPort& port);

 private:
  std::map<int, int> counts_;  // by code; empty: not counted
};

}  // namespace quorvane
