#include "ui/practice_field.h"

#include <sys/prctl.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <csignal>
#include <utility>

namespace quorvane {
namespace {

constexpr int kAnswerMs = 10000;  // for the field to answer, on a slow computer
constexpr int kEndMs = 1000;      // for it to end, before it is ended by force

QString BesideThisProgram() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/quorvane-field");
}

}  // namespace

QtPracticeField::QtPracticeField(Program& program, QtSerial& serial, QString field)
    : program_(program), serial_(serial), field_(field.isEmpty() ? BesideThisProgram() : std::move(field)) {
  patience_.setSingleShot(true);
  QObject::connect(&patience_, &QTimer::timeout,
                   [this] { Fail(QStringLiteral("The field does not answer")); });
  program_.judge().SetPracticeField(this);
}

QtPracticeField::~QtPracticeField() {
  program_.judge().SetPracticeField(nullptr);
  Stop();
  for (QProcess* process : processes_.findChildren<QProcess*>()) {
    process->disconnect();
    if (process->waitForFinished(kEndMs)) continue;
    process->kill();
    process->waitForFinished(kEndMs);
  }
}

qint64 QtPracticeField::ProcessId() const {
  return process_ == nullptr ? 0 : process_->processId();
}

void QtPracticeField::Start(const PracticeOptions& options) {
  Stop();
  said_.clear();
  folder_ = std::make_unique<QTemporaryDir>();
  process_ = new QProcess(&processes_);
  QStringList arguments = {QStringLiteral("--link"), folder_->filePath(QStringLiteral("radio"))};
  for (const std::string& argument : FieldArguments(options)) arguments << QString::fromStdString(argument);
  process_->setStandardOutputFile(QProcess::nullDevice());
  // A console that is killed takes its field with it.
  process_->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  Watch();
  patience_.start(kAnswerMs);
  process_->start(field_, arguments, QIODevice::ReadOnly);
}

// Queued: whatever comes of it comes as an event of its own.
void QtPracticeField::Watch() {
  QProcess* process = process_;
  const auto ours = [this, process] { return process == process_; };
  QObject::connect(
      process, &QProcess::readyReadStandardError, &processes_,
      [this, ours] {
        if (ours()) Heard();
      },
      Qt::QueuedConnection);
  QObject::connect(
      process, &QProcess::errorOccurred, &processes_,
      [this, ours](QProcess::ProcessError error) {
        if (!ours() || error != QProcess::FailedToStart) return;
        const bool there = QFileInfo::exists(field_);
        Fail((there ? QStringLiteral("%1 does not start") : QStringLiteral("%1 is not there")).arg(field_));
      },
      Qt::QueuedConnection);
  QObject::connect(
      process, &QProcess::finished, &processes_,
      [this, ours] {
        if (!ours()) return;
        Heard();
        const QString last = said_.trimmed().section(QLatin1Char('\n'), -1);
        const bool told = !answers_ && !last.isEmpty();
        Fail(QStringLiteral("The field has ended") + (told ? QStringLiteral(": ") + last : QString()));
      },
      Qt::QueuedConnection);
}

// It says so when its terminal can be opened.
void QtPracticeField::Heard() {
  said_ += QString::fromLocal8Bit(process_->readAllStandardError());
  if (answers_ || !said_.contains(QLatin1String("the field is on"))) return;
  answers_ = true;
  patience_.stop();
  Tell(serial_.AddPractice(folder_->filePath(QStringLiteral("radio")).toStdString()), {});
}

void QtPracticeField::Fail(const QString& trouble) {
  Stop();
  Tell(0, trouble);
}

void QtPracticeField::Tell(int port, const QString& trouble) {
  program_.door().Enter({.kind = EventKind::Field, .text = trouble.toStdString(), .number = port});
}

// Nobody waits for it to end.
void QtPracticeField::Stop() {
  patience_.stop();
  answers_ = false;
  if (process_ == nullptr) return;
  QProcess* process = std::exchange(process_, nullptr);
  process->terminate();
  QTimer::singleShot(kEndMs, process, &QProcess::kill);
  QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
  serial_.RemovePractice();
  folder_.reset();
}

}  // namespace quorvane
