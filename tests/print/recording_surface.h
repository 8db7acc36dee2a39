#pragma once

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
  struct Stroke {
    double fromX, fromY, toX, toY;
  };
  struct Area {
    Box box;
    std::optional<Color> fill;
  };

  explicit RecordingSurface(Box page, double characterWidth = 0.55, double lineHeight = 1.2)
      : page_(page), characterWidth_(characterWidth), lineHeight_(lineHeight) {}

  Box Page() const override { return page_; }

  double TextWidth(std::string_view text, Font font) const override {
    ++measured;
    std::size_t characters = 0;
    for (const char c : text) characters += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    return static_cast<double>(characters) * font.size * characterWidth_ * (font.bold ? 1.1 : 1.0);
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
  void Line(double fromX, double fromY, double toX, double toY, double) override {
    lines.push_back({fromX, fromY, toX, toY});
  }
  void Rectangle(const Box& box, std::optional<Color> fill, double) override { areas.push_back({box, fill}); }

  const Words* Find(std::string_view text) const {
    for (const Words& word : words) {
      if (word.text == text) return &word;
    }
    return nullptr;
  }
  int Count(std::string_view text) const {
    int count = 0;
    for (const Words& word : words) count += word.text == text ? 1 : 0;
    return count;
  }

  std::vector<Words> words;
  std::vector<Stroke> lines;
  std::vector<Area> areas;
  mutable long measured = 0;

 private:
  Box page_;
  double characterWidth_;
  double lineHeight_;
};

}  // namespace quorvane
