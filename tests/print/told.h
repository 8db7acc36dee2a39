#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/print/recording_surface.h"

namespace quorvane {

// The page in the order in which it is drawn: how a text is set, and where its place begins and ends.
inline std::string Told(const RecordingSurface& page) {
  std::string told;
  const auto box = [](const Box& b) {
    return fmt::format("{:.2f},{:.2f} {:.2f},{:.2f}", b.left, b.top, b.Right(), b.Bottom());
  };
  for (const auto& word : page.words) {
    told += fmt::format("{:.2f}{} {} \"{}\"\n", word.font.size, word.font.bold ? " bold" : "", box(word.ink),
                        word.text);
  }
  for (const auto& line : page.lines) told += fmt::format("line {:.2f} {}\n", line.line, box(line.box));
  for (const auto& area : page.areas) {
    told += fmt::format("area {:.2f} {} {}\n", area.line, box(area.box), area.fill ? area.fill->Name() : "");
  }
  return told;
}

inline constexpr double kSlack = 1e-6;

inline bool Inside(const Box& inner, const Box& outer) {
  return inner.left >= outer.left - kSlack && inner.top >= outer.top - kSlack &&
         inner.Right() <= outer.Right() + kSlack && inner.Bottom() <= outer.Bottom() + kSlack;
}

inline bool Overlap(const Box& a, const Box& b) {
  return a.left < b.Right() - kSlack && b.left < a.Right() - kSlack && a.top < b.Bottom() - kSlack &&
         b.top < a.Bottom() - kSlack;
}

// The page's own margin is kept too: printers do not reach the edge.
inline void ExpectTidy(const RecordingSurface& surface) {
  const Box page = surface.Page();
  const double margin = 0.03 * std::min(page.width, page.height);
  const Box printable{page.left + margin, page.top + margin, page.width - 2 * margin,
                      page.height - 2 * margin};
  for (const auto& line : surface.lines) ASSERT_TRUE(Inside(line.box, printable));
  for (const auto& area : surface.areas) ASSERT_TRUE(Inside(area.box, printable));
  for (const auto& word : surface.words) {
    ASSERT_TRUE(Inside(word.ink, printable)) << word.text;
    for (const auto& other : surface.words) {
      ASSERT_FALSE(&other != &word && Overlap(word.ink, other.ink)) << word.text << " / " << other.text;
    }
    for (const auto& line : surface.lines) {
      ASSERT_FALSE(Overlap(line.box, word.ink)) << "a line through " << word.text;
    }
  }
}

}  // namespace quorvane
