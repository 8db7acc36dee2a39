#pragma once

#include <QString>
#include <functional>

namespace quorvane {

// What the print server says of a printer.
struct PrintQueue {
  bool refuses = false;  // takes no jobs
  bool paused = false;   // takes them, but prints nothing until somebody lets it go on
};

// From the attributes of a printer as CUPS names them; empty for one that is not known.
PrintQueue QueueWith(const std::function<QString(const char*)>& attribute);

// Asks CUPS, whose library is looked for at run time: where there is none, the queue is taken for a good one.
// May take as long as the print server does.
PrintQueue AskPrintQueue(const QString& printer);

// Why CUPS did not take the job that this thread has just sent, which Qt does not tell; empty: it took it, or
// nobody knows.
QString LastRefusal();

}  // namespace quorvane
