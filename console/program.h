#pragma once

#include <vector>

#include "console/frm_judge.h"
#include "console/small_forms.h"
#include "files/background_files.h"
#include "forms/door.h"
#include "link/frm_serial_port.h"
#include "link/serial_control.h"
#include "race/race_state.h"
#include "records/project.h"

namespace quorvane {

// The whole program but its windows: the shared race state, the forms and the door to them. A Load event
// starts it. What it is given must outlive it. `way`: how the race on the console is kept on the disk.
class Program : private DeviceEvents {
 public:
  Program(Platform& platform, SerialControl& serial, FileOps& files = SystemFiles(),
          BackgroundFiles::Way way = BackgroundFiles::Way::InMemory);

  Door& door() { return door_; }
  RaceState& race() { return race_; }
  RaceClock& clock() { return clock_; }
  Project& project() { return project_; }
  BackgroundFiles& keeper() { return keeper_; }
  frmJudge& judge() { return judge_; }
  frmLane& lane(int index) { return judge_.Lane(index); }  // 0..3
  frmSerialPort& link() { return link_; }
  frmTimer& timer() { return timer_; }
  frmKeyboard& keyboard() { return keyboard_; }
  frmAbout& about() { return about_; }

 private:
  void Load() override {
    timer_.Form_Load();
    judge_.Form_Load();
  }
  void BytesArrived(const std::vector<std::uint8_t>& bytes) override { link_.BytesArrived(bytes); }
  void LineError(int code) override { link_.LineError(code); }
  void PortsChanged(const std::vector<int>& ports) override { link_.PortsChanged(ports); }
  void FieldChanged(int port, const std::string& trouble) override { judge_.FieldChanged(port, trouble); }
  void Quit() override;
  void EventEnded() override { judge_.EventEnded(); }

  Door door_;
  RaceState race_;
  RaceClock clock_;
  Project project_;
  BackgroundFiles keeper_;
  frmJudge judge_;
  frmSerialPort link_;
  frmTimer timer_;
  frmKeyboard keyboard_;
  frmAbout about_;
};

}  // namespace quorvane
