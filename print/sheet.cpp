#include "print/sheet.h"

#include <algorithm>

#include "print/text_fit.h"

namespace quorvane {
namespace {

constexpr double kLowestPage = 127;  // Letter paper is 129 hundredths of its width high
constexpr double kCaptionSize = 1.25;

}  // namespace

Sheet::Sheet(Surface& surface) : surface_(surface) {
  const Box page = surface.Page();
  unit_ = std::min(page.width / kWidth, page.height / kLowestPage);
  left_ = page.left + (page.width - kWidth * unit_) / 2;
  top_ = page.top;
  height_ = page.height / unit_;
}

Box Sheet::At(const Box& box) const {
  return {X(box.left), Y(box.top), box.width * unit_, box.height * unit_};
}

void Sheet::Text(const Box& box, std::string_view text, Font font, Align align) {
  DrawFitted(surface_, At(box), text, At(font), kSmallestText * unit_, align);
}

void Sheet::Wrapped(const Box& box, std::string_view text, Font font) {
  DrawWrapped(surface_, At(box), text, At(font), kSmallestText * unit_);
}

void Sheet::Caption(const Box& box, std::string_view text, Align align) {
  Text(box, text, {kCaptionSize, false}, align);
}

void Sheet::HorizontalRule(double left, double right, double y, double thickness) {
  surface_.Line(X(left), Y(y), X(right), Y(y), thickness * unit_);
}

void Sheet::VerticalRule(double x, double top, double bottom, double thickness) {
  surface_.Line(X(x), Y(top), X(x), Y(bottom), thickness * unit_);
}

void Sheet::Rectangle(const Box& box, std::optional<Color> fill, double outline) {
  surface_.Rectangle(At(box), fill, outline * unit_);
}

}  // namespace quorvane
