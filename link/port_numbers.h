#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "forms/platform.h"

namespace quorvane {

inline constexpr int kLastPortNumber = 31;
inline constexpr int kNoPort = -1;  // as the radio's: none

enum class SerialDeviceKind : std::uint8_t { BuiltIn, Usb, CommandLine };

// A serial device of the computer. The identity names the same piece of hardware at every start and in
// whatever socket: the by-id name where there is one, otherwise the path.
struct SerialDevice {
  std::string identity;
  SerialDeviceKind kind = SerialDeviceKind::BuiltIn;
  std::string path;

  bool operator==(const SerialDevice&) const = default;
};

// A serial port as the computer lists it just now.
struct ListedPort {
  std::string path;
  bool usb = false;
  std::int64_t ageMs = 0;  // of its device file
  std::string byId = {};   // its by-id name; empty: none yet
  std::string given = {};  // the path by which the command line names it; empty: it does not
};

// Tells by what name each listed port is known. The system gives a USB adapter its by-id name a moment after
// its device file: until then the adapter is left out, because it would be taken for another one. An adapter
// that has no name after kNameMs goes by its path.
class DeviceNames {
 public:
  static constexpr std::int64_t kNameMs = 1000;

  std::vector<SerialDevice> Name(const std::vector<ListedPort>& ports, std::int64_t nowMs);
  // A port was left out: ask again soon.
  bool Waiting() const { return waiting_; }

 private:
  std::map<std::string, std::int64_t> nameless_;  // path -> since when it stands there without a name
  bool waiting_ = false;
};

// The port of the radio, opened at every start.
void SaveRadioPort(SettingsStore& settings, int port);

// COM number -> identity of its device. In the settings store: section kPortsSection, keys "COM1".."COM31".
inline constexpr const char* kPortsSection = "Ports";
using PortAssignments = std::map<int, std::string>;
PortAssignments ReadPortAssignments(const SettingsStore& settings);
void SavePortAssignments(SettingsStore& settings, const PortAssignments& added);

struct PortNumbering {
  std::map<int, SerialDevice> devices;  // the devices present, by COM number
  PortAssignments added;                // what is to be remembered from now on
};

// Gives every device present its COM number, 1..31. A device keeps the number it was given once, present or
// not; a new one takes the lowest free number: built-in ports first, then USB, then paths from the command
// line, in the order of their names. When no number is free, the highest one whose device is absent is given
// away, if there is one. A device that is listed twice counts once.
PortNumbering AssignPortNumbers(const PortAssignments& saved, std::vector<SerialDevice> present);

}  // namespace quorvane
