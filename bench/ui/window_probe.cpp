// Loaded into any Qt program with LD_PRELOAD: ends it as soon as its window is usable, or some seconds later,
// and writes to the file BENCH_OUT how long that took and what it cost, as "start_ms rss_kb run_cpu_ms
// paints". Usable: a window has been painted, and the program waits for what comes next.
//
// BENCH_BEGIN: when the program was started, ns of the monotonic clock. BENCH_KEY: a key (F1 is 1) that is
// pressed a second after that. BENCH_SECONDS: how long it then runs; the processor time counts from
// BENCH_WAIT (2) seconds after the start.

#include <time.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace {

double ClockMs(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

long ResidentKb() {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  const QByteArray text = status.readAll();
  return text.mid(text.indexOf("VmRSS:") + 6).trimmed().split(' ').at(0).toLong();
}

class Probe : public QObject {
 public:
  Probe() {
    qApp->installEventFilter(this);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
      if (painted_ && startMs_ == 0) Usable();
    });
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint || !watched->isWidgetType()) return false;
    ++paints_;
    painted_ = painted_ || static_cast<QWidget*>(watched)->isWindow();
    return false;
  }

 private:
  void Usable() {
    startMs_ = ClockMs(CLOCK_MONOTONIC) - qgetenv("BENCH_BEGIN").toDouble() / 1e6;
    residentKb_ = ResidentKb();
    const int seconds = qEnvironmentVariableIntValue("BENCH_SECONDS");
    if (seconds == 0) return End();
    if (const int key = qEnvironmentVariableIntValue("BENCH_KEY")) {
      QTimer::singleShot(1000, this, [key] {
        QWidget* window = QApplication::activeWindow();
        if (window == nullptr) return;
        QCoreApplication::postEvent(window,
                                    new QKeyEvent(QEvent::KeyPress, Qt::Key_F1 + key - 1, Qt::NoModifier));
      });
    }
    const int wait = 1000 * qMax(2, qEnvironmentVariableIntValue("BENCH_WAIT"));
    QTimer::singleShot(wait, this, [this] {
      paints_ = 0;
      runMs_ = ClockMs(CLOCK_PROCESS_CPUTIME_ID);
    });
    QTimer::singleShot(wait + seconds * 1000, this, [this] { End(); });
  }

  void End() {
    const double run = runMs_ == 0 ? 0 : ClockMs(CLOCK_PROCESS_CPUTIME_ID) - runMs_;
    if (std::FILE* out = std::fopen(qgetenv("BENCH_OUT").constData(), "w")) {
      std::fprintf(out, "%.3f %ld %.3f %d\n", startMs_, residentKb_, run, paints_);
      std::fclose(out);
    }
    _exit(0);
  }

  bool painted_ = false;
  double startMs_ = 0;
  long residentKb_ = 0;
  double runMs_ = 0;
  int paints_ = 0;
};

void Begin() {
  if (qEnvironmentVariableIsSet("BENCH_OUT")) new Probe;
}
Q_COREAPP_STARTUP_FUNCTION(Begin)

}  // namespace
