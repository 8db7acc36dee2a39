#include "print/sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/print/recording_surface.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// At size 1, the smallest, every character is one unit wide and a line one unit high.
struct Grid {
  RecordingSurface surface{{0, 0, 200, 127}, 1.0, 1.0};
  Sheet sheet{surface};
};

// Text, width, lines.
TEST(Sheet, WrapsAtBlanksLineEndsAndInsideWordsThatAreTooWide) {
  for (const auto& row : Rows("print/wrapped.json")) {
    Grid grid;
    grid.sheet.Wrapped({0, 0, std::stod(row[1]), 100}, row[0], {1, false});
    std::vector<std::string> lines;
    for (const auto& word : grid.surface.words) {
      lines.resize(static_cast<std::size_t>(word.ink.top) + 1);
      lines.back() = word.text;
    }
    EXPECT_EQ(lines, std::vector(row.begin() + 2, row.end())) << row[0];
  }
}

// Text, width, what is shown (nothing at all when empty) and its size.
TEST(Sheet, ShrinksThenCuts) {
  for (const auto& row : Rows("print/shrunk.json")) {
    Grid grid;
    grid.sheet.Text({0, 0, std::stod(row[1]), 2}, row[0], {2, false});
    const auto& words = grid.surface.words;
    ASSERT_EQ(words.size(), row[2].empty() ? 0U : 1U) << row[0];
    if (words.empty()) continue;
    EXPECT_EQ(words[0].text, row[2]);
    EXPECT_NEAR(words[0].font.size, std::stod(row[3]), 0.1) << row[0];
  }
}

TEST(Sheet, FillsTheBoxMarksWhatIsLeftOutAndMeasuresOnlyWhatFits) {
  Grid grid;
  EXPECT_DOUBLE_EQ(grid.sheet.Height(), 127) << "no lower page is used in its whole width";
  grid.sheet.Wrapped({0, 0, 6, 4}, "a b c d e f g h i j k l m n o p q r s t u v w x y z", {2, false});
  const auto& words = grid.surface.words;
  ASSERT_EQ(words.size(), 4U);
  EXPECT_THAT(words.back().text, testing::EndsWith("\xE2\x80\xA6"));
  EXPECT_LE(words.back().ink.Bottom(), 4.0 + 1e-9);
  for (const char filler : {'x', '\n', '\x80'}) {
    grid.surface.measured = 0;
    grid.sheet.Wrapped({0, 0, 90, 25}, std::string(4'000'000, filler), {1.7, false});
    EXPECT_LT(grid.surface.measured, 100'000);
  }
}

}  // namespace
}  // namespace quorvane
