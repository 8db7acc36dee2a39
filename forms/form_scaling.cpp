#include "forms/form_scaling.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

int ScaleEdge(int edge, int from, int to) {
  if (from <= 0) return edge;
  return static_cast<int>(std::lround(static_cast<double>(edge) * to / from));
}

}  // namespace

clsRect ScaleRect(const clsRect& design, int designWidth, int designHeight, int width, int height) {
  clsRect scaled;
  scaled.left = ScaleEdge(design.left, designWidth, width);
  scaled.top = ScaleEdge(design.top, designHeight, height);
  scaled.width = ScaleEdge(design.left + design.width, designWidth, width) - scaled.left;
  scaled.height = ScaleEdge(design.top + design.height, designHeight, height) - scaled.top;
  return scaled;
}

double ScaleFont(double designPoints, int designWidth, int designHeight, int width, int height) {
  if (designWidth <= 0 || designHeight <= 0) return designPoints;
  const double factor =
      std::min(static_cast<double>(width) / designWidth, static_cast<double>(height) / designHeight);
  return std::max(1.0, designPoints * factor);
}

}  // namespace quorvane
