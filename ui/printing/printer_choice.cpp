#include "ui/printing/printer_choice.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <algorithm>

#include "ui/printing/paper.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {
constexpr const char* kSection = "Printer";
}

PrinterChoice LoadPrinterChoice(const SettingsStore& settings) {
  const auto setting = [&](const char* key) { return ToQString(settings.GetSetting(kSection, key, "")); };
  return {setting("Name"), PaperNamed(setting("Paper")).value_or(UsualPaper())};
}

void SavePrinterChoice(SettingsStore& settings, const PrinterChoice& choice) {
  settings.SaveSetting(kSection, "Name", choice.name.toStdString());
  settings.SaveSetting(kSection, "Paper", choice.paper.key().toStdString());
}

PrinterSetup::PrinterSetup(const QStringList& printers, const QString& usual, const PrinterChoice& now,
                           QWidget* parent)
    : QDialog(parent), printer_(new QComboBox), paper_(new QComboBox) {
  setWindowTitle(QStringLiteral("Printer Setup"));
  setObjectName(QStringLiteral("PrinterSetup"));
  printer_->addItem(
      QStringLiteral("Default printer (%1)").arg(usual.isEmpty() ? QStringLiteral("none now") : usual),
      QString());
  for (const QString& name : printers) printer_->addItem(name, name);
  // One that is switched off now stays chosen.
  if (!now.name.isEmpty() && !printers.contains(now.name)) {
    printer_->addItem(now.name + QStringLiteral(" (not found now)"), now.name);
  }
  printer_->setCurrentIndex(std::max(0, printer_->findData(now.name)));
  for (const QPageSize& paper : Papers()) paper_->addItem(paper.key());
  paper_->setCurrentText(now.paper.key());

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QFormLayout(this);
  layout->addRow(QStringLiteral("&Printer"), printer_);
  layout->addRow(QStringLiteral("P&aper"), paper_);
  if (printers.isEmpty()) layout->addRow(new QLabel(QStringLiteral("This computer has no printer now.")));
  layout->addRow(buttons);
  setMinimumWidth(420);
}

PrinterChoice PrinterSetup::Choice() const {
  return {printer_->currentData().toString(), *PaperNamed(paper_->currentText())};
}

}  // namespace quorvane
