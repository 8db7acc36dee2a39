#include "ui/qt_printer.h"

#include <QPrinter>
#include <QPrinterInfo>

#include "ui/look.h"
#include "ui/printer_setup.h"

namespace quorvane {
namespace {

constexpr const char* kSection = "Printer";
constexpr int kLongestWaitMs = 5000;

QString RaceName(const RaceRecord& race) {
  return QStringLiteral("race %1%2")
      .arg(race.number)
      .arg(race.refly != 0 ? QStringLiteral(" refly") : QString());
}

QString NotPrinted(const QString& reason, const RaceRecord& race) {
  return reason + QStringLiteral(": ") + RaceName(race) + QStringLiteral(" not printed");
}

QString Spool(const PrinterChoice& choice, const RaceRecord& race, const Imprint& imprint) {
  const QPrinterInfo info =
      choice.name.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(choice.name);
  if (info.isNull()) {
    return NotPrinted(
        choice.name.isEmpty() ? QStringLiteral("No printer") : QStringLiteral("No printer ") + choice.name,
        race);
  }
  QPrinter printer(info, QPrinter::HighResolution);
  printer.setFullPage(true);
  printer.setDocName(QStringLiteral("Quorvane ") + RaceName(race));
  if (!printer.isValid() || !PutOnPaper(printer, printer.resolution(), choice.paper, {race}, imprint)) {
    return NotPrinted(QStringLiteral("Printer trouble"), race);
  }
  return QStringLiteral("R") + RaceName(race).mid(1) + QStringLiteral(" sent to ") + info.printerName();
}

}  // namespace

PrinterChoice LoadPrinterChoice(const SettingsStore& settings) {
  PrinterChoice choice{ToQString(settings.GetSetting(kSection, "Name", "")), UsualPaper()};
  PaperNamed(settings.GetSetting(kSection, "Paper", ""), choice.paper);
  return choice;
}

void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice) {
  settings.SaveSetting(kSection, "Name", choice.name.toStdString());
  settings.SaveSetting(kSection, "Paper", PaperName(choice.paper));
}

QtHeatPrinter::QtHeatPrinter(Program& program, Platform& platform, QWidget* console)
    : program_(program),
      platform_(platform),
      console_(console),
      preview_(std::make_unique<PreviewForm>(platform)),
      spooler_(Spool) {
  program_.judge().SetPrinter(this);
}

// A page that is on its way is given time to leave; a print server that hangs must not keep the program open.
QtHeatPrinter::~QtHeatPrinter() {
  program_.judge().SetPrinter(nullptr);
  if (worker_ == nullptr) return;
  worker_->deleteLater();
  thread_.quit();
  if (thread_.wait(kLongestWaitMs)) return;
  thread_.terminate();
  thread_.wait();
}

Imprint QtHeatPrinter::Now() {
  return {frmAbout::ProgramName(), program_.door().LocalNow()};
}

void QtHeatPrinter::PrintHeat(const RaceRecord& race) {
  Later([spool = spooler_, choice = LoadPrinterChoice(platform_.Settings()), race, imprint = Now()] {
    return spool(choice, race, imprint);
  });
}

void QtHeatPrinter::SaveHeat(const RaceRecord& race, const std::string& path) {
  const Paper paper = LoadPrinterChoice(platform_.Settings()).paper;
  const std::vector<std::string> inUse{program_.race().ProjectFile};
  Later([file = QString::fromStdString(path), paper, race, imprint = Now(), inUse] {
    const QString trouble = WritePdf(file, paper, {race}, imprint, inUse);
    return trouble.isEmpty() ? QStringLiteral("PDF saved: ") + RaceName(race)
                             : QStringLiteral("PDF not saved: ") + trouble;
  });
}

// After the event: drawing the page takes longer than an event should.
void QtHeatPrinter::PreviewHeat(const RaceRecord& race) {
  const Paper paper = LoadPrinterChoice(platform_.Settings()).paper;
  QMetaObject::invokeMethod(
      this, [this, race, imprint = Now(), paper] { preview_->Open(race, imprint, paper); },
      Qt::QueuedConnection);
}

void QtHeatPrinter::Later(std::function<QString()> work) {
  if (worker_ == nullptr) {
    worker_ = new QObject;
    worker_->moveToThread(&thread_);
    thread_.start();
  }
  QMetaObject::invokeMethod(worker_, [this, work = std::move(work)] {
    const QString notice = work();
    QMetaObject::invokeMethod(this, [this, notice] { Show(notice); });
  });
}

void QtHeatPrinter::Show(const QString& notice) {
  if (notice.isNull()) return;
  program_.door().Post([this, notice] { program_.judge().ShowNotice(notice.toStdString()); });
}

// The box opens when the printers are known, and reception goes on behind it.
void QtHeatPrinter::SetUpPrinter() {
  Later([this] {
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    const QString usual = QPrinterInfo::defaultPrinterName();
    QMetaObject::invokeMethod(this, [this, printers, usual] { Offer(printers, usual); });
    return QString();
  });
}

void QtHeatPrinter::Offer(const QStringList& printers, const QString& usual) {
  auto* setup = new PrinterSetup(printers, usual, LoadPrinterChoice(platform_.Settings()), console_);
  QObject::connect(setup, &QDialog::accepted, this,
                   [this, setup] { SavePrinterChoice(platform_.Settings(), setup->Choice()); });
  setup->setAttribute(Qt::WA_DeleteOnClose);
  setup->open();
}

}  // namespace quorvane
