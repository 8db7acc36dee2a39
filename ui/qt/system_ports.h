#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quorvane {

struct SystemPort {
  std::string name;  // "ttyUSB0"
  bool usb = false;
};

// The serial ports among the system's terminals, in the order of their places in the computer. `terminals` is
// the folder in which Linux shows them: a link each to the device, which has a file "type" where a chip of a
// mainboard serves it ("0": there is none). Qt lists them too, but asks about each of 64 virtual screens,
// which holds the window up for 11 ms at the start and whenever anything is plugged in.
std::vector<SystemPort> SystemPorts(const std::filesystem::path& terminals = "/sys/class/tty");

}  // namespace quorvane
