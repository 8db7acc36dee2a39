#pragma once

#include <QSerialPort>
#include <QTimer>
#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "common/door.h"
#include "console/serial_ports.h"

namespace quorvane {

// The serial control on the computer's serial devices. COM numbers stay with their device, see
// AssignPortNumbers; a number given on the command line stands for its path while the program runs. What
// arrives, and a device that is unplugged or plugged in again, reaches the program through the door.
class QtSerial : public SerialControl {
 public:
  using GivenPorts = std::map<int, std::string>;  // COM number -> path

  QtSerial(SettingsStore& settings, GivenPorts given);

  // Where bytes and port changes go; without one they are dropped.
  void SetDoor(Door* door) { door_ = door; }

 protected:
  bool DeviceExists(int port) override;
  SerialError OpenDevice(int port, const std::string& settings) override;
  void CloseDevice() override;
  void WriteDevice(const std::vector<std::uint8_t>& bytes) override;

 private:
  const std::map<int, SerialDevice>& Devices();
  void TellBytes();
  void TellPorts();
  void TellLineError(int code);
  void HangUp();
  void LookForLost();

  SettingsStore& settings_;
  const GivenPorts given_;
  Door* door_ = nullptr;
  QSerialPort device_;
  QTimer look_;   // for the device that was unplugged
  int lost_ = 0;  // its number, 0: none
  std::map<int, SerialDevice> devices_;
  std::chrono::steady_clock::time_point listedAt_;
};

}  // namespace quorvane
