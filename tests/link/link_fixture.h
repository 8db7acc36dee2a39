#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "field/radio.h"
#include "forms/door.h"
#include "link/frm_serial_port.h"
#include "race/race_state.h"
#include "replay/virtual_platform.h"

namespace quorvane {

using Bytes = std::vector<std::uint8_t>;

// A frame as the field's own code puts it together.
inline Bytes Frame(int to, int from, field::Report report = {}) {
  report.to = static_cast<std::uint8_t>(to);
  report.from = static_cast<std::uint8_t>(from);
  const field::Frame frame = field::Encode(report);
  return {frame.begin(), frame.end()};
}

inline Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// A race that writes down what the link asks of it.
class FakeRace : public LinkOwner {
 public:
  void ProcessMessage(const StationMessage& frame) override {
    senders += std::to_string(frame.From) + " ";
    if (onFrame) onFrame(frame);
  }
  void FillRaceData(StationMessage& frame) override {
    frame.Lap = laps;
    frame.Lit = lit;
    for (std::size_t lane = 0; lane < 4; ++lane) SetCuts(frame, lane, cuts[lane]);
    SetFrameTime(frame, 0x01D4C0);
    frame.Strt = 1;
    frame.Mode = 5;
  }
  void IssueRaceEvent() override { ++raceEvents; }
  void ShowPort(const std::string& text, bool open) override {
    port = text;
    portOpen = open;
  }
  void ShowTraffic(Traffic lamp, bool on) override { (lamp == Traffic::Received ? readLit : writeLit) = on; }
  void ShowRadioState(const std::string& text, bool) override { warning = text; }

  std::string port, warning, senders;
  bool portOpen = false, readLit = false, writeLit = false;
  int raceEvents = 0;
  std::function<void(const StationMessage&)> onFrame;
  std::array<std::uint8_t, 4> laps = {}, lit = {};
  std::array<std::array<std::int16_t, 4>, 4> cuts = {};
};

// The link form, loaded, between a fake race and a virtual serial port. Everything enters through the door,
// as in the program.
struct LinkRig : DeviceEvents {
  LinkRig() {
    door.SetDevices(this);
    serial.ports = {3, 5};
    platform.settings.SaveSetting("frmSerialPort", "CommPort", "5");
  }

  // DeviceEvents
  void Load() override {
    link.Form_Load();
    door.AllForms().Show(link);
  }
  void BytesArrived(const Bytes& bytes) override { link.BytesArrived(bytes); }
  void LineError(int code) override { link.LineError(code); }
  void PortsChanged(const std::vector<int>& ports) override { link.PortsChanged(ports); }
  void EventEnded() override {}

  void EnterLoad() { door.Enter({EventKind::Load}); }
  void Click(const std::string& control) { door.Enter({EventKind::Click, "frmSerialPort." + control}); }
  void Activate() { door.Enter({EventKind::Activate, "frmSerialPort"}); }
  void Line(int code) { door.Enter({.kind = EventKind::LineError, .number = code}); }
  void Rx(const Bytes& bytes) { door.Enter({.kind = EventKind::Bytes, .bytes = bytes}); }
  void Ports(const std::vector<int>& ports) {
    serial.ports = {ports.begin(), ports.end()};
    door.Enter({.kind = EventKind::Ports, .numbers = ports});
  }
  void RunUntil(std::int64_t ms) { platform.RunUntil(door, ms); }
  void RunFor(std::int64_t ms) { RunUntil(platform.ClockMs() + ms); }

  VirtualPlatform platform;
  Door door{platform};
  VirtualSerial serial;
  RaceState state;
  FakeRace race;
  frmSerialPort link{door, state, race, serial};
};

}  // namespace quorvane
