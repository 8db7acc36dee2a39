#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <map>
#include <string>

#include "console/heat_printer.h"
#include "console/program.h"
#include "programs/console_command.h"
#include "ui/printing/paper.h"
#include "ui/printing/preview_window.h"
#include "ui/work_thread.h"

class QDialog;

namespace quorvane {

// The operator's choice, kept in the settings store under "Printer".
struct PrinterChoice {
  QString name;  // empty: the system's default printer
  QPageSize paper;
};
PrinterChoice LoadPrinterChoice(const SettingsStore& settings);
void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice);

// What the print server says of a printer, in the words of CUPS; empty: nothing.
struct PrintQueue {
  std::string accepting;  // jobs: "true" or "false"
  std::string state;      // "5": stopped

  bool Refuses() const { return accepting == "false"; }
};

// What became of a report, for the operator.
struct PrintOutcome {
  bool good = false;
  std::string notice;
  bool onPaper = false;  // which tells of itself
};
// Of a report that can be sent, or has been sent, to that printer. `race` as in "race 3".
PrintOutcome OutcomeOf(const std::string& printer, const PrintQueue& queue, const std::string& race);

// Heat reports and protest sheets on the printers of this computer and in files. A print server or a disk can
// take seconds to answer, or hang: what speaks to them runs on a thread of its own, one report after the
// other, and what became of it is shown in the console's window.
class QtHeatPrinter : public QObject, public HeatPrinter {
 public:
  // The console window owns the dialog boxes.
  QtHeatPrinter(Program& program, QWidget* console);
  ~QtHeatPrinter() override { program_.judge().SetPrinter(nullptr); }

  void PrintHeat(const RaceRecord& race) override { Print(race, Now()); }
  void PreviewHeat(const RaceRecord& race) override { ShowPreview(race, Report::Heat); }
  // On the screen first: the preview's menu prints it.
  void ShowProtestSheet(const RaceRecord& race) override { ShowPreview(race, Report::Protest); }
  void SaveHeat(const RaceRecord& race, const std::string& path) override;
  void SetUpPrinter() override;

  // At the end of the program, while the windows still stand: waits so long for reports that are on their
  // way, and tells of those that did not get there.
  void Finish(int longestMs = 5000);

  PreviewWindow& Preview();

  // Sends one report to the printer. Replaced by tests.
  using Spooler = std::function<PrintOutcome(const PrinterChoice&, const RaceRecord&, const Imprint&)>;
  void SetSpooler(Spooler spooler) { spooler_ = std::move(spooler); }

 private:
  // What can be said of a report while it is on its way.
  struct OnItsWay {
    std::string doing;
    std::string unknown;  // when the program ends before
  };

  Imprint Now(Report report = Report::Heat) {
    return {frmAbout::ProgramName(), program_.door().LocalNow(), report};
  }
  void ShowPreview(const RaceRecord& race, Report report);
  void Print(const RaceRecord& race, const Imprint& imprint);
  PrinterChoice Chosen() const { return LoadPrinterChoice(program_.door().System().Settings()); }
  // Says what is being done, does it on the thread, and shows its outcome.
  void Later(WorkThread& thread, const OnItsWay& report, std::function<PrintOutcome()> work);
  void Ended(int job, const PrintOutcome& outcome);
  void Wait(int longestMs);

  Program& program_;
  QWidget* console_;
  std::optional<PreviewWindow> preview_;  // once it is asked for
  Spooler spooler_;
  WorkThread printing_;
  WorkThread filing_;  // not behind a print server that hangs
  int lastJob_ = 0;
  std::map<int, OnItsWay> onTheirWay_;  // by job
  bool finishing_ = false;
  QStringList unsaid_;  // failures that no window showed
};

// Opens the box in which the operator chooses printer and paper, and keeps what he has chosen. `usual`: the
// system's default printer, empty when there is none.
QDialog* OpenPrinterSetup(const QStringList& printers, const QString& usual, SettingsStore& settings,
                          QWidget* parent);

// Writes the reports that the command line asks for into a PDF, without a window; needs a QGuiApplication.
// Empty, or why nothing was written: a file is in the way, or a race has not been flown.
std::string PrintReports(const CommandLine& line, const Imprint& imprint, const SettingsStore& settings);

}  // namespace quorvane
