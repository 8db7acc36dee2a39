#include "ui/qt/system_ports.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <system_error>

namespace quorvane {
namespace {

// Bluetooth, a pair of ports joined by software, and a computer that is itself a USB device.
constexpr const char* kVirtualPorts[] = {"rfcomm", "tnt", "ttyGS"};

bool HasNoChip(const std::filesystem::path& terminal) {
  std::ifstream file(terminal / "type");
  int type = 0;
  return file >> type && type == 0;
}

}  // namespace

std::vector<SystemPort> SystemPorts(const std::filesystem::path& terminals) {
  std::map<std::string, SystemPort> found;  // by the place in the computer
  std::error_code none;
  std::filesystem::directory_iterator entry(terminals, none);
  for (; entry != std::filesystem::directory_iterator(); entry.increment(none)) {
    const std::string place = std::filesystem::read_symlink(entry->path(), none).string();
    const std::string name = entry->path().filename().string();
    const bool device = !place.empty() && place.find("/virtual/") == std::string::npos;
    const bool port = std::ranges::any_of(kVirtualPorts, [&](auto begin) { return name.starts_with(begin); });
    if ((device || port) && !HasNoChip(entry->path())) {
      found[place] = {.name = name, .usb = place.find("/usb") != std::string::npos};
    }
  }
  std::vector<SystemPort> ports;
  for (auto& [place, port] : found) ports.push_back(std::move(port));
  return ports;
}

}  // namespace quorvane
