#include "print/text_fit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/print/recording_surface.h"

namespace quorvane {
namespace {

// At size 1 every character is one unit wide and a line one unit high.
RecordingSurface Grid() {
  return RecordingSurface({0, 0, 100, 100}, 1.0, 1.0);
}

TEST(WrapText, BreaksAtBlanksLineEndsAndInsideWordsThatAreTooWide) {
  using testing::ElementsAre;
  const struct {
    const char* text;
    std::vector<std::string> lines;
  } cases[] = {
      {"", {}},
      {"one two three", {"one", "two", "three"}},
      {"a b c d", {"a b c", "d"}},
      {"  a \t b ", {"a b"}},
      {"a\r\nb\rc\nd", {"a", "b", "c", "d"}},
      {"a\n\nb\n\n", {"a", "", "b"}},
      {"abcdefghijkl", {"abcde", "fghij", "kl"}},
      {"ab cdefghi j", {"ab", "cdefg", "hi j"}},
      {"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4",
       {"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", "\xC3\xA4"}},
  };
  for (const auto& example : cases) {
    EXPECT_EQ(WrapText(Grid(), example.text, {1, false}, 5, 100), example.lines) << example.text;
  }
  EXPECT_THAT(WrapText(Grid(), "a b c", {1, false}, 0.5, 2), ElementsAre("a", "b"))
      << "never less than a character";
}

TEST(DrawFitted, ShrinksThenCuts) {
  const struct {
    const char* text;
    double width;
    const char* shown;
    double size;
  } cases[] = {
      {"abcd", 4, "abcd", 1},
      {"abcde", 4, "abcde", 0.8},
      {"abcdefghijkl", 4, "abcdefg\xE2\x80\xA6", 0.5},
      {"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", 1.5, "\xC3\xA4\xC3\xA4\xE2\x80\xA6", 0.5},
      {" a\r\nb ", 9, "a  b", 1},
  };
  for (const auto& example : cases) {
    RecordingSurface surface = Grid();
    DrawFitted(surface, {0, 0, example.width, 1}, example.text, {1, false}, 0.5, Align::Left);
    ASSERT_EQ(surface.words.size(), 1U);
    EXPECT_EQ(surface.words[0].text, example.shown);
    EXPECT_NEAR(surface.words[0].font.size, example.size, 0.05) << example.text;
  }
  RecordingSurface surface = Grid();
  DrawFitted(surface, {0, 0, 0.2, 1}, "ab", {1, false}, 0.5, Align::Left);
  DrawFitted(surface, {0, 0, 9, 1}, " \r\n", {1, false}, 0.5, Align::Left);
  EXPECT_TRUE(surface.words.empty());
}

TEST(DrawWrapped, FillsTheBoxAndMarksWhatIsLeftOut) {
  RecordingSurface surface = Grid();
  DrawWrapped(surface, {0, 0, 3, 2}, "a b c d e f g h i j k l m n o p q r s t u v w x y z", {1, false}, 0.5);
  ASSERT_EQ(surface.words.size(), 4U);
  EXPECT_THAT(surface.words.back().text, testing::EndsWith("\xE2\x80\xA6"));
  EXPECT_LE(surface.words.back().ink.Bottom(), 2.0 + 1e-9);
}

TEST(DrawWrapped, MeasuresOnlyWhatThePageCanHold) {
  for (const std::string& text :
       {std::string(4'000'000, 'x'), std::string(4'000'000, '\n'), std::string(4'000'000, '\x80')}) {
    RecordingSurface surface = Grid();
    DrawWrapped(surface, {0, 0, 90, 25}, text, {1.7, false}, 1.0);
    EXPECT_LT(surface.measured, 100'000);
  }
}

}  // namespace
}  // namespace quorvane
