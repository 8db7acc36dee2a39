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

// How many line errors the device's driver has counted, by the codes of the serial control; empty where it
// does not: pseudo-terminals and some adapters.
std::map<int, int> LineErrorsOf(const QSerialPort& port);

}  // namespace quorvane
