#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "forms/platform.h"

namespace quorvane {

inline constexpr int kLastPortNumber = 31;

enum class SerialDeviceKind : std::uint8_t { BuiltIn, Usb, CommandLine };

// A serial device of the computer. The identity names the same piece of hardware at every start and in
// whatever socket: the by-id name where there is one, otherwise the path.
struct SerialDevice {
  std::string identity;
  SerialDeviceKind kind = SerialDeviceKind::BuiltIn;
  std::string path;

  bool operator==(const SerialDevice&) const = default;
};

// COM number -> identity of the device that it stands for.
using PortAssignments = std::map<int, std::string>;

struct PortNumbering {
  std::map<int, SerialDevice> devices;  // the devices present, by COM number
  PortAssignments added;                // what is to be remembered from now on
};

// Gives every device present its COM number, 1..31. A device keeps the number it was given once, present or
// not; a new one takes the lowest free number: built-in ports first, then USB, then paths from the command
// line, in the order of their names and never in that of their plugging. When no number is free, the highest
// one whose device is absent is given away; when there is none such either, the device gets no number. A
// device that is listed twice counts once.
PortNumbering AssignPortNumbers(const PortAssignments& saved, std::vector<SerialDevice> present);

// The assignments in the settings store: section "Ports", keys "COM1".."COM31".
PortAssignments ReadPortAssignments(const SettingsStore& settings);
void SavePortAssignments(SettingsStore& settings, const PortAssignments& added);

}  // namespace quorvane
