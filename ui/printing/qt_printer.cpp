#include "ui/printing/qt_printer.h"

#include <cups/cups.h>
#include <fmt/format.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFormLayout>
#include <QLabel>
#include <QLibrary>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {
namespace {

constexpr int kIdleEndMs = 1000;
constexpr int kHangingEndMs = 100;
constexpr int kLongestToldMs = 60000;                // a program that a signal has ended must end
constexpr const char* kPrinterSettings = "Printer";  // their section in the settings store
constexpr const char* kLooking = "Looking for printers ...";

// Null where there is no such library. The version is the one that Qt itself prints with.
template <typename Function>
Function* FromCups(const char* name) {
  return reinterpret_cast<Function*>(QLibrary::resolve(QStringLiteral("cups"), 2, name));
}

// Asks CUPS, looked for at run time (without it the queue counts as good). May take as long as its server.
PrintQueue AskPrintQueue(const QString& printer) {
  const auto getNamedDest = FromCups<decltype(cupsGetNamedDest)>("cupsGetNamedDest");
  const auto getOption = FromCups<decltype(cupsGetOption)>("cupsGetOption");
  const auto freeDests = FromCups<decltype(cupsFreeDests)>("cupsFreeDests");
  if (getNamedDest == nullptr) return {};
  // A printer may carry a set of options behind its name, "Laser/draft"; the queue is the same.
  const QByteArray name = printer.section(QLatin1Char('/'), 0, 0).toLocal8Bit();
  cups_dest_t* destination = getNamedDest(nullptr, name.constData(), nullptr);
  if (destination == nullptr) return {};
  const auto attribute = [&](const char* key) {
    const char* value = getOption(key, destination->num_options, destination->options);
    return std::string(value == nullptr ? "" : value);
  };
  PrintQueue queue{attribute("printer-is-accepting-jobs"), attribute("printer-state")};
  freeDests(1, destination);
  return queue;
}

// Why CUPS did not take the job just sent by this thread, which Qt hides; empty: it did, or nobody knows.
std::string LastRefusal() {
  const auto lastError = FromCups<decltype(cupsLastError)>("cupsLastError");
  const auto lastErrorString = FromCups<decltype(cupsLastErrorString)>("cupsLastErrorString");
  const ipp_status_t status = lastError == nullptr ? IPP_STATUS_OK : lastError();
  if (status >= IPP_STATUS_OK && status < IPP_STATUS_REDIRECTION_OTHER_SITE) return {};
  const char* text = lastErrorString();
  return text == nullptr ? "" : text;
}

std::string RaceName(const RaceRecord& race, Report report = Report::Heat) {
  return fmt::format("race {}{}{}", race.number, race.refly != 0 ? " refly" : "",
                     report == Report::Protest ? " (protest sheet)" : "");
}

PrintOutcome NotPrinted(const std::string& reason, const std::string& race) {
  return {false, reason + ": " + race + " not printed"};
}

PrintOutcome Spool(const PrinterChoice& choice, const RaceRecord& race, const Imprint& imprint) {
  const std::string what = RaceName(race, imprint.report);
  const QPrinterInfo info =
      choice.name.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(choice.name);
  if (info.isNull()) {
    return NotPrinted("No printer " + (choice.name.isEmpty() ? "(File > Save as PDF needs none)"
                                                             : choice.name.toStdString()),
                      what);
  }
  const std::string name = info.printerName().toStdString();
  const PrintQueue queue = AskPrintQueue(info.printerName());
  if (queue.Refuses()) return OutcomeOf(name, queue, what);
  {
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setDocName(QStringLiteral("Quorvane ") + ToQString(what));
    if (!printer.isValid() || !PutOnPaper(printer, choice.paper, {race}, imprint)) {
      return NotPrinted("Printer trouble", what);
    }
  }
  const std::string refusal = LastRefusal();
  return refusal.empty() ? OutcomeOf(name, queue, what)
                         : NotPrinted(name + " took no job (" + refusal + ")", what);
}

}  // namespace

PrinterChoice LoadPrinterChoice(const SettingsStore& settings) {
  const QString paper = ToQString(settings.GetSetting(kPrinterSettings, "Paper", ""));
  // What the country of this computer uses.
  const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return {ToQString(settings.GetSetting(kPrinterSettings, "Name", "")),
          PaperNamed(paper).value_or(QPageSize(letter ? QPageSize::Letter : QPageSize::A4))};
}

