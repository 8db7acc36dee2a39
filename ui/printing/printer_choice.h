#pragma once

#include <QPageSize>
#include <QStringList>

#include "forms/platform.h"

class QDialog;
class QWidget;

namespace quorvane {

// The operator's choice, kept in the settings store under "Printer".
struct PrinterChoice {
  QString name;  // empty: the system's default printer
  QPageSize paper;
};
PrinterChoice LoadPrinterChoice(const SettingsStore& settings);
void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice);

// Opens the box in which the operator chooses printer and paper, and keeps what he has chosen. `usual`: the
// system's default printer, empty when there is none.
QDialog* OpenPrinterSetup(const QStringList& printers, const QString& usual, SettingsStore& settings,
                          QWidget* parent);

}  // namespace quorvane
