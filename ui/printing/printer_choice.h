#pragma once

#include <QComboBox>
#include <QDialog>
#include <QPageSize>
#include <QStringList>

#include "forms/platform.h"

namespace quorvane {

// The operator's choice, kept in the settings store under "Printer".
struct PrinterChoice {
  QString name;  // empty: the system's default printer
  QPageSize paper;
};
PrinterChoice LoadPrinterChoice(const SettingsStore& settings);
void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice);

// The box in which the operator chooses printer and paper.
class PrinterSetup : public QDialog {
 public:
  // usual: the system's default printer, empty when there is none.
  PrinterSetup(const QStringList& printers, const QString& usual, const PrinterChoice& now, QWidget* parent);

  PrinterChoice Choice() const;

 private:
  QComboBox* printer_;
  QComboBox* paper_;
};

}  // namespace quorvane
