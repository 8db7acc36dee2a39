#include "files/write_signals.h"

#include <csignal>

namespace quorvane {

void OutliveWriteErrors() {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);
#endif
#ifdef SIGXFSZ
  std::signal(SIGXFSZ, SIG_IGN);
#endif
}

}  // namespace quorvane
