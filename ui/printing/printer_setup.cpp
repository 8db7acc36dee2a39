#include "ui/printing/printer_setup.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <algorithm>

#include "ui/printing/qt_printer.h"

namespace quorvane {

PrinterSetup::PrinterSetup(const QStringList& printers, const QString& usual, const PrinterChoice& now,
                           QWidget* parent)
    : QDialog(parent), printer_(new QComboBox), paper_(new QComboBox) {
  setWindowTitle(QStringLiteral("Printer Setup"));
  setObjectName(QStringLiteral("PrinterSetup"));
  printer_->addItem(usual.isEmpty() ? QStringLiteral("Default printer (none now)")
                                    : QStringLiteral("Default printer (%1)").arg(usual),
                    QString());
  for (const QString& name : printers) printer_->addItem(name, name);
  // One that is switched off now stays chosen.
  if (!now.name.isEmpty() && !printers.contains(now.name)) {
    printer_->addItem(now.name + QStringLiteral(" (not found now)"), now.name);
  }
  printer_->setCurrentIndex(std::max(0, printer_->findData(now.name)));
  for (const Paper paper : {Paper::A4, Paper::Letter}) {
    paper_->addItem(QLatin1String(PaperName(paper)), static_cast<int>(paper));
  }
  paper_->setCurrentIndex(paper_->findData(static_cast<int>(now.paper)));

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
  return {printer_->currentData().toString(), static_cast<Paper>(paper_->currentData().toInt())};
}

}  // namespace quorvane
