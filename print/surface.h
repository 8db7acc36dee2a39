#pragma once

#include <optional>
#include <string_view>

#include "base/color.h"

namespace quorvane {

// A part of the page in page units, y downwards.
struct Box {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  double Right() const { return left + width; }
  double Bottom() const { return top + height; }
};

enum class Align { Left, Center, Right };

struct Font {
  double size = 0;  // of the em square, in page units
  bool bold = false;
};

// One page to draw on. Printer, preview, PDF and tests each bring one, so that the same report reaches them
// all. Text is UTF-8 and black; lines are black. Nothing is clipped: whoever draws keeps inside Page().
class Surface {
 public:
  virtual ~Surface() = default;

  // Where the page lies in its own coordinates, whose unit may be anything.
  virtual Box Page() const = 0;

  virtual double TextWidth(std::string_view text, Font font) const = 0;
  virtual double LineHeight(Font font) const = 0;

  // One line of text, in the middle of the box's height.
  virtual void Text(const Box& box, std::string_view text, Font font, Align align) = 0;
  virtual void Line(double fromX, double fromY, double toX, double toY, double thickness) = 0;
  // An outline of thickness 0 is none.
  virtual void Rectangle(const Box& box, std::optional<Color> fill, double outline) = 0;
};

}  // namespace quorvane
