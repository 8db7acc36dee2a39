#pragma once

#include "console/program.h"
#include "ui/windows.h"

namespace quorvane {

// Designs of the small forms, each in its file's own pixels.
FormDesign TimerDesign();
FormDesign KeyboardDesign();
FormDesign AboutDesign();

// Gives the timer settings, the keyboard page and the about box their windows.
void AddSmallWindows(Program& program, Windows& windows, FormWindow& console);

}  // namespace quorvane
