#include "link/port_numbers.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace quorvane {
namespace {

std::string KeyOf(int number) {
  return "COM" + std::to_string(number);
}

// With the runs of digits filled up to one length, so that "ttyS2" comes before "ttyS10".
std::string ForOrder(std::string_view name) {
  constexpr std::size_t kLongest = 64;
  std::string text;
  while (!name.empty()) {
    const std::size_t digits = std::min(name.find_first_not_of("0123456789"), name.size());
    if (digits > 0 && digits < kLongest) text.append(kLongest - digits, '0');
    text += name.substr(0, std::max<std::size_t>(digits, 1));
    name.remove_prefix(std::max<std::size_t>(digits, 1));
  }
  return text;
}

// In the order of numbering, each path once. Devices that call themselves the same are told by their paths.
std::vector<SerialDevice> Sorted(std::vector<SerialDevice> devices) {
  const auto order = [](const SerialDevice& d) {
    return std::tuple(d.kind, ForOrder(d.identity), d.identity, d.path);
  };
  std::ranges::sort(devices, {}, order);
  std::set<std::string> paths;
  std::set<std::string> identities;
  std::vector<SerialDevice> result;
  for (SerialDevice& device : devices) {
    if (!paths.insert(device.path).second) continue;
    if (device.identity.empty() || identities.contains(device.identity)) device.identity = device.path;
    identities.insert(device.identity);
    result.push_back(std::move(device));
  }
  return result;
}

// The lowest number that was never given, otherwise the highest one whose device is absent, otherwise 0.
int NumberForNewDevice(const PortAssignments& taken, const std::map<int, SerialDevice>& present) {
  for (int number = 1; number <= kLastPortNumber; ++number) {
    if (!taken.contains(number)) return number;
  }
  for (int number = kLastPortNumber; number >= 1; --number) {
    if (!present.contains(number)) return number;
  }
  return 0;
}

}  // namespace

std::vector<SerialDevice> DeviceNames::Name(const std::vector<ListedPort>& ports, std::int64_t nowMs) {
  waiting_ = false;
  const auto before = std::exchange(nameless_, {});
  std::vector<SerialDevice> devices;
  for (const ListedPort& port : ports) {
    const SerialDeviceKind kind = port.usb ? SerialDeviceKind::Usb : SerialDeviceKind::BuiltIn;
    if (!port.given.empty()) {
      devices.push_back({port.given, SerialDeviceKind::CommandLine, port.given});
      continue;
    }
    if (!port.byId.empty()) {
      devices.push_back({port.byId, kind, port.path});
      continue;
    }
    std::int64_t& since = nameless_[port.path] = nowMs - std::max<std::int64_t>(port.ageMs, 0);
    if (before.contains(port.path)) since = before.at(port.path);
    if (port.usb && nowMs - since < kNameMs) {
      waiting_ = true;
    } else {
      devices.push_back({port.path, kind, port.path});
    }
  }
  return devices;
}

void SaveRadioPort(SettingsStore& settings, int port) {
  settings.SaveSetting("frmSerialPort", "CommPort", std::to_string(port));
}

PortAssignments ReadPortAssignments(const SettingsStore& settings) {
  PortAssignments saved;
  for (int number = 1; number <= kLastPortNumber; ++number) {
    const std::string identity = settings.GetSetting(kPortsSection, KeyOf(number), "");
    if (!identity.empty()) saved[number] = identity;
  }
  return saved;
}

void SavePortAssignments(SettingsStore& settings, const PortAssignments& added) {
  for (const auto& [number, identity] : added) settings.SaveSetting(kPortsSection, KeyOf(number), identity);
}

PortNumbering AssignPortNumbers(const PortAssignments& saved, std::vector<SerialDevice> present) {
  PortAssignments taken = saved;
  PortNumbering result;
  std::vector<SerialDevice> unknown;
  for (SerialDevice& device : Sorted(std::move(present))) {
    const auto known =
        std::ranges::find(taken, device.identity, [](const auto& entry) { return entry.second; });
    if (known == taken.end()) {
      unknown.push_back(std::move(device));
    } else {
      result.devices.emplace(known->first, std::move(device));
    }
  }
  for (SerialDevice& device : unknown) {
    const int number = NumberForNewDevice(taken, result.devices);
    if (number == 0) break;
    taken[number] = result.added[number] = device.identity;
    result.devices.emplace(number, std::move(device));
  }
  return result;
}

}  // namespace quorvane
