#pragma once

#include <QColor>

#include "base/color.h"

namespace quorvane {

// The colours on the screen. Outdoor is for the sun: black on white, thick lines. Paper knows no scheme.
enum class Scheme : unsigned char { Light, Dark, Outdoor };

// What is not the colour of a control.
struct SchemeColors {
  QColor edge;       // of boxes and buttons
  QColor faintEdge;  // of what is disabled
  QColor faintText;
  QColor focus;     // also behind what is chosen
  QColor blue;      // of the lap buttons
  QColor peach;     // of the cut buttons
  QColor warning;   // letters
  int line;         // pixels, of a thin line
  double contrast;  // of letters, at least
};
const SchemeColors& Colors();

Scheme CurrentScheme();
// Only which it is: see DressApplication.
void SetScheme(Scheme scheme);

// A colour of the race logic as the scheme shows it. Those of the lanes and of each kind of state are told
// apart also by who cannot tell red from green or blue from yellow.
QColor Shown(Color color);

}  // namespace quorvane
