#pragma once

#include <fstream>
#include <iterator>

#include "tests/ui/ui_fixture.h"
#include "ui/demo.h"
#include "ui/program_windows.h"

namespace quorvane {

inline std::string BytesOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Serial ports that open and stay silent.
class SilentSerial : public SerialControl {
 public:
  std::map<int, bool> ports;  // number -> whether it opens

 protected:
  bool DeviceExists(int port) override { return ports.contains(port); }
  SerialError OpenDevice(int port, const std::string&) override {
    return ports[port] ? SerialError() : SerialError{5, "Access is denied"};
  }
  void CloseDevice() override {}
  void WriteDevice(const std::vector<std::uint8_t>&) override {}
};

// The whole program in its windows, with a new project; boxes are answered as in a demonstration unless a
// test wants to see them.
class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    platform.SetAnswerer([this](const DialogBox& box) {
      shown.push_back(box.title);
      return std::optional(answer ? answer(box) : Demo::Answer(box));
    });
    program.judge().SetStartupProject(folder.filePath("test.ini").toStdString());
  }

  void Load() { Enter(EventKind::Load, {}); }
  void Enter(EventKind kind, const std::string& target, const std::string& text = {}) {
    program.door().Enter({.kind = kind, .target = target, .text = text});
  }
  void Click(const std::string& control) { Enter(EventKind::Click, control); }
  void UsePort5() {
    serial.ports = {{5, true}};
    settings.SaveSetting("frmSerialPort", "CommPort", "5");
  }
  QWidget* Shown(Control& control) {
    return windows.All().FindView(control.Owner())->Find(control)->Widget();
  }

  QTemporaryDir folder;
  QtSettings settings{folder.filePath("settings.ini").toStdString()};
  QtPlatform platform{settings};
  SilentSerial serial;
  Program program{platform, serial};
  ProgramWindows windows{program, platform};
  std::function<DialogAnswer(const DialogBox&)> answer;
  std::vector<std::string> shown;  // titles of the boxes
};

}  // namespace quorvane
