#pragma once

namespace quorvane {

// A rectangle of a form's design or of its window, in pixels relative to its container.
struct clsRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const clsRect&) const = default;
};

// Where a control stands when its form, designed at designWidth x designHeight, is width x height. Edges are
// scaled and not sizes, so that neighbours that touch in the design touch at every size. Always computed from
// the design: a form that is made small and large again looks as before.
clsRect ScaleRect(const clsRect& design, int designWidth, int designHeight, int width, int height);

// The font size in points for that form: grows with the smaller of the two factors, never below 1.
double ScaleFont(double designPoints, int designWidth, int designHeight, int width, int height);

}  // namespace quorvane
