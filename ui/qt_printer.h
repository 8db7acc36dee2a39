#pragma once

#include <QObject>
#include <QStringList>
#include <QThread>
#include <functional>
#include <memory>

#include "console/heat_printer.h"
#include "console/program.h"
#include "ui/paper.h"
#include "ui/preview_window.h"

namespace quorvane {

// The operator's choice, kept in the settings store under "Printer".
struct PrinterChoice {
  QString name;  // empty: the system's default printer
  Paper paper = Paper::A4;
};
PrinterChoice LoadPrinterChoice(const SettingsStore& settings);
void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice);

// Heat reports on the printers of this computer. A print server can take seconds to answer, so everything
// that speaks to it runs on a thread of its own, one report after the other, and what became of it is shown
// in the console's window.
class QtHeatPrinter : public QObject, public HeatPrinter {
 public:
  // The console window owns the dialog box.
  QtHeatPrinter(Program& program, Platform& platform, QWidget* console);
  ~QtHeatPrinter() override;

  void PrintHeat(const RaceRecord& race) override;
  void PreviewHeat(const RaceRecord& race) override;
  void SaveHeat(const RaceRecord& race, const std::string& path) override;
  void SetUpPrinter() override;

  PreviewForm& Preview() { return *preview_; }

  // Sends one report to the printer; the notice for the operator, whatever becomes of it. Replaced by tests.
  using Spooler = std::function<QString(const PrinterChoice&, const RaceRecord&, const Imprint&)>;
  void SetSpooler(Spooler spooler) { spooler_ = std::move(spooler); }

 private:
  Imprint Now();
  // Runs the work on the thread, and its notice on the console.
  void Later(std::function<QString()> work);
  void Show(const QString& notice);
  void Offer(const QStringList& printers, const QString& usual);

  Program& program_;
  Platform& platform_;
  QWidget* console_;
  std::unique_ptr<PreviewForm> preview_;
  Spooler spooler_;
  QThread thread_;
  QObject* worker_ = nullptr;  // lives on the thread
};

}  // namespace quorvane
