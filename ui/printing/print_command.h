#pragma once

#include "ui/command_line.h"
#include "ui/printing/paper.h"

namespace quorvane {

// Writes the heat reports that the command line asks for into a PDF, without a window; needs a
// QGuiApplication. The program's exit status: 0, or 1 when a file is in the way or a race has not been flown;
// nothing is written then.
int RunPrintCommand(const CommandLine& line, const Imprint& imprint, const SettingsStore& settings);

}  // namespace quorvane
