#include "print/sheet.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr double kLowestPage = 127;  // Letter paper is 129 hundredths of its width high
constexpr double kCaptionSize = 1.25;
constexpr std::string_view kEllipsis = "\xE2\x80\xA6";
// No line of the page holds more, and measuring a text of megabytes takes its time.
constexpr std::size_t kLongestLine = 1000;
constexpr double kShrinkStep = 0.95;
constexpr double kMostLines = 1000;

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The greatest length up to `length` that does not split a character.
std::size_t WholeCharacters(std::string_view text, std::size_t length) {
  length = std::min(length, text.size());
  while (length > 0 && length < text.size() && IsContinuation(text[length])) --length;
  return length;
}

std::size_t NextCharacter(std::string_view text, std::size_t at) {
  ++at;
  while (at < text.size() && IsContinuation(text[at])) ++at;
  return std::min(at, text.size());
}

std::string OnOneLine(std::string_view text) {
  std::string line(text.substr(0, WholeCharacters(text, kLongestLine)));
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  return std::string(Trimmed(line, " "));
}

bool Fits(const Surface& surface, std::string_view text, Font font, double width) {
  return surface.TextWidth(text, font) <= width;
}

// The beginning of the text, with an ellipsis, that fits; empty when not even the ellipsis does.
std::string CutToFit(const Surface& surface, std::string_view text, Font font, double width) {
  std::string cut(text.substr(0, WholeCharacters(text, kLongestLine)));
  while (!Fits(surface, cut + std::string(kEllipsis), font, width)) {
    if (cut.empty()) return {};
    cut.resize(WholeCharacters(cut, cut.size() - 1));
  }
  return cut + std::string(kEllipsis);
}

// The number of bytes of the word that fit, at least one character.
std::size_t BreakWord(const Surface& surface, std::string_view word, Font font, double width) {
  std::size_t fitting = NextCharacter(word, 0);
  for (std::size_t end = fitting; end < word.size();) {
    end = NextCharacter(word, end);
    if (!Fits(surface, word.substr(0, end), font, width)) break;
    fitting = end;
  }
  return fitting;
}

// The lines of a text at that width, at most `limit` of them.
std::vector<std::string> WrapText(const Surface& surface, std::string_view text, Font font, double width,
                                  std::size_t limit) {
  std::vector<std::string> lines;
  std::string line;
  const auto full = [&] { return lines.size() >= limit; };
  const auto endLine = [&] {
    if (!full()) lines.push_back(line);
    line.clear();
  };
  const auto addWord = [&](std::string_view word) {
    if (!line.empty()) {
      const std::string longer = line + " " + std::string(word.substr(0, kLongestLine));
      if (Fits(surface, longer, font, width)) {
        line = longer;
        return;
      }
      endLine();
    }
    while (!word.empty() && !full()) {
      if (!line.empty()) endLine();
      line = word.substr(0, BreakWord(surface, word, font, width));
      word.remove_prefix(line.size());
    }
  };
  while (!text.empty() && !full()) {
    const std::size_t end = std::min(text.find_first_of(" \t\r\n"), text.size());
    if (end > 0) addWord(text.substr(0, end));
    text.remove_prefix(end);
    if (text.starts_with('\r') || text.starts_with('\n')) endLine();
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
  }
  endLine();
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

}  // namespace

Sheet::Sheet(Surface& surface) : surface_(surface) {
  const Box page = surface.Page();
  unit_ = std::min(page.width / kWidth, page.height / kLowestPage);
  left_ = page.left + (page.width - kWidth * unit_) / 2;
  top_ = page.top;
  height_ = page.height / unit_;
}

double Sheet::HeightOf(const Box& page) {
  return std::max(kLowestPage, kWidth * page.height / page.width);
}

void Sheet::Text(const Box& box, std::string_view text, Font font, Align align) {
  std::string line = OnOneLine(text);
  if (line.empty()) return;
  const Box place = At(box);
  const double smallest = kSmallestText * unit_;
  font.size *= unit_;
  while (font.size > smallest &&
         (surface_.LineHeight(font) > place.height || !Fits(surface_, line, font, place.width))) {
    font.size = std::max(smallest, font.size * kShrinkStep);
  }
  if (!Fits(surface_, line, font, place.width)) line = CutToFit(surface_, line, font, place.width);
  if (!line.empty()) surface_.Text(place, line, font, align);
}

void Sheet::Wrapped(const Box& box, std::string_view text, Font font) {
  Box place = At(box);
  const double smallest = kSmallestText * unit_;
  std::vector<std::string> lines;
  for (font.size *= unit_;; font.size = std::max(smallest, font.size * kShrinkStep)) {
    const double fitting = std::floor(place.height / surface_.LineHeight(font));
    const auto room = static_cast<std::size_t>(std::clamp(fitting, 0.0, kMostLines));
    lines = WrapText(surface_, text, font, place.width, room + 1);
    if (lines.size() <= room) break;
    if (font.size > smallest) continue;
    lines.resize(room);
    if (!lines.empty()) lines.back() = CutToFit(surface_, lines.back(), font, place.width);
    break;
  }
  place.height = surface_.LineHeight(font);
  for (const std::string& line : lines) {
    if (!line.empty()) surface_.Text(place, line, font, Align::Left);
    place.top += place.height;
  }
}

void Sheet::Caption(const Box& box, std::string_view text, Align align) {
  Text(box, text, {kCaptionSize, false}, align);
}

}  // namespace quorvane
