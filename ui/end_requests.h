#pragma once

#include <QObject>
#include <QSessionManager>

#include "console/program.h"

namespace quorvane {

// Hears when the program is ended by a signal (SIGTERM, SIGINT, SIGHUP) or with the desktop session. A
// finished race is saved then, without a question. A second signal of a kind ends the program at once.
class EndRequests : public QObject {
 public:
  explicit EndRequests(Program& program);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void WatchSignals();
  void Quit() { program_.door().Enter({.kind = EventKind::Quit}); }
  void SessionEnds(QSessionManager& session);

  Program& program_;
};

}  // namespace quorvane
