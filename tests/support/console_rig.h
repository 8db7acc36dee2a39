#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "console/program.h"
#include "replay/virtual_platform.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {

// A station frame as a test writes it down: named bytes over a quiet frame, check byte last.
struct Frame {
  std::array<std::uint8_t, 36> bytes{0x55, 0xAA};

  Frame(int from, int to, std::int32_t clock) {
    bytes[4] = static_cast<std::uint8_t>(to);
    bytes[5] = static_cast<std::uint8_t>(from);
    bytes[7] = static_cast<std::uint8_t>(clock >> 16);
    bytes[8] = static_cast<std::uint8_t>(clock >> 8);
    bytes[9] = static_cast<std::uint8_t>(clock);
    bytes[28] = 2;
  }
  Frame& With(std::size_t at, int value) {
    bytes[at] = static_cast<std::uint8_t>(value);
    return *this;
  }
  Frame& Lane(int lane, int laps, int lit) {
    return With(29 + lane, laps).With(24 + lane, lit);
  }  // lane 0..3
  std::vector<std::uint8_t> Bytes() const {
    std::vector<std::uint8_t> wire(bytes.begin(), bytes.end());
    wire[2] = 0;
    for (std::size_t i = 3; i < wire.size(); ++i) wire[2] ^= wire[i];
    return wire;
  }
};

// The whole program on a virtual platform, with a project of its own on the disk.
class ConsoleRig {
 public:
  using Way = BackgroundFiles::Way;

  explicit ConsoleRig(bool radio = false, FileOps& files = SystemFiles(), Way way = Way::InMemory)
      : file(folder / "contest.ini"), program(platform, serial, files, way) {
    platform.homeFolder = folder / "";
    platform.programFolder = folder / "";
    if (radio) {
      serial.ports = {5};
      platform.settings.SaveSetting("frmSerialPort", "CommPort", "5");
    }
    platform.settings.SaveSetting("DiskFile", "FileName", file);
  }

  // Starts the console on a new project: four heats a round, the event "Cup".
  void Load() {
    Answer(DialogAnswer::Word::Text, "4");
    Answer(DialogAnswer::Word::Text, "Cup");
    program.door().Enter({EventKind::Load});
  }
  // The program dies as it stands; the next one begins on the same computer, project and ports `ms` later.
  void Crash(std::int64_t ms = 0) {
    std::destroy_at(&program);
    std::construct_at(&program, platform, serial, SystemFiles(), Way::AtOnce);
    platform.SetClock(platform.ClockMs() + ms);
    Answer(DialogAnswer::Word::Yes);  // the previous project
  }
  // Starts once more, with Yes to the question about what was there before.
  void LoadAgain() {
    Answer(DialogAnswer::Word::Yes);
    program.door().Enter({EventKind::Load});
  }
  void Answer(DialogAnswer::Word word, const std::string& text = {}) {
    platform.answers.push_back({word, text});
  }
  void At(std::int64_t ms) { platform.RunUntil(program.door(), ms); }
  void Click(const std::string& control) { program.door().Enter({EventKind::Click, control}); }
  void Key(const std::string& key) { program.door().Enter({.kind = EventKind::Key, .text = key}); }
  void Type(const std::string& control, const std::string& text) {
    program.door().Enter({EventKind::Type, control, text});
  }
  void Receive(const Frame& frame) {
    program.door().Enter({.kind = EventKind::Bytes, .bytes = frame.Bytes()});
  }
  // The starter says what the race is doing. `clock` is its clock in ms.
  void Starter(std::int32_t clock, bool running, int mode = 2) {
    Receive(Frame(3, 6, clock).With(3, running ? 1 : 0).With(28, mode));
  }

  frmJudge& judge() { return program.judge(); }
  frmLane& lane(int i) { return program.lane(i); }
  RaceState& race() { return program.race(); }
  std::string Value(const std::string& section, const std::string& key) {
    return program.project().GetProjectValue(section, key, "-");
  }
  std::string LastBox() const { return platform.shown.empty() ? "" : platform.shown.back().box.title; }

  ScratchFolder folder;
  std::string file;
  VirtualPlatform platform;
  VirtualSerial serial;
  Program program;
};

}  // namespace quorvane
