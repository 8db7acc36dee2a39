#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "forms/door.h"
#include "forms/platform.h"
#include "link/serial_control.h"

namespace quorvane {

// Settings in memory.
class MemorySettings : public SettingsStore {
 public:
  std::string GetSetting(const std::string& section, const std::string& key,
                         const std::string& fallback) const override;
  void SaveSetting(const std::string& section, const std::string& key, const std::string& value) override {
    values_[{section, key}] = value;
  }

  using Values = std::map<std::pair<std::string, std::string>, std::string>;
  const Values& All() const { return values_; }

 private:
  Values values_;
};

// Serial ports that exist only in memory and keep what is written to them.
class VirtualSerial : public SerialControl {
 public:
  std::set<int> ports;
  std::map<int, SerialError> busy;              // opening these fails so
  std::vector<std::vector<std::uint8_t>> sent;  // one entry a write
  std::function<void(const std::vector<std::uint8_t>&)> onSent;
  std::function<void(int port, const SerialError&)> onOpened;  // also when it has failed

 protected:
  bool DeviceExists(int port) override { return ports.contains(port); }
  SerialError OpenDevice(int port) override;
  void CloseDevice() override {}
  void WriteDevice(const std::vector<std::uint8_t>& bytes) override;
};

// Thrown when a box is asked again and again although nobody is there to answer. No std::exception, so that
// the door does not take it for the end of one event.
struct NoWayOut {
  DialogBox box;
};

// A platform without a window, on a clock that only moves when it is told to, for tests and replays.
class VirtualPlatform : public Platform {
 public:
  struct Shown {
    std::int64_t ms;
    DialogBox box;
    DialogAnswer answer;
  };

  std::int64_t ClockMs() override { return ms_ += msPerLook; }
  LocalDateTime LocalNow() override { return AddMilliseconds(start, ms_); }
  ComputerTime Computer() override {
    return {computer.utcMs + ms_, computer.boot, computer.sinceBootMs + ms_};
  }
  DialogAnswer ShowDialog(const DialogBox& box) override;
  void RepaintWindows() override { ++repaints; }
  void BringForward(Form&) override {}
  void PlayWave(const std::string& path) override { playing = path; }
  void StopWave() override { playing.clear(); }
  void CopyText(const std::string& text) override { copied = text; }
  SettingsStore& Settings() override { return settings; }
  std::string ProgramFolder() override { return programFolder; }
  std::string HomeFolder() override { return homeFolder; }
  void EndProgram() override { ended = true; }

  // Moves the clock on to the next timer that is due before ms and fires it; false: there is none.
  bool FireTimerBefore(Door& door, std::int64_t ms);
  // Moves the clock to ms, firing on the way the timers that are due before it.
  void RunUntil(Door& door, std::int64_t ms);
  void SetClock(std::int64_t ms) { ms_ = ms; }

  LocalDateTime start = MomentOf(2026, 11, 21, 9);  // local date and time at 0 ms
  std::int64_t msPerLook = 0;                       // a real clock goes on between two looks at it
  ComputerTime computer;                            // its own clocks at 0 ms
  MemorySettings settings;
  std::string programFolder;
  std::string homeFolder;
  std::string playing;  // the wave file that sounds now
  std::string copied;   // the clipboard
  int repaints = 0;
  bool ended = false;

  std::deque<DialogAnswer> answers;                 // for the boxes to come, used in turn
  std::function<void(const DialogBox&)> whileOpen;  // runs once for each box, while it is open
  std::vector<Shown> shown;
  // How often in succession the same box may be left without an answer; then NoWayOut. An Ok box may always.
  int mostDismissals = 10000;

 private:
  DialogAnswer Dismiss(const DialogBox& box);

  std::int64_t ms_ = 0;
  DialogBox dismissed_;  // left without an answer, `dismissals_` times in succession
  int dismissals_ = 0;
};

}  // namespace quorvane
