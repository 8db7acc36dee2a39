#pragma once

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

#include "console/program.h"
#include "ui/qt/qt_serial.h"

class QProcess;

namespace quorvane {

// The simulated field as a program of its own on a pseudo-terminal, which becomes a serial port while it
// answers. Ends with this one, whatever becomes of it.
class QtPracticeField : public PracticeField {
 public:
  // `field`: the program; empty: the one that belongs beside this one.
  QtPracticeField(Program& program, QtSerial& serial, QString field = {});
  ~QtPracticeField() override;

  void Start(const PracticeOptions& options) override;
  void Stop() override;
  // Of the program that plays the field, 0 while none does.
  qint64 ProcessId() const;

 private:
  void Watch();
  void Heard();
  void Tell(int port, const QString& trouble);
  void Fail(const QString& trouble);

  Program& program_;
  QtSerial& serial_;
  const QString field_;
  QObject processes_;  // owns those that run, also while they are ending
  QProcess* process_ = nullptr;
  std::unique_ptr<QTemporaryDir> folder_;  // where the terminal's link is
  QString said_;                           // by the program, on its standard error
  bool answers_ = false;
  QTimer patience_;
};

}  // namespace quorvane
