#pragma once

#include "forms/form_scaling.h"

namespace quorvane {

// The printer's page as the preview shows it at full size: width and height in the window's pixels, and the
// coordinates of its upper left corner.
struct PrinterPage {
  double width = 0;
  double height = 0;
  double left = 0;
  double top = 0;
};

// A scroll bar as plain data. value is 0..max; small and large are the steps of its arrows and of its track.
struct ScrollBar {
  clsRect rectangle;
  bool visible = false;
  int max = 0;
  int small = 1;
  int large = 1;
  int value = 0;

  // Stops at 0 and at the maximum. True: the value has changed.
  bool MoveTo(int wanted);
};

// Where the parts of the preview stand, in pixels: the viewport and the bars in the form, the scaled page in
// the viewport.
struct PreviewLayout {
  clsRect Viewport;
  clsRect ScrollArea;
  ScrollBar HScroll;
  ScrollBar VScroll;

  // Puts the scaled page where the bars say.
  void Scroll();
};

inline constexpr int kScrollBarThickness = 17;

// Sizes the scaled page. A page of any size is taken, at most a million pixels of it.
void ScalePage(PreviewLayout& layout, const PrinterPage& page, float factor);

// Fits viewport and bars to a form of that inner size and takes the page back to its upper left corner.
// False, and nothing changed, for a form less than three bars wide or high.
bool Arrange(PreviewLayout& layout, int width, int height);

}  // namespace quorvane
