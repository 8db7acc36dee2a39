#include <fontconfig/fontconfig.h>

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "console/program.h"
#include "files/output_guard.h"
#include "programs/console_command.h"
#include "programs/ending.h"
#include "ui/demo.h"
#include "ui/end_requests.h"
#include "ui/first_start.h"
#include "ui/manual.h"
#include "ui/practice_field.h"
#include "ui/printing/qt_printer.h"
#include "ui/program_windows.h"
#include "ui/qt/qt_platform.h"
#include "ui/qt/qt_serial.h"
#include "ui/qt/qt_settings.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"
#include "ui/session_recording.h"
#include "ui/view_menu.h"
#include "ui/widgets/look.h"
#include "ui/words.h"
#include "ui/work_thread.h"

namespace quorvane {
namespace {

constexpr int kIconMs = 200;  // reading it takes the time of some windows, and nobody waits for it

std::string AbsolutePath(const std::string& path) {
  return path.empty() ? path : QDir::current().absoluteFilePath(QString::fromStdString(path)).toStdString();
}

int Complain(const std::string& trouble, int status) {
  std::fprintf(stderr, "quorvane: %s\n", trouble.c_str());
  return status;
}

// Only where nothing is configured, and nothing was named either.
std::unique_ptr<FirstStartForm> FirstStart(const CommandLine& line, QtSettings& settings, QtSerial& serial,
                                           const std::string& folder, const LocalDateTime& now) {
  if (!line.project.empty() || !line.ports.empty() || !line.demo.empty()) return nullptr;
  std::vector<std::string> sections;
  for (const JournalSetting& setting : settings.All()) sections.push_back(setting.section);
  if (!NothingConfigured(sections)) return nullptr;
  return std::make_unique<FirstStartForm>(settings, serial.NamedPorts(), folder, now);
}

int Run(const CommandLine& line, const std::future<FcBool>& fonts) {
  QtSettings settings(line.settings);
  QtPlatform platform(settings);
  QtSerial serial(settings, SerialDevices(line.ports));
  Program program(platform, serial, SystemFiles(), BackgroundFiles::Way::OwnThread);
  fonts.wait();  // who asks before reads all of them once more
  ProgramWindows windows(program, platform);
  new ViewMenu(windows.Console(), settings);
  QtHeatPrinter printer(program, &windows.Console());
  serial.SetDoor(&program.door());
  const ResultsWindow results(program, windows);
  const Scoreboard scoreboard(program, windows);
  Manual manual(program);
  SessionRecording recording(program, windows);
  const EndRequests endRequests(program);
  QtPracticeField practice(program, serial);
  serial.SetOpened(std::bind_front(&SessionRecorder::NoteOpened, &recording.Recorder()));
  std::unique_ptr<Demo> demo;
  if (!line.demo.empty()) {
    platform.SetAnswerer(&Demo::Answer);
    demo = std::make_unique<Demo>(program, windows, line.demo, line.heats);
    if (!demo->Begin()) return Complain("cannot write to the folder " + line.demo, 1);
  }
  const auto begin = [&](const std::string& project) {
    if (!project.empty()) program.judge().SetStartupProject(project);
    // The list of ports may give a new device its number in the settings store.
    const std::vector<int> ports = serial.Ports();
    recording.Begin({.settings = settings.All(), .ports = ports, .projectUnasked = !project.empty()},
                    AbsolutePath(line.journal));
    QTimer::singleShot(0, [&program] { program.door().Enter({.kind = EventKind::Load}); });
  };
  const std::string folder =
      ParentFolder(program.judge().ProjectAtStart());  // as the console would ask for it
  const auto form = FirstStart(line, settings, serial, folder, platform.LocalNow());
  if (form) {
    serial.SetChanged([&] { form->ShowPorts(serial.NamedPorts()); });
    QObject::connect(form.get(), &QDialog::finished, [&] {
      serial.SetChanged({});
      form->ClosedByFrame() ? QCoreApplication::exit(0) : begin(form->Project());
    });
    form->onManual = [&] { manual.OpenFor(form.get()); };
    form->show();
  } else {
    begin(AbsolutePath(line.project));
  }
  const int status = QApplication::exec();
  recording.End();
  serial.SetDoor(nullptr);
  printer.Finish();
  return status;
}

int Print(const CommandLine& line) {
  QtSettings settings(line.settings);
  const Imprint imprint{frmAbout::ProgramName(), QtPlatform(settings).LocalNow(),
                        line.print.IsEmpty() ? Report::Protest : Report::Heat};
  const std::string trouble = PrintReports(line, imprint, settings);
  return trouble.empty() ? 0 : Complain(trouble, 1);
}

int Main(int argc, char** argv) {
  const CommandLine line = ParseCommandLine(CommandLineWords(argc, argv));
  const bool usual = line.settings.empty();
  const auto reason = usual ? std::nullopt : WhyNotWrite(line.settings, FileKind::Settings, {line.project});
  if (reason) return Complain("cannot keep settings in " + line.settings + ": " + *reason, 2);
  if (OnlyPrints(line)) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What Qt says of a missing desktop is no news to somebody who asked for none.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  }
  // Qt's font library reads its many files when it is first asked for a font: meanwhile the rest may begin.
  const std::future<FcBool> fonts = std::async(std::launch::async, FcInit);
  // The options are ours; Qt's own come from its environment variables.
  int one = 1;
  QApplication application(one, argv);
  QApplication::setApplicationName(QStringLiteral("Quorvane"));
  QApplication::setApplicationVersion(QStringLiteral(QUORVANE_VERSION));
  // By that name a desktop finds the program's entry; the picture is for those that ask the window.
  QApplication::setDesktopFileName(QStringLiteral("quorvane"));
  QTimer::singleShot(kIconMs, [] {
    const QString icons = SharedFolder(QStringLiteral("icons/hicolor/128x128/apps"));
    QApplication::setWindowIcon(QIcon(icons + QStringLiteral("/quorvane.png")));
  });
  DressApplication(ThemeIsDark() ? Scheme::Dark : Scheme::Light);  // until the operator's choice is read
  Words::Speak(line.language.empty() ? Words::OfSystem() : ToQString(line.language));
  // The windows say when the program ends.
  QApplication::setQuitOnLastWindowClosed(false);
  const int status = OnlyPrints(line) ? Print(line) : Run(line, fonts);
  if (WorkThread::AnyLeftBehind()) std::_Exit(status);
  return status;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  return quorvane::RunProgram("quorvane", [&] { return quorvane::Main(argc, argv); });
}
