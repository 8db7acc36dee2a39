#include "link/port_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tools/replay/virtual_platform.h"

namespace quorvane {
namespace {

using Kind = SerialDeviceKind;

SerialDevice BuiltIn(const std::string& path) {
  return {path, Kind::BuiltIn, path};
}
SerialDevice Usb(const std::string& identity, const std::string& path = "") {
  return {identity, Kind::Usb, path.empty() ? "/dev/" + identity : path};
}

// "1=/dev/ttyS0 2=/dev/ttyS1"
std::string Text(const PortNumbering& numbering) {
  std::string text;
  for (const auto& [number, device] : numbering.devices) {
    text += (text.empty() ? "" : " ") + std::to_string(number) + "=" + device.identity;
  }
  return text;
}

TEST(PortNumbers, NewDevicesAreNumberedByKindAndNameWhateverTheirOrder) {
  std::vector<SerialDevice> devices = {{"pts", Kind::CommandLine, "/dev/pts/4"},
                                       Usb("ftdi-B"),
                                       BuiltIn("ttyS10"),
                                       Usb("ftdi-A"),
                                       BuiltIn("ttyS2")};
  std::sort(devices.begin(), devices.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
  for (int i = 0; i < 3; ++i) {
    std::reverse(devices.begin(), devices.begin() + 2 + i);
    EXPECT_EQ(Text(AssignPortNumbers({}, devices)), "1=ttyS2 2=ttyS10 3=ftdi-A 4=ftdi-B 5=pts");
  }
}

TEST(PortNumbers, ADeviceKeepsItsNumberAndAnAbsentOneToo) {
  const PortAssignments saved = {{2, "ttyS0"}, {5, "modem"}, {1, "gone"}};
  const PortNumbering now =
      AssignPortNumbers(saved, {Usb("new"), Usb("modem", "/dev/ttyUSB7"), BuiltIn("ttyS0")});
  EXPECT_EQ(Text(now), "2=ttyS0 3=new 5=modem");
  EXPECT_EQ(now.devices.at(5).path, "/dev/ttyUSB7");
  EXPECT_EQ(now.added, (PortAssignments{{3, "new"}}));
}

TEST(PortNumbers, FullListGivesAwayTheHighestAbsentNumber) {
  PortAssignments saved;
  for (int i = 1; i <= 31; ++i) saved[i] = "d" + std::to_string(i);
  EXPECT_EQ(AssignPortNumbers(saved, {Usb("d31"), Usb("new")}).added, (PortAssignments{{30, "new"}}));

  std::vector<SerialDevice> all = {Usb("new")};
  for (const auto& [number, identity] : saved) all.push_back(Usb(identity));
  const PortNumbering full = AssignPortNumbers(saved, all);
  EXPECT_EQ(full.devices.size(), 31U);
  EXPECT_TRUE(full.added.empty());
}

TEST(PortNumbers, DevicesListedTwiceCountOnce) {
  const PortNumbering now = AssignPortNumbers(
      {}, {{"/dev/ttyUSB0", Kind::CommandLine, "/dev/ttyUSB0"}, Usb("modem", "/dev/ttyUSB0")});
  EXPECT_EQ(Text(now), "1=modem");
}

TEST(PortNumbers, TwinsWithoutASerialNumberAreToldApartByPath) {
  EXPECT_EQ(Text(AssignPortNumbers({}, {Usb("cheap", "/dev/ttyUSB1"), Usb("cheap", "/dev/ttyUSB0")})),
            "1=cheap 2=/dev/ttyUSB1");
}

TEST(PortNumbers, HandEditedSettingsDoNoHarm) {
  MemorySettings settings;
  settings.SaveSetting("Ports", "COM0", "zero");
  settings.SaveSetting("Ports", "COM32", "beyond");
  settings.SaveSetting("Ports", "COM4", "modem");
  settings.SaveSetting("Ports", "COM9", "modem");
  EXPECT_EQ(ReadPortAssignments(settings), (PortAssignments{{4, "modem"}, {9, "modem"}}));
  EXPECT_EQ(
      Text(AssignPortNumbers({{0, "a"}, {32, "b"}, {4, "modem"}, {9, "modem"}}, {Usb("modem"), Usb("a")})),
      "1=a 4=modem");
}

TEST(PortNumbers, AssignmentsAreSavedByPortName) {
  MemorySettings settings;
  SavePortAssignments(settings, {{3, "modem"}});
  EXPECT_EQ(settings.GetSetting("Ports", "COM3", ""), "modem");
  EXPECT_EQ(ReadPortAssignments(settings), (PortAssignments{{3, "modem"}}));
}

}  // namespace
}  // namespace quorvane
