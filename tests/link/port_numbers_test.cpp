#include "link/port_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

using Kind = SerialDeviceKind;

// "modem", "modem@/dev/ttyUSB0" (USB), "ttyS0" (built in), "/dev/pts/4" (command line).
SerialDevice Device(const std::string& text) {
  const std::string identity = text.substr(0, text.find('@'));
  const bool given = text.starts_with('/'), builtIn = text.starts_with("ttyS");
  const Kind kind = given ? Kind::CommandLine : builtIn ? Kind::BuiltIn : Kind::Usb;
  return {identity, kind, identity != text ? text.substr(text.find('@') + 1) : (given ? "" : "/dev/") + text};
}

// "1=/dev/ttyS0 2=/dev/ttyS1 ": the devices, with the numbers they get.
std::string Assigned(const PortAssignments& saved, const std::vector<SerialDevice>& devices) {
  std::string text;
  for (const auto& [number, device] : AssignPortNumbers(saved, devices).devices)
    text += std::to_string(number) + "=" + device.identity + " ";
  return text;
}

TEST(PortNumbers, AreGivenOnceAndKeptWhateverTheOrderOfTheDevices) {
  const std::tuple<PortAssignments, std::vector<std::string>, const char*> cases[] = {
      {{}, {"/dev/pts/4", "b", "ttyS10", "a", "ttyS2"}, "1=ttyS2 2=ttyS10 3=a 4=b 5=/dev/pts/4 "},
      {{{2, "ttyS0"}, {5, "modem"}, {1, "gone"}}, {"new", "modem", "ttyS0"}, "2=ttyS0 3=new 5=modem "},
      {{}, {"/dev/ttyUSB0", "modem@/dev/ttyUSB0"}, "1=modem "},                    // given, and found as well
      {{}, {"twin@/dev/ttyUSB1", "twin@/dev/ttyUSB0"}, "1=twin 2=/dev/ttyUSB1 "},  // without serial number
      {{{4, "modem"}, {9, "modem"}}, {"modem", "a"}, "1=a 4=modem "}};             // edited by hand
  for (const auto& [saved, texts, numbers] : cases) {
    std::vector<SerialDevice> devices;
    std::ranges::transform(texts, std::back_inserter(devices), Device);
    for (std::size_t i = 0; i < devices.size(); ++i) {
      std::rotate(devices.begin(), devices.begin() + 1, devices.end());
      EXPECT_EQ(Assigned(saved, devices), numbers);
    }
  }
}

TEST(PortNumbers, FullListGivesAwayTheHighestAbsentNumber) {
  PortAssignments saved;
  std::vector<SerialDevice> all = {Device("new")};
  for (int i = 1; i <= 31; ++i) {
    saved[i] = "d" + std::to_string(i);
    all.push_back(Device(saved[i]));
  }
  EXPECT_EQ(AssignPortNumbers(saved, {Device("d31"), Device("new")}).added, (PortAssignments{{30, "new"}}));
  const PortNumbering full = AssignPortNumbers(saved, all);
  EXPECT_EQ(full.devices.size(), 31U);
  EXPECT_TRUE(full.added.empty());
}

TEST(PortNumbers, AnAdapterIsKnownByItsNameAlsoWhenThatComesLate) {
  DeviceNames names;
  const auto named = [&](std::int64_t now, const std::vector<ListedPort>& ports) {
    std::string text = Assigned({{2, "by-id/modem"}, {5, "/dev/given"}}, names.Name(ports, now));
    return text + (names.Waiting() ? "..." : "");
  };
  const ListedPort fresh{"/dev/ttyUSB0", true}, known{"/dev/ttyUSB0", true, 0, "by-id/modem"};
  EXPECT_EQ(named(0, {{"/dev/ttyS0"}, fresh}), "1=/dev/ttyS0 ...");
  EXPECT_EQ(named(900, {known}), "2=by-id/modem ");
  EXPECT_EQ(named(5000, {fresh}), "...");  // another one in the same socket
  EXPECT_EQ(named(5999, {fresh}), "...");
  EXPECT_EQ(named(6000, {fresh}), "1=/dev/ttyUSB0 ");  // it gets none
  EXPECT_EQ(named(7000, {{"/dev/ttyUSB1", true, 60000}}), "1=/dev/ttyUSB1 ");
  // A number of the command line holds also for an adapter that has a name.
  EXPECT_EQ(named(8000, {{"/dev/ttyUSB0", true, 0, "by-id/modem", "/dev/given"}}), "5=/dev/given ");
}

TEST(PortNumbers, AreSavedByPortName) {
  MemorySettings settings;
  SavePortAssignments(settings, {{3, "modem"}});
  EXPECT_EQ(settings.GetSetting("Ports", "COM3", ""), "modem");
  settings.SaveSetting("Ports", "COM0", "zero");
  settings.SaveSetting("Ports", "COM32", "beyond");
  settings.SaveSetting("Ports", "COM9", "modem");
  EXPECT_EQ(ReadPortAssignments(settings), (PortAssignments{{3, "modem"}, {9, "modem"}}));
}

}  // namespace
}  // namespace quorvane
