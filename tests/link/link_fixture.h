#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/door.h"
#include "common/race_state.h"
#include "link/frm_serial_port.h"
#include "tests/link/frames.h"
#include "tools/replay/virtual_platform.h"

namespace quorvane {

// A race that writes down what the link asks of it.
class FakeRace : public Form, public LinkOwner {
 public:
  explicit FakeRace(Forms& forms)
      : Form(forms, "frmJudge"),
        lblComm(Add(ControlKind::Label, "lblComm")),
        lblReadComm(Add(ControlKind::Label, "lblReadComm")),
        lblWriteComm(Add(ControlKind::Label, "lblWriteComm")),
        lblSilent(Add(ControlKind::Label, "lblSilent")),
        chkSixtySecondCount(Add(ControlKind::CheckBox, "chkSixtySecondCount")) {
    chkSixtySecondCount.SetEnabled(false);
  }

  void ProcessMessage(const StationMessage& frame) override {
    frames.push_back(frame);
    if (onFrame) onFrame(frame);
  }
  void GetLaneInfo(std::uint8_t lane, std::uint8_t& lapCount, std::uint8_t& light,
                   std::array<std::int16_t, 4>& cutCounts) override {
    lapCount = laps.at(lane);
    light = lit.at(lane);
    cutCounts = cuts.at(lane);
  }
  void LoadStartInfo(std::array<std::uint8_t, 4>& time, std::uint8_t& start, std::uint8_t& mode) override {
    time = {0, 1, 0xD4, 0xC0};
    start = 1;
    mode = 5;
  }
  void IssueRaceEvent(bool flag) override { raceEvents.push_back(flag); }
  Control& CommLabel() override { return lblComm; }
  Control& ReadLamp() override { return lblReadComm; }
  Control& WriteLamp() override { return lblWriteComm; }
  Control& SixtySecondCountBox() override { return chkSixtySecondCount; }
  Control* SilenceLabel() override { return &lblSilent; }

  Control& lblComm;
  Control& lblReadComm;
  Control& lblWriteComm;
  Control& lblSilent;
  Control& chkSixtySecondCount;
  std::vector<StationMessage> frames;
  std::function<void(const StationMessage&)> onFrame;
  std::vector<bool> raceEvents;
  std::array<std::uint8_t, 4> laps = {};
  std::array<std::uint8_t, 4> lit = {};
  std::array<std::array<std::int16_t, 4>, 4> cuts = {};
};

// The link form between a fake race and a virtual serial port. Everything enters through the door, as in the
// program.
class LinkTest : public testing::Test, public DeviceEvents {
 protected:
  using Bytes = testing_frames::Bytes;

  LinkTest() {
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

  void Enter(EventKind kind, const std::string& target = {}, int number = 0) {
    Event event;
    event.kind = kind;
    event.target = target;
    event.number = number;
    door.Enter(event);
  }
  void EnterLoad() { Enter(EventKind::Load); }
  void Click(const std::string& control) { Enter(EventKind::Click, "frmSerialPort." + control); }
  void Activate() { Enter(EventKind::Activate, "frmSerialPort"); }
  void Line(int code) { Enter(EventKind::LineError, {}, code); }
  void Rx(const Bytes& bytes) {
    Event event;
    event.kind = EventKind::Bytes;
    event.bytes = bytes;
    door.Enter(event);
  }
  void Ports(const std::vector<int>& ports) {
    serial.ports = {ports.begin(), ports.end()};
    Event event;
    event.kind = EventKind::Ports;
    event.numbers = ports;
    door.Enter(event);
  }
  void RunUntil(std::int64_t ms) { platform.RunUntil(door, ms); }
  void Answer(DialogAnswer::Word word) { platform.answers.push_back({word, {}}); }

  std::string Saved(const std::string& key) {
    return platform.settings.GetSetting("frmSerialPort", key, "(none)");
  }
  std::string CommCaption() const { return race.lblComm.Caption(); }
  int Ticked() const {  // the index of the chosen port, -1 when it is not exactly one
    int index = -1;
    for (int i = 0; i <= link.optPort.Upper(); ++i) {
      if (link.optPort[i].Value() == 1) index = index == -1 ? i : -2;
    }
    return index;
  }
  // "None,COM3,COM5": the port buttons that can be seen.
  std::string PortButtons() const {
    std::string text;
    for (const Control* button : link.optPort) {
      if (button->Visible()) text += (text.empty() ? "" : ",") + button->Caption();
    }
    return text;
  }

  VirtualPlatform platform;
  Door door{platform};
  VirtualSerial serial;
  RaceState state;
  FakeRace race{door.AllForms()};
  frmSerialPort link{door, state, race, serial};
};

}  // namespace quorvane
