#include "link/port_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

using Kind = SerialDeviceKind;

SerialDevice Usb(const std::string& identity, const std::string& path = "") {
  return {identity, Kind::Usb, path.empty() ? "/dev/" + identity : path};
}

// "1=/dev/ttyS0 2=/dev/ttyS1 ": the devices, with the numbers they get.
std::string Assigned(const PortAssignments& saved, const std::vector<SerialDevice>& devices) {
  std::string text;
  for (const auto& [number, device] : AssignPortNumbers(saved, devices).devices)
    text += std::to_string(number) + "=" + device.identity + " ";
  return text;
}

TEST(PortNumbers, NewDevicesAreNumberedByKindAndNameWhateverTheirOrder) {
  std::vector<SerialDevice> devices = {{"pts", Kind::CommandLine, "/dev/pts/4"},
                                       Usb("ftdi-B"),
                                       {"ttyS10", Kind::BuiltIn, "ttyS10"},
                                       Usb("ftdi-A"),
                                       {"ttyS2", Kind::BuiltIn, "ttyS2"}};
  for (int i = 0; i < 5; ++i) {
    std::rotate(devices.begin(), devices.begin() + 2, devices.end());
    EXPECT_EQ(Assigned({}, devices), "1=ttyS2 2=ttyS10 3=ftdi-A 4=ftdi-B 5=pts ");
  }
}

TEST(PortNumbers, NumbersAreKeptAndGivenOnce) {
  EXPECT_EQ(Assigned({{2, "ttyS0"}, {5, "modem"}, {1, "gone"}},
                     {Usb("new"), Usb("modem"), {"ttyS0", Kind::BuiltIn, "ttyS0"}}),
            "2=ttyS0 3=new 5=modem ");
  // Listed twice: by the command line too. Twins without a serial number are told apart by path.
  EXPECT_EQ(Assigned({}, {{"/dev/ttyUSB0", Kind::CommandLine, "/dev/ttyUSB0"}, Usb("modem", "/dev/ttyUSB0")}),
            "1=modem ");
  EXPECT_EQ(Assigned({}, {Usb("cheap", "/dev/ttyUSB1"), Usb("cheap", "/dev/ttyUSB0")}),
            "1=cheap 2=/dev/ttyUSB1 ");
  // Edited by hand.
  EXPECT_EQ(Assigned({{4, "modem"}, {9, "modem"}}, {Usb("modem"), Usb("a")}), "1=a 4=modem ");
}

TEST(PortNumbers, FullListGivesAwayTheHighestAbsentNumber) {
  PortAssignments saved;
  std::vector<SerialDevice> all = {Usb("new")};
  for (int i = 1; i <= 31; ++i) {
    saved[i] = "d" + std::to_string(i);
    all.push_back(Usb(saved[i]));
  }
  EXPECT_EQ(AssignPortNumbers(saved, {Usb("d31"), Usb("new")}).added, (PortAssignments{{30, "new"}}));
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
