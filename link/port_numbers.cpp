#include "link/port_numbers.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace quorvane {
namespace {

constexpr const char* kSection = "Ports";

std::string KeyOf(int number) {
  return "COM" + std::to_string(number);
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The digits at the start without leading zeros; takes them from the text.
std::string_view TakeNumber(std::string_view& text) {
  std::size_t end = 0;
  while (end < text.size() && IsDigit(text[end])) ++end;
  std::string_view digits = text.substr(0, end);
  text.remove_prefix(end);
  while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
  return digits;
}

// "ttyS2" before "ttyS10": runs of digits compare as numbers of any length.
bool NaturalLess(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    if (IsDigit(a.front()) && IsDigit(b.front())) {
      const std::string_view x = TakeNumber(a);
      const std::string_view y = TakeNumber(b);
      if (x.size() != y.size()) return x.size() < y.size();
      if (x != y) return x < y;
    } else {
      if (a.front() != b.front()) return a.front() < b.front();
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  return a.empty() && !b.empty();
}

bool NumberedBefore(const SerialDevice& a, const SerialDevice& b) {
  if (a.kind != b.kind) return a.kind < b.kind;
  if (a.identity != b.identity) {
    if (NaturalLess(a.identity, b.identity)) return true;
    if (NaturalLess(b.identity, a.identity)) return false;
    return a.identity < b.identity;  // "tty1" and "tty01"
  }
  return a.path < b.path;
}

// In the order in which new ones are numbered, each path once. Two devices that call themselves the same are
// told apart by their paths.
std::vector<SerialDevice> Sorted(std::vector<SerialDevice> devices) {
  std::sort(devices.begin(), devices.end(), NumberedBefore);
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

PortAssignments Valid(const PortAssignments& saved) {
  PortAssignments valid;
  for (const auto& [number, identity] : saved) {
    if (number >= 1 && number <= kLastPortNumber && !identity.empty()) valid[number] = identity;
  }
  return valid;
}

}  // namespace

PortNumbering AssignPortNumbers(const PortAssignments& saved, std::vector<SerialDevice> present) {
  PortAssignments taken = Valid(saved);
  PortNumbering result;
  std::vector<SerialDevice> unknown;
  for (SerialDevice& device : Sorted(std::move(present))) {
    const auto known = std::find_if(taken.begin(), taken.end(),
                                    [&](const auto& entry) { return entry.second == device.identity; });
    if (known == taken.end()) {
      unknown.push_back(std::move(device));
    } else {
      result.devices.emplace(known->first, std::move(device));
    }
  }
  for (SerialDevice& device : unknown) {
    const int number = NumberForNewDevice(taken, result.devices);
    if (number == 0) break;
    taken[number] = device.identity;
    result.added[number] = device.identity;
    result.devices.emplace(number, std::move(device));
  }
  return result;
}

PortAssignments ReadPortAssignments(const SettingsStore& settings) {
  PortAssignments saved;
  for (int number = 1; number <= kLastPortNumber; ++number) {
    const std::string identity = settings.GetSetting(kSection, KeyOf(number), "");
    if (!identity.empty()) saved[number] = identity;
  }
  return saved;
}

void SavePortAssignments(SettingsStore& settings, const PortAssignments& added) {
  for (const auto& [number, identity] : added) settings.SaveSetting(kSection, KeyOf(number), identity);
}

}  // namespace quorvane
