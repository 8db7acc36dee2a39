#pragma once

#include <QComboBox>
#include <QDialog>
#include <QStringList>

namespace quorvane {

struct PrinterChoice;

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
