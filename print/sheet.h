#pragma once

#include <optional>
#include <string_view>

#include "print/surface.h"

namespace quorvane {

// A page measured in hundredths of its width from its upper left corner, whatever the printer's unit and
// origin. One too low for the report is used only in the middle, at a smaller unit. Text too long for its
// place shrinks down to the smallest size, then is cut with an ellipsis; UTF-8 characters are never split.
class Sheet {
 public:
  static constexpr double kWidth = 100;
  static constexpr double kMargin = 5;
  static constexpr double kLeft = kMargin;
  static constexpr double kRight = kWidth - kMargin;
  static constexpr double kInner = kRight - kLeft;
  static constexpr double kSmallestText = 1.0;

  // The page must have a size.
  explicit Sheet(Surface& surface);

  // The lower edge of the page, at least 127.
  double Height() const { return height_; }
  static double HeightOf(const Box& page);

  // On one line; line breaks and tabs become blanks. Draws nothing where not even the ellipsis fits.
  void Text(const Box& box, std::string_view text, Font font, Align align = Align::Left);
  // On as many lines as the box holds. CR, LF and CRLF each end a line; a word wider than the box is broken.
  void Wrapped(const Box& box, std::string_view text, Font font);
  void Caption(const Box& box, std::string_view text, Align align = Align::Left);
  void HorizontalRule(double left, double right, double y, double thickness = kThin) {
    surface_.Line(X(left), Y(y), X(right), Y(y), thickness * unit_);
  }
  void VerticalRule(double x, double top, double bottom, double thickness = kThin) {
    surface_.Line(X(x), Y(top), X(x), Y(bottom), thickness * unit_);
  }
  void Rectangle(const Box& box, std::optional<Color> fill, double outline) {
    surface_.Rectangle(At(box), fill, outline * unit_);
  }

  static constexpr double kHair = 0.04;
  static constexpr double kThin = 0.1;
  static constexpr double kThick = 0.25;

 private:
  double X(double x) const { return left_ + x * unit_; }
  double Y(double y) const { return top_ + y * unit_; }
  Box At(const Box& box) const { return {X(box.left), Y(box.top), box.width * unit_, box.height * unit_}; }

  Surface& surface_;
  double unit_ = 1;
  double left_ = 0;
  double top_ = 0;
  double height_ = 0;
};

}  // namespace quorvane
