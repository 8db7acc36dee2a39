#pragma once

#include <QElapsedTimer>
#include <QSerialPort>
#include <QString>
#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "console/serial_ports.h"
#include "forms/door.h"

namespace quorvane {

// The serial devices of the computer, and those of the command line.
class SerialDevices {
 public:
  using GivenPorts = std::map<int, std::string>;  // COM number -> path

  explicit SerialDevices(GivenPorts given);

  const GivenPorts& Given() const { return given_; }
  void Give(int number, const std::string& path) { given_[number] = path; }
  void TakeBack(int number) { given_.erase(number); }
  bool MayHaveChanged();  // cheap
  std::vector<SerialDevice> List();

 private:
  GivenPorts given_;
  DeviceNames names_;
  QElapsedTimer clock_;
  QString seen_;  // what the last list was made of
};

// The serial control on the computer's devices. COM numbers stay with their device (AssignPortNumbers); those
// of the command line stand for a path while the program runs. Bytes and changes go through the door.
class QtSerial : public SerialControl {
 public:
  QtSerial(SettingsStore& settings, SerialDevices devices);

  // Where bytes and port changes go; without one they are dropped.
  void SetDoor(Door* door) { door_ = door; }
  // Told what came of each opening of a device: number and description of the failure, or number 0.
  using Opened = std::function<void(int port, int number, const std::string& description)>;
  void SetOpened(Opened opened) { opened_ = std::move(opened); }
  // Called whenever devices have come or gone.
  void SetChanged(std::function<void()> changed) { changed_ = std::move(changed); }
  // The numbers of the devices that exist, as the program knows them.
  std::vector<int> Ports();
  // The same with what the operator knows them by: "ttyUSB0, FT232R USB UART".
  std::vector<std::pair<int, QString>> NamedPorts();

  // The practice field's terminal as a port, at the highest free number, which is not remembered.
  int AddPractice(const std::string& path);
  void RemovePractice();

 protected:
  bool DeviceExists(int port) override { return Devices().contains(port); }
  SerialError OpenDevice(int port) override;
  void CloseDevice() override;
  void WriteDevice(const std::vector<std::uint8_t>& bytes) override;

 private:
  const std::map<int, SerialDevice>& Devices();
  void List();
  SerialError TryDevice(int port);
  void Tell(const Event& event) {
    if (door_ != nullptr) door_->Enter(event);
  }
  void TellBytes();
  void TellLineErrors();
  void TellPorts();
  void HangUp();
  void Look();

  SettingsStore& settings_;
  SerialDevices list_;
  Door* door_ = nullptr;
  QSerialPort device_;
  int openings_ = 0;               // counts, so that an error is known for that of an earlier device
  std::map<int, int> lineErrors_;  // as the driver counted them at the last look
  Opened opened_;
  std::function<void()> changed_;
  QTimer look_;       // for devices that come and go, and for line errors
  int practice_ = 0;  // number of the practice field; 0: none
  int failed_ = 0;    // the device that failed while it was open, counts as absent for a moment; 0: none
  QElapsedTimer failedSince_;
  QElapsedTimer openedSince_;
  std::map<int, SerialDevice> devices_;
  std::vector<int> told_;  // the ports that the program knows of
};

}  // namespace quorvane
