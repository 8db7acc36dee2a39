#include "ui/end_requests.h"

#include <fcntl.h>
#include <unistd.h>

#include <QEvent>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>

namespace quorvane {
namespace {

// A signal handler may do next to nothing: it writes into this pipe, and the event loop reads. Never closed,
// because a signal may come to the very end.
std::array<int, 2> pipeOfSignals = {-1, -1};

void NoteSignal(int) {
  const int before = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(pipeOfSignals[1], &byte, 1);
  errno = before;
}

// One that is ignored stays so: nohup wants the program to outlive its terminal.
void Handle(int signal) {
  struct sigaction action = {};
  if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = NoteSignal;
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  ::sigaction(signal, &action, nullptr);
}

}  // namespace

void EndRequests::WatchSignals() {
  if (pipeOfSignals[0] < 0 && ::pipe2(pipeOfSignals.data(), O_NONBLOCK | O_CLOEXEC) != 0) return;
  auto* arrived = new QSocketNotifier(pipeOfSignals[0], QSocketNotifier::Read, this);
  QObject::connect(arrived, &QSocketNotifier::activated, this, [this] {
    std::array<char, 16> bytes{};
    if (::read(pipeOfSignals[0], bytes.data(), bytes.size()) > 0) Quit();
  });
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) Handle(signal);
}

EndRequests::EndRequests(Program& program) : program_(program) {
  WatchSignals();
  qApp->installEventFilter(this);
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, this, &EndRequests::SessionEnds,
                   Qt::DirectConnection);
}

// What the desktop sends when its session is over. Qt would ask every window to close, and the console would
// ask the operator.
bool EndRequests::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Quit || watched != qApp) return false;
  Quit();
  return true;
}

// Another program may stop the end of the session: what is finished is saved, as by the button, no more.
void EndRequests::SessionEnds(QSessionManager& session) {
  session.setRestartHint(QSessionManager::RestartNever);
  if (session.allowsInteraction()) {
    bool mayEnd = true;
    program_.door().Contain([&] { mayEnd = program_.judge().MaySessionEnd(); });
    if (!mayEnd) return session.cancel();
    session.release();
  }
  program_.door().Enter({.kind = EventKind::Click, .target = program_.judge().cmdSave.FullName()});
}

}  // namespace quorvane
