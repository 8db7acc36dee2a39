// The console's own windows: from a lap frame to its painted cell; and Qt's way to keep settings, for the
// project.

#include <QApplication>
#include <QEvent>
#include <QSettings>
#include <QThread>
#include <memory>

#include "bench/contest.h"
#include "console/program.h"
#include "field/pseudo_terminal.h"
#include "field/radio.h"
#include "ui/program_windows.h"
#include "ui/qt/qt_platform.h"
#include "ui/qt/qt_serial.h"
#include "ui/qt/qt_settings.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

// Tells whether a widget has been painted.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QObject* widget) { widget->installEventFilter(this); }
  bool painted = false;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    painted = painted || event->type() == QEvent::Paint;
    return false;
  }
};

// The console with a radio, and a heat of ten laps that is flown on it.
class Console {
 public:
  Console() {
    platform_.SetAnswerer([](const DialogBox&) { return DialogAnswer{DialogAnswer::Word::Yes}; });
    serial_.SetDoor(&program.door());
    settings_.SaveSetting("frmSerialPort", "CommPort", "5");
    std::ofstream(folder_ / "cup.ini") << "[Current]\r\nTitle=Cup\r\nHeatsPerRound=4\r\n";
    program.judge().SetStartupProject(folder_ / "cup.ini");
    program.door().Enter({.kind = EventKind::Load});
    while (!modem_->Connected()) Events();
    Starter(64900);
  }

  void Starter(std::int64_t clock) {
    Send({.from = field::kStarter, .to = field::kPylonBox, .running = true, .clock = clock, .mode = 2});
    for (int i = 0; i < 300; ++i) QThread::msleep(1), Events();
  }
  void Send(const field::Report& report) { modem_->Write(field::Encode(report)); }
  static void Events() { QCoreApplication::processEvents(QEventLoop::AllEvents, 1); }
  QWidget& Cell(int lap) {
    return *windows_.Console().findChild<QWidget*>(QStringLiteral("frmLane1.lblLap(%1)").arg(lap));
  }

 private:
  BenchFolder folder_;
  std::string error_;
  std::unique_ptr<field::PseudoTerminal> modem_ = field::PseudoTerminal::Open(folder_ / "radio", error_);
  QtSettings settings_{folder_ / "settings.ini"};
  QtPlatform platform_{settings_};
  QtSerial serial_{settings_, SerialDevices({{5, folder_ / "radio"}})};

 public:
  Program program{platform_, serial_, SystemFiles(), BackgroundFiles::Way::OwnThread};

 private:
  ProgramWindows windows_{program, platform_};
};

// From the last byte on the line to the end of the painting, with the race kept on the disk meanwhile.
void LapToPaintedCell(benchmark::State& state) {
  Console console;
  std::uint8_t lap = 0;
  for (auto _ : state) {
    PaintWatch watch(&console.Cell(lap));
    const auto begun = std::chrono::steady_clock::now();
    ++lap;
    console.Send({.from = field::kTimers,
                  .to = field::kPylonBox,
                  .running = true,
                  .clock = 61000 + 6000 * lap,
                  .lit = {10, 0, 0, 0},
                  .mode = 2,
                  .lap = {lap, 0, 0, 0}});
    const auto waited = [&begun] { return std::chrono::steady_clock::now() - begun; };
    while (!watch.painted && waited() < std::chrono::seconds(2)) {
      QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    if (!watch.painted) state.SkipWithError("the lap was not shown");
    state.SetIterationTime(std::chrono::duration<double>(waited()).count());
    while (waited() < std::chrono::milliseconds(200)) Console::Events();  // until the lane takes the next lap
  }
}
BENCHMARK(LapToPaintedCell)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(8);

// Qt's settings save themselves, with a file beside that takes the old one's place, but do not wait for the
// disk.
class QtIni {
 public:
  // Qt keeps what it has read of a file that looks the same.
  explicit QtIni(const std::string& path) : file_(Touched(path), QSettings::IniFormat) {}
  std::string Get(const std::string& section, const std::string& key) {
    return file_.value(Name(section, key)).toStringList().join(QLatin1Char(',')).toStdString();
  }
  void Set(const std::string& section, const std::string& key, const std::string& value) {
    file_.setValue(Name(section, key), QString::fromStdString(value));
  }
  bool Save(const std::string&) {
    file_.sync();
    return file_.status() == QSettings::NoError;
  }

 private:
  static QString Touched(const std::string& path) {
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
    return QString::fromStdString(path);
  }
  static QString Name(const std::string& section, const std::string& key) {
    return QString::fromStdString(section + "/" + key);
  }

  QSettings file_;
};
BENCHMARK_CAPTURE(OpenProject, QSettings, OpenWith<QtIni>)
    ->Arg(kRaces)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_TEMPLATE(SaveWith, QtIni)->Apply(DiskTimes);

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  quorvane::DressApplication();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
