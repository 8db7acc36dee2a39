#pragma once

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "print/surface.h"

namespace quorvane {

// Keeps what is drawn on it. Every character is as wide as a fixed share of the font's size.
class RecordingSurface : public Surface {
 public:
  struct Words {
    std::string text;
    Box ink;  // what the text covers
    Font font;
  };
  struct Area {
    Box box;
    double line;
    std::optional<Color> fill = {};
  };

  explicit RecordingSurface(Box page, double characterWidth = 0.55, double lineHeight = 1.2)
      : page_(page), characterWidth_(characterWidth), lineHeight_(lineHeight) {}

  Box Page() const override { return page_; }

  double TextWidth(std::string_view text, Font font) const override {
    ++measured;
    const auto more = std::ranges::count_if(text, [](char c) { return (c & 0xC0) == 0x80; });
    return static_cast<double>(std::ssize(text) - more) * font.size * characterWidth_ *
           (font.bold ? 1.1 : 1.0);
  }
  double LineHeight(Font font) const override { return font.size * lineHeight_; }

  void Text(const Box& box, std::string_view text, Font font, Align align) override {
    const double width = TextWidth(text, font);
    const double room = box.width - width;
    const double shift = align == Align::Left ? 0 : align == Align::Right ? room : room / 2;
    const double height = LineHeight(font);
    words.push_back(
        {std::string(text), {box.left + shift, box.top + (box.height - height) / 2, width, height}, font});
  }
  void Line(double fromX, double fromY, double toX, double toY, double thickness) override {
    lines.push_back(
        {{std::min(fromX, toX), std::min(fromY, toY), std::abs(toX - fromX), std::abs(toY - fromY)},
         thickness});
  }
  void Rectangle(const Box& box, std::optional<Color> fill, double outline) override {
    areas.push_back({box, outline, fill});
  }

  std::vector<Words> words;
  std::vector<Area> lines;
  std::vector<Area> areas;
  mutable long measured = 0;

 private:
  Box page_;
  double characterWidth_;
  double lineHeight_;
};

}  // namespace quorvane