void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice) {
  settings.SaveSetting(kPrinterSettings, "Name", choice.name.toStdString());
  settings.SaveSetting(kPrinterSettings, "Paper", choice.paper.key().toStdString());
}

PrintOutcome OutcomeOf(const std::string& printer, const PrintQueue& queue, const std::string& race) {
  if (queue.Refuses()) return NotPrinted(printer + " refuses jobs", race);
  if (queue.state == "5") return {false, printer + " is paused: " + race + " waits there"};
  return {true, "R" + race.substr(1) + " sent to " + printer, true};
}

QtHeatPrinter::QtHeatPrinter(Program& program, QWidget* console)
    : program_(program), console_(console), spooler_(Spool) {
  program_.judge().SetPrinter(this);
}

PreviewWindow& QtHeatPrinter::Preview() {
  if (!preview_) {
    preview_.emplace(program_.door().System(),
                     [this](const RaceRecord& race, const Imprint& imprint) { Print(race, imprint); });
  }
  return *preview_;
}

void QtHeatPrinter::Print(const RaceRecord& race, const Imprint& imprint) {
  const std::string what = RaceName(race, imprint.report);
  Later(printing_,
        {"Printing " + what + " ...", "The print server does not answer: " + what + " may not be printed"},
        [spool = spooler_, choice = Chosen(), race, imprint] { return spool(choice, race, imprint); });
}

void QtHeatPrinter::SaveHeat(const RaceRecord& race, const std::string& path) {
  const std::string what = RaceName(race);
  Later(filing_,
        {"Saving the PDF of " + what + " ...", "The disk does not answer: " + path + " may not be saved"},
        [path, what, paper = Chosen().paper, race, imprint = Now(),
         inUse = program_.race().ProjectFile]() -> PrintOutcome {
          const std::string trouble = WritePdf(path, paper, {race}, imprint, {inUse});
          return {trouble.empty(), trouble.empty() ? "PDF saved: " + what : "PDF not saved: " + trouble};
        });
}

// After the event: drawing the page takes longer than an event should.
void QtHeatPrinter::ShowPreview(const RaceRecord& race, Report report) {
  QMetaObject::invokeMethod(
      this,
      [this, race, imprint = Now(report), choice = Chosen()] { Preview().Open(race, imprint, choice.paper); },
      Qt::QueuedConnection);
}

// A thread may be left behind and this object gone before the work comes back.
void QtHeatPrinter::Later(WorkThread& thread, const OnItsWay& report, std::function<PrintOutcome()> work) {
  const int job = ++lastJob_;
  onTheirWay_[job] = report;
  program_.judge().ShowNotice(report.doing);
  thread.Do([self = QPointer<QtHeatPrinter>(this), job, work = std::move(work)] {
    const PrintOutcome outcome = work();
    QMetaObject::invokeMethod(qApp, [self, job, outcome] {
      if (self) self->Ended(job, outcome);
    });
  });
}

// One that hangs stays in sight behind the outcome of another.
void QtHeatPrinter::Ended(int job, const PrintOutcome& outcome) {
  onTheirWay_.erase(job);
  if (finishing_ && !outcome.good) unsaid_ << ToQString(outcome.notice);
  std::string notice = outcome.notice;
  if (!onTheirWay_.empty()) notice += "\n" + onTheirWay_.begin()->second.doing;
  const bool done = outcome.onPaper && onTheirWay_.empty();
  program_.door().Post([this, notice, done] {
    done ? program_.judge().ShowDone(notice) : program_.judge().ShowNotice(notice);
  });
}

