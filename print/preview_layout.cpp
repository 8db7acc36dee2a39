#include "print/preview_layout.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr int kSmallestForm = 3 * kScrollBarThickness;
constexpr double kGreatestPage = 1e6;

int Pixels(double length) {
  if (!(length > 0)) return 0;
  return static_cast<int>(std::lround(std::min(length, kGreatestPage)));
}

// A step is at least a pixel: a key that does nothing would look broken.
void SetRange(ScrollBar& bar, bool shown, int content, int view) {
  bar.visible = shown;
  bar.max = shown ? std::max(0, content - view) : 0;
  bar.small = std::max(1, Pixels(0.1 * view));
  bar.large = std::max(1, Pixels(0.9 * view));
  bar.value = 0;
}

}  // namespace

bool ScrollBar::MoveTo(int wanted) {
  const int before = value;
  value = std::clamp(wanted, 0, max);
  return value != before;
}

void PreviewLayout::Scroll() {
  ScrollArea.left = -HScroll.value;
  ScrollArea.top = -VScroll.value;
}

void ScalePage(PreviewLayout& layout, const PrinterPage& page, float factor) {
  layout.ScrollArea.width = Pixels(page.width * static_cast<double>(factor));
  layout.ScrollArea.height = Pixels(page.height * static_cast<double>(factor));
}

bool Arrange(PreviewLayout& layout, int width, int height) {
  if (width < kSmallestForm || height < kSmallestForm) return false;
  const clsRect& page = layout.ScrollArea;
  // Each bar takes room from the other direction, so one that is shown may make the other one needed.
  const bool vertical =
      page.height > height || (page.width > width && page.height > height - kScrollBarThickness);
  const int viewWidth = width - (vertical ? kScrollBarThickness : 0);
  const bool horizontal = page.width > viewWidth;
  const int viewHeight = height - (horizontal ? kScrollBarThickness : 0);

  layout.Viewport = {0, 0, viewWidth, viewHeight};
  layout.HScroll.rectangle = {0, viewHeight, viewWidth, kScrollBarThickness};
  layout.VScroll.rectangle = {viewWidth, 0, kScrollBarThickness, viewHeight};
  SetRange(layout.HScroll, horizontal, page.width, viewWidth);
  SetRange(layout.VScroll, vertical, page.height, viewHeight);
  layout.Scroll();
  return true;
}

}  // namespace quorvane
