#include "print/sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/print/recording_surface.h"

namespace quorvane {
namespace {

// At size 1 every character is one unit wide and a line one unit high.
RecordingSurface Grid() {
  return RecordingSurface({0, 0, 100, 100}, 1.0, 1.0);
}

const std::string kUmlauts = "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";  // six
const std::string kCut = "\xE2\x80\xA6";

TEST(WrapText, BreaksAtBlanksLineEndsAndInsideWordsThatAreTooWide) {
  const struct {
    std::string text;
    std::vector<std::string> lines;
  } cases[] = {{"", {}},
               {"a b c d", {"a b c", "d"}},
               {"  a \t b ", {"a b"}},
               {"a\r\nb\rc\n\nd\n\n", {"a", "b", "c", "", "d"}},
               {"abcdefghijkl", {"abcde", "fghij", "kl"}},
               {"ab cdefghi j", {"ab", "cdefg", "hi j"}},
               {kUmlauts, {kUmlauts.substr(0, 10), kUmlauts.substr(10)}}};
  for (const auto& c : cases) EXPECT_EQ(WrapText(Grid(), c.text, {1, false}, 5, 100), c.lines) << c.text;
  EXPECT_THAT(WrapText(Grid(), "a b c", {1, false}, 0.5, 2), testing::ElementsAre("a", "b"))
      << "never less than a character";
}

TEST(DrawFitted, ShrinksThenCuts) {
  const struct {
    std::string text;
    double width;
    std::string shown;  // nothing at all when empty
    double size;
  } cases[] = {{"abcd", 4, "abcd", 1},
               {"abcde", 4, "abcde", 0.8},
               {"abcdefghijkl", 4, "abcdefg" + kCut, 0.5},
               {kUmlauts, 1.5, kUmlauts.substr(0, 4) + kCut, 0.5},
               {" a\r\nb ", 9, "a  b", 1},
               {"ab", 0.2, "", 0},
               {" \r\n", 9, "", 0}};
  for (const auto& c : cases) {
    RecordingSurface surface = Grid();
    DrawFitted(surface, {0, 0, c.width, 1}, c.text, {1, false}, 0.5, Align::Left);
    ASSERT_EQ(surface.words.size(), c.shown.empty() ? 0U : 1U) << c.text;
    if (surface.words.empty()) continue;
    EXPECT_EQ(surface.words[0].text, c.shown);
    EXPECT_NEAR(surface.words[0].font.size, c.size, 0.05) << c.text;
  }
}

TEST(DrawWrapped, FillsTheBoxMarksWhatIsLeftOutAndMeasuresOnlyWhatFits) {
  RecordingSurface surface = Grid();
  DrawWrapped(surface, {0, 0, 3, 2}, "a b c d e f g h i j k l m n o p q r s t u v w x y z", {1, false}, 0.5);
  ASSERT_EQ(surface.words.size(), 4U);
  EXPECT_THAT(surface.words.back().text, testing::EndsWith(kCut));
  EXPECT_LE(surface.words.back().ink.Bottom(), 2.0 + 1e-9);
  for (const char filler : {'x', '\n', '\x80'}) {
    surface.measured = 0;
    DrawWrapped(surface, {0, 0, 90, 25}, std::string(4'000'000, filler), {1.7, false}, 1.0);
    EXPECT_LT(surface.measured, 100'000);
  }
}

}  // namespace
}  // namespace quorvane
