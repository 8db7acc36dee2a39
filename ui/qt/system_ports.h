#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quorvane {

struct SystemPort {
  std::string name;  // "ttyUSB0"
  bool usb = false;
};

// The serial ports among the terminals, by their places in the computer. `terminals` has a link to each,
// with a file "type" where a chip of a mainboard serves it ("0": there is none). Qt, asking about 64 virtual
// screens as well, holds the window up for 11 ms at the start and whenever anything is plugged in.
std::vector<SystemPort> SystemPorts(const std::filesystem::path& terminals = "/sys/class/tty");

}  // namespace quorvane
