#include "link/device_names.h"

#include <algorithm>
#include <utility>

namespace quorvane {

std::vector<SerialDevice> DeviceNames::Name(const std::vector<ListedPort>& ports, std::int64_t nowMs) {
  waiting_ = false;
  const auto before = std::exchange(nameless_, {});
  std::vector<SerialDevice> devices;
  for (const ListedPort& port : ports) {
    const SerialDeviceKind kind = port.usb ? SerialDeviceKind::Usb : SerialDeviceKind::BuiltIn;
    if (!port.given.empty()) {
      devices.push_back({port.given, SerialDeviceKind::CommandLine, port.given});
    } else if (!port.byId.empty()) {
      devices.push_back({port.byId, kind, port.path});
    } else {
      const auto known = before.find(port.path);
      const std::int64_t since =
          known == before.end() ? nowMs - std::max<std::int64_t>(port.ageMs, 0) : known->second;
      nameless_[port.path] = since;
      if (!port.usb || nowMs - since >= kNameMs) {
        devices.push_back({port.path, kind, port.path});
      } else {
        waiting_ = true;
      }
    }
  }
  return devices;
}

}  // namespace quorvane
