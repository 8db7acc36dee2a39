#include <QElapsedTimer>
#include <QLabel>
#include <vector>

#include "link/station_message.h"
#include "tests/ui/modem.h"
#include "tests/ui/program_fixture.h"
#include "ui/qt/qt_serial.h"

namespace quorvane {
namespace {

// A heat that is flown by frames on a pseudo-terminal alone.
class RadioHeatTest : public testing::Test {
 protected:
  RadioHeatTest() {
    settings.SaveSetting("frmSerialPort", "CommPort", "5");
    platform.SetAnswerer([](const DialogBox& box) { return std::optional(Demo::Answer(box)); });
    program.judge().SetStartupProject(folder.filePath("test.ini").toStdString());
    serial.SetDoor(&program.door());
    program.door().Enter({.kind = EventKind::Load});
  }

  void Send(StationMessage frame) {
    frame.Wig1 = kWig1;
    frame.Wig2 = kWig2;
    frame.Mode = 2;
    FrameBytes bytes = EncodeFrame(frame);
    bytes[2] = ComputeEcc(bytes);
    modem.Send(std::string(bytes.begin(), bytes.end()));
  }
  // The starter's clock stands far enough behind the start signal for laps to count at once.
  void SendStarter(bool running) {
    StationMessage frame{.To = kPylonBox, .From = kStarter};
    frame.Strt = running ? 1 : 0;
    frame.Time = {0, 1, 0x11, 0x70};  // 70000
    Send(frame);
    ASSERT_TRUE(WaitFor([&] { return program.race().RaceActive == running; }));
  }
  // One more lap on that lane; gives the milliseconds from the frame to the painted cell.
  double FlyLap(int lap, int lane) {
    StationMessage frame{.To = kStarter, .From = kTimers};
    laps_[static_cast<std::size_t>(lane)] = static_cast<std::uint8_t>(lap);
    frame.Lap = laps_;
    frame.Lit[static_cast<std::size_t>(lane)] = 1;
    auto& cell = dynamic_cast<QLabel&>(*windows.Lane(lane).FindWidget(IndexedName("lblLap", lap - 1)));
    const QString before = cell.text();
    QElapsedTimer passed;
    passed.start();
    Send(frame);
    while (cell.text() == before && passed.elapsed() < 2000) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    cell.repaint();
    return static_cast<double>(passed.nsecsElapsed()) / 1e6;
  }

  QTemporaryDir folder;
  QtSettings settings{folder.filePath("settings.ini").toStdString()};
  QtPlatform platform{settings};
  const std::string link = folder.filePath("radio").toStdString();
  Modem modem{link};
  QtSerial serial{settings, {{5, link}}};
  Program program{platform, serial};
  ProgramWindows windows{program, platform};
  std::array<std::uint8_t, 4> laps_ = {};
};

TEST_F(RadioHeatTest, LapOnTheAirIsSoonOnTheScreen) {
  std::vector<double> delays;
  SendStarter(true);
  for (int lap = 1; lap <= 10; ++lap) {
    for (int lane = 0; lane < 4; ++lane) delays.push_back(FlyLap(lap, lane));
    QTest::qWait(12);  // until the lanes' lap lights are out
  }
  SendStarter(false);
  EXPECT_TRUE(program.judge().HasRun(1));
  std::sort(delays.begin(), delays.end());
  EXPECT_LT(delays[delays.size() / 2], 50);
}

}  // namespace
}  // namespace quorvane