void QtHeatPrinter::Wait(int longestMs) {
  QProgressDialog box(Words::Of("A report is still on its way. Quorvane closes soon, with or without it."),
                      {}, 0, 0, console_);
  box.setWindowTitle(Words::Of("Close Quorvane"));
  box.setWindowModality(Qt::ApplicationModal);
  box.show();
  QTimer look;
  look.start(20);
  const QDeadlineTimer deadline(longestMs);
  while (!onTheirWay_.empty() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void QtHeatPrinter::Finish(int longestMs) {
  finishing_ = true;
  if (!onTheirWay_.empty()) Wait(longestMs);
  for (const auto& [job, report] : onTheirWay_) unsaid_ << ToQString(report.unknown);
  const int patience = onTheirWay_.empty() ? kIdleEndMs : kHangingEndMs;
  for (WorkThread* thread : {&printing_, &filing_}) thread->End(patience);
  onTheirWay_.clear();
  unsaid_.removeDuplicates();
  if (unsaid_.isEmpty()) return;
  const QString told = unsaid_.join(QStringLiteral(".\n")) + '.';
  std::fprintf(stderr, "quorvane: %s\n", told.toLocal8Bit().constData());
  QMessageBox box(QMessageBox::Warning, Words::Of("Close Quorvane"), Words::Of(told), QMessageBox::Ok,
                  console_);
  box.setTextFormat(Qt::PlainText);
  QTimer::singleShot(kLongestToldMs, &box, &QDialog::reject);
  box.exec();
}

// The box opens when the printers are known, and reception goes on behind it.
void QtHeatPrinter::SetUpPrinter() {
  program_.judge().ShowNotice(kLooking);
  printing_.Do([self = QPointer<QtHeatPrinter>(this)] {
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    const QString usual = QPrinterInfo::defaultPrinterName();
    QMetaObject::invokeMethod(qApp, [self, printers, usual] {
      if (!self) return;
      Door& door = self->program_.door();
      door.Post([&judge = self->program_.judge()] {
        if (judge.lblNotice.Caption() == kLooking) judge.ShowNotice({});
      });
      OpenPrinterSetup(printers, usual, door.System().Settings(), self->console_);
    });
  });
}

QDialog* OpenPrinterSetup(const QStringList& printers, const QString& usual, SettingsStore& settings,
                          QWidget* parent) {
  const PrinterChoice now = LoadPrinterChoice(settings);
  auto* setup = new QDialog(parent);
  setup->setObjectName(QStringLiteral("frmPrinterSetup"));
  setup->setAttribute(Qt::WA_DeleteOnClose);
  setup->setWindowTitle(Words::Of("Printer Setup"));
  setup->setMinimumWidth(420);
  auto* printer = new QComboBox;
  const QString standard = usual.isEmpty() ? QStringLiteral("none now") : usual;
  printer->addItem(Words::Of(QStringLiteral("Default printer (%1)").arg(standard)), QString());
  for (const QString& name : printers) printer->addItem(name, name);
  // One that is switched off now stays chosen.
  if (!now.name.isEmpty() && !printers.contains(now.name)) {
    printer->addItem(Words::Of(now.name + QStringLiteral(" (not found now)")), now.name);
  }
  printer->setCurrentIndex(std::max(0, printer->findData(now.name)));
  auto* paper = new QComboBox;
  for (const QPageSize::PageSizeId size : kPapers) paper->addItem(QPageSize::key(size));
  paper->setCurrentText(now.paper.key());

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, setup, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, setup, &QDialog::reject);
  QObject::connect(setup, &QDialog::accepted, [printer, paper, &settings] {
    SavePrinterChoice(settings, {printer->currentData().toString(), *PaperNamed(paper->currentText())});
  });
  auto* layout = new QFormLayout(setup);
  layout->addRow(Words::Of("&Printer"), printer);
  layout->addRow(Words::Of("P&aper"), paper);
  if (printers.isEmpty()) layout->addRow(new QLabel(Words::Of("This computer has no printer now.")));
  layout->addRow(buttons);
  setup->open();
  return setup;
}

std::string PrintReports(const CommandLine& line, const Imprint& imprint, const SettingsStore& settings) {
  std::vector<RaceRecord> races;
  const RaceList& list = line.print.IsEmpty() ? line.protest : line.print;
  const std::vector<int> numbers = list.all ? std::vector<int>{} : list.races;
  if (const std::error_code error = ReadRaces(SystemFiles(), line.project, settings, numbers, races)) {
    return "cannot read " + line.project + ": " + error.message();
  }
  if (races.empty()) return "no race has been flown in " + line.project;
  QStringList missing;
  for (const RaceRecord& race : races) {
    if (!race.hasRun) missing << QString::number(race.number);
  }
  if (!missing.isEmpty()) {
    return "not flown in " + line.project + ": race " + missing.join(", ").toStdString() +
           "; nothing written";
  }
  const QPageSize paper = PaperNamed(ToQString(line.paper)).value_or(LoadPrinterChoice(settings).paper);
  const std::string trouble = WritePdf(line.output, paper, races, imprint, {line.project, line.settings});
  return trouble.empty() ? "" : "cannot write " + line.output + ": " + trouble;
}

}  // namespace quorvane
