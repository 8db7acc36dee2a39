#include "ui/qt/qt_serial.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>

#include "tests/support/ordinary_user.h"
#include "tests/ui/fixture.h"
#include "ui/qt/system_ports.h"

namespace quorvane {
namespace {

class QtSerialTest : public DoorTest {
 protected:
  QtSerialTest() { serial.SetDoor(&door); }
  // As the link form does it.
  void PortsChanged(const std::vector<int>& ports) override {
    there = std::find(ports.begin(), ports.end(), 5) != ports.end();
    ++told;
    if (!there) serial.Close();
    if (there && !serial.PortOpen()) serial.Open(5);
  }

  SerialError Open() { return serial.Open(5); }

  const std::string link = InFolder("radio");
  const std::string neighbour = InFolder("neighbour");
  QtSerial serial{settings, SerialDevices({{4, neighbour}, {5, link}})};
  bool there = true;
  int told = 0;
};

TEST(SystemPorts, AreThoseOfDevices) {
  namespace fs = std::filesystem;
  const ScratchFolder folder;
  const fs::path terminals = folder.path() / "class";
  fs::create_directories(terminals);
  for (const char* place :
       {"virtual/tty/tty1", "virtual/tty/rfcomm0", "pnp0/00:04/tty/ttyS0", "serial8250/tty/ttyS1",
        "pci/usb1/1-2/ttyUSB0/tty/ttyUSB0", "pci/usb2/tty/ttyACM3"}) {
    fs::create_directories(folder / place);
    fs::create_symlink(fs::path("..") / place, terminals / fs::path(place).filename());
  }
  std::ofstream(terminals / "ttyS0/type") << "4\n";
  std::ofstream(terminals / "ttyS1/type") << "0\n";
  std::string found;
  for (const SystemPort& port : SystemPorts(terminals)) found += port.name + (port.usb ? " usb, " : ", ");
  EXPECT_EQ(found, "ttyUSB0 usb, ttyACM3 usb, ttyS0, rfcomm0, ");
  EXPECT_TRUE(SystemPorts(terminals / "none").empty());
}

TEST_F(QtSerialTest, BytesPassBothWaysUnchanged) {
  Modem modem(link);
  settings.SaveSetting("Ports", "COM5", "/dev/serial/by-id/usb-modem");
  ASSERT_FALSE(Open());
  EXPECT_EQ(settings.GetSetting("Ports", "COM5", ""), "/dev/serial/by-id/usb-modem") << "for this run only";
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  modem.Send(all);
  EXPECT_TRUE(WaitFor([&] { return arrived.size() == all.size(); }));
  EXPECT_EQ(arrived, all);
  serial.Output({0x55, 0xAA, 0x00, 0x0D});
  std::string sent;
  EXPECT_TRUE(WaitFor([&] { return (sent += modem.Receive()).size() >= 4; }));
  EXPECT_EQ(sent, std::string("\x55\xAA\x00\x0D", 4));
}

TEST_F(QtSerialTest, BytesGoOnWhileTheFirstOfThemHasOpenedABox) {
  Modem modem(link);
  ASSERT_FALSE(Open());
  onBytes = [&] {
    onBytes = {};
    door.Post([&] {
      platform.SetAnswerer([&](const DialogBox&) {
        modem.Send("more");
        EXPECT_TRUE(WaitFor([&] { return arrived == "firstmore"; }));
        return std::optional(DialogAnswer{DialogAnswer::Word::Ok});
      });
      door.Ask({DialogKind::Ok, "T", "x"});
    });
  };
  modem.Send("first");
  EXPECT_TRUE(WaitFor([&] { return arrived.size() == 9; }));
}

TEST_F(QtSerialTest, DeviceThatGoesAwayCostsNothingAndIsOpenedAgainWhenItIsBack) {
  auto modem = std::make_unique<Modem>(link);
  ASSERT_FALSE(Open());
  std::vector<std::size_t> listed;  // how many a list of ports is filled with
  serial.SetChanged([&] { listed.push_back(serial.NamedPorts().size()); });
  modem->Send("last words");
  EXPECT_TRUE(WaitFor([&] { return arrived == "last words"; }));
  modem.reset();
  EXPECT_TRUE(WaitFor([&] { return told > 0; }));
  EXPECT_FALSE(there);
  EXPECT_FALSE(serial.PortOpen());

  const std::clock_t before = std::clock();
  WaitFor([] { return false; }, 700);
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC * 3 / 10);
  serial.Output({1, 2, 3});

  modem = std::make_unique<Modem>(link);
  EXPECT_TRUE(WaitFor([&] { return serial.PortOpen(); }));
  arrived.clear();
  modem->Send("hello again");
  EXPECT_TRUE(WaitFor([&] { return arrived == "hello again"; }));
  EXPECT_TRUE(listed.size() >= 2 && listed.back() > listed.front());
}

// Root may not be advised to join a group, and a lock may outlive its program.
TEST_F(QtSerialTest, PortThatCannotBeOpenedSaysWhyAndWhatToDo) {
  const auto expect = [](const SerialError& error, int number, const std::string& words) {
    EXPECT_EQ(error.number, number) << error.description;
    EXPECT_NE(error.description.find(words), std::string::npos) << error.description;
  };
  EXPECT_EQ(serial.Open(5).number, kErrorNoSuchPort);
  serial.SetDoor(nullptr);
  const Modem modem(link);
  const std::string device = std::filesystem::canonical(link);
  QtSerial later(settings, SerialDevices({{5, link}}));
  {
    QtSerial first(settings, SerialDevices({{5, link}}));
    ASSERT_FALSE(first.Open(5));
    expect(later.Open(5), 16, "Another program");
  }
  std::string lock = "/run/lock/LCK.." + device.substr(5);
  std::replace(lock.begin() + 10, lock.end(), '/', '_');
  std::ofstream(lock) << "99999999\nminicom\n";
  const int held = ::open(lock.c_str(), O_RDWR | O_CLOEXEC);
  EXPECT_EQ(flock(held, LOCK_EX), 0);  // so that it is not simply taken away
  expect(later.Open(5), 17, "left a lock behind");
  close(held);
  unlink(lock.c_str());
  ASSERT_EQ(chmod(device.c_str(), 0), 0);
  const AsOrdinaryUser ordinary;
  expect(later.Open(5), 13, "chgrp dialout");
}

TEST_F(QtSerialTest, AFaultyNeighbourThatIsProbedClosesOnlyItself) {
  Modem modem(link);
  const int faulty = posix_openpt(O_RDWR | O_NOCTTY);  // still locked: opening its other side is an I/O error
  EXPECT_EQ(symlink(ptsname(faulty), neighbour.c_str()), 0);
  EXPECT_EQ(serial.Open(4).number, 5);
  ASSERT_FALSE(Open());
  modem.Send("still here");
  EXPECT_TRUE(WaitFor([&] { return arrived == "still here"; }));
  EXPECT_EQ(told, 0);
  close(faulty);
}

TEST_F(QtSerialTest, WritingToALineThatNobodyReadsNeverWaits) {
  Modem modem(link);
  ASSERT_FALSE(Open());
  QElapsedTimer waited;
  waited.start();
  for (int i = 0; i < 2000; ++i) {
    serial.Output(std::vector<std::uint8_t>(36, 0x41));
    if (i % 100 == 0) Settle();
  }
  EXPECT_LT(waited.elapsed(), 1000);
  ASSERT_FALSE(lineErrors.empty());
  EXPECT_EQ(lineErrors.front(), 1010);
}

}  // namespace
}  // namespace quorvane
