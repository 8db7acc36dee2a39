#include "ui/printing/printer_choice.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <algorithm>

#include "ui/printing/paper.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr const char* kSection = "Printer";

// What the country of this computer uses.
QPageSize UsualPaper() {
  const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

}  // namespace

PrinterChoice LoadPrinterChoice(const SettingsStore& settings) {
  const auto setting = [&](const char* key) { return ToQString(settings.GetSetting(kSection, key, "")); };
  return {setting("Name"), PaperNamed(setting("Paper")).value_or(UsualPaper())};
}

void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice) {
  settings.SaveSetting(kSection, "Name", choice.name.toStdString());
  settings.SaveSetting(kSection, "Paper", choice.paper.key().toStdString());
}

QDialog* OpenPrinterSetup(const QStringList& printers, const QString& usual, SettingsStore& settings,
                          QWidget* parent) {
  const PrinterChoice now = LoadPrinterChoice(settings);
  auto* setup = new QDialog(parent);
  setup->setAttribute(Qt::WA_DeleteOnClose);
  setup->setWindowTitle(QStringLiteral("Printer Setup"));
  setup->setMinimumWidth(420);
  auto* printer = new QComboBox;
  printer->addItem(
      QStringLiteral("Default printer (%1)").arg(usual.isEmpty() ? QStringLiteral("none now") : usual),
      QString());
  for (const QString& name : printers) printer->addItem(name, name);
  // One that is switched off now stays chosen.
  if (!now.name.isEmpty() && !printers.contains(now.name)) {
    printer->addItem(now.name + QStringLiteral(" (not found now)"), now.name);
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
  layout->addRow(QStringLiteral("&Printer"), printer);
  layout->addRow(QStringLiteral("P&aper"), paper);
  if (printers.isEmpty()) layout->addRow(new QLabel(QStringLiteral("This computer has no printer now.")));
  layout->addRow(buttons);
  setup->open();
  return setup;
}

}  // namespace quorvane
