#include <QElapsedTimer>
#include <QLabel>

#include "link/station_message.h"
#include "tests/ui/modem.h"
#include "tests/ui/program_fixture.h"
#include "ui/qt/qt_serial.h"

namespace quorvane {
namespace {

TEST(RadioHeatTest, LapOnTheAirIsSoonOnTheScreen) {
  const QTemporaryDir folder;
  QtSettings settings{folder.filePath("settings.ini").toStdString()};
  settings.SaveSetting("frmSerialPort", "CommPort", "5");
  QtPlatform platform{settings};
  platform.SetAnswerer([](const DialogBox& box) { return std::optional(Demo::Answer(box)); });
  const std::string link = folder.filePath("radio").toStdString();
  Modem modem{link};
  QtSerial serial{settings, {{5, link}}};
  Program program{platform, serial};
  ProgramWindows windows{program, platform};
  program.judge().SetStartupProject(folder.filePath("test.ini").toStdString());
  serial.SetDoor(&program.door());
  program.door().Enter({.kind = EventKind::Load});

  StationMessage frame{.Wig1 = kWig1, .Wig2 = kWig2};
  frame.Mode = 2;
  const auto send = [&](std::uint8_t from, std::uint8_t to) {
    frame.From = from;
    frame.To = to;
    FrameBytes bytes = EncodeFrame(frame);
    bytes[2] = ComputeEcc(bytes);
    modem.Send(std::string(bytes.begin(), bytes.end()));
  };
  frame.Strt = 1;
  frame.Time = {0, 1, 0x11, 0x70};  // 70000, far enough behind the start for laps to count at once
  send(kStarter, kPylonBox);
  ASSERT_TRUE(WaitFor([&] { return program.race().RaceActive; }));
  std::vector<qint64> delays;
  for (int lap = 1; lap <= 10; ++lap) {
    frame.Lap[1] = static_cast<std::uint8_t>(lap);
    frame.Lit[1] = 1;
    auto* cell = dynamic_cast<QLabel*>(windows.Lane(1).FindWidget(IndexedName("lblLap", lap - 1)));
    const QString before = cell->text();
    QElapsedTimer passed;
    passed.start();
    send(kTimers, kStarter);
    while (cell->text() == before && passed.elapsed() < 2000) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    delays.push_back(passed.elapsed());
    QTest::qWait(12);  // until the lane's lap light is out
  }
  std::sort(delays.begin(), delays.end());
  EXPECT_LT(delays[5], 50);
  EXPECT_EQ(program.lane(1).Laps(), 10);
}

}  // namespace
}  // namespace quorvane
