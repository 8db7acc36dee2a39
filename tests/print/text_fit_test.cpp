#include "print/sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/print/recording_surface.h"

namespace quorvane {
namespace {

// At size 1, the smallest, every character is one unit wide and a line one unit high.
struct Grid {
  RecordingSurface surface{{0, 0, 200, 127}, 1.0, 1.0};
  Sheet sheet{surface};
};

const std::string kUmlauts = "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";  // six
const std::string kCut = "\xE2\x80\xA6";

TEST(Sheet, WrapsAtBlanksLineEndsAndInsideWordsThatAreTooWide) {
  const struct {
    std::string text;
    std::vector<std::string> lines;
    double width = 5;
  } cases[] = {{"", {}},
               {"a b c d", {"a b c", "d"}},
               {"  a \t b ", {"a b"}},
               {"a\r\nb\rc\n\nd\n\n", {"a", "b", "c", "", "d"}},
               {"abcdefghijkl", {"abcde", "fghij", "kl"}},
               {"ab cdefghi j", {"ab", "cdefg", "hi j"}},
               {kUmlauts, {kUmlauts.substr(0, 10), kUmlauts.substr(10)}},
               {"ab c", {"a", "b", "c"}, 0.5}};  // never less than a character
  for (const auto& c : cases) {
    Grid grid;
    grid.sheet.Wrapped({0, 0, c.width, 100}, c.text, {1, false});
    std::vector<std::string> lines;
    for (const auto& word : grid.surface.words) {
      lines.resize(static_cast<std::size_t>(word.ink.top) + 1);
      lines.back() = word.text;
    }
    EXPECT_EQ(lines, c.lines) << c.text;
  }
}

TEST(Sheet, ShrinksThenCuts) {
  const struct {
    std::string text;
    double width;
    std::string shown;  // nothing at all when empty
    double size;
  } cases[] = {{"abcd", 8, "abcd", 2},
               {"abcde", 8, "abcde", 1.6},
               {"abcdefghijkl", 8, "abcdefg" + kCut, 1},
               {kUmlauts, 3, kUmlauts.substr(0, 4) + kCut, 1},
               {" a\r\nb ", 18, "a  b", 2},
               {"ab", 0.4, "", 0},
               {" \r\n", 18, "", 0}};
  for (const auto& c : cases) {
    Grid grid;
    grid.sheet.Text({0, 0, c.width, 2}, c.text, {2, false});
    const auto& words = grid.surface.words;
    ASSERT_EQ(words.size(), c.shown.empty() ? 0U : 1U) << c.text;
    if (words.empty()) continue;
    EXPECT_EQ(words[0].text, c.shown);
    EXPECT_NEAR(words[0].font.size, c.size, 0.1) << c.text;
  }
}

TEST(Sheet, FillsTheBoxMarksWhatIsLeftOutAndMeasuresOnlyWhatFits) {
  Grid grid;
  EXPECT_DOUBLE_EQ(grid.sheet.Height(), 127) << "no lower page is used in its whole width";
  grid.sheet.Wrapped({0, 0, 6, 4}, "a b c d e f g h i j k l m n o p q r s t u v w x y z", {2, false});
  const auto& words = grid.surface.words;
  ASSERT_EQ(words.size(), 4U);
  EXPECT_THAT(words.back().text, testing::EndsWith(kCut));
  EXPECT_LE(words.back().ink.Bottom(), 4.0 + 1e-9);
  for (const char filler : {'x', '\n', '\x80'}) {
    grid.surface.measured = 0;
    grid.sheet.Wrapped({0, 0, 90, 25}, std::string(4'000'000, filler), {1.7, false});
    EXPECT_LT(grid.surface.measured, 100'000);
  }
}

}  // namespace
}  // namespace quorvane
