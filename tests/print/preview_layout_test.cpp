#include "print/preview_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace quorvane {
namespace {

constexpr int kBar = kScrollBarThickness;

TEST(PreviewLayout, ShowsTheBarsThatAreNeeded) {
  const struct {
    const char* name;
    int width, height;  // of the page; the form is 400 x 300
    bool across, down;
  } cases[] = {
      {"fits exactly", 400, 300, false, false},
      {"too wide", 401, 300 - kBar, true, false},
      {"too wide, and its bar hides the foot", 401, 301 - kBar, true, true},
      {"too high", 400 - kBar, 301, false, true},
      {"too high, and its bar hides the edge", 401 - kBar, 301, true, true},
  };
  for (const auto& example : cases) {
    PreviewLayout layout;
    ScalePage(layout, {1.0 * example.width, 1.0 * example.height, 0, 0}, 1.0F);
    ASSERT_TRUE(Arrange(layout, 400, 300));
    EXPECT_EQ(layout.HScroll.visible, example.across) << example.name;
    EXPECT_EQ(layout.VScroll.visible, example.down) << example.name;
    const int viewWidth = example.down ? 400 - kBar : 400;
    const int viewHeight = example.across ? 300 - kBar : 300;
    EXPECT_EQ(layout.Viewport, (clsRect{0, 0, viewWidth, viewHeight})) << example.name;
    EXPECT_EQ(layout.HScroll.rectangle, (clsRect{0, viewHeight, viewWidth, kBar}));
    EXPECT_EQ(layout.VScroll.rectangle, (clsRect{viewWidth, 0, kBar, viewHeight}));
    EXPECT_EQ(layout.HScroll.max, example.across ? example.width - viewWidth : 0) << example.name;
    EXPECT_EQ(layout.VScroll.max, example.down ? example.height - viewHeight : 0) << example.name;
  }
}

TEST(PreviewLayout, AFormBelowThreeBarsKeepsItsLayout) {
  PreviewLayout layout;
  ScalePage(layout, {1000, 1000, 0, 0}, 1.0F);
  ASSERT_TRUE(Arrange(layout, 3 * kBar, 3 * kBar));
  for (const auto& [width, height] : {std::pair{3 * kBar - 1, 500}, {500, 3 * kBar - 1}, {-5, -5}}) {
    EXPECT_FALSE(Arrange(layout, width, height));
    EXPECT_EQ(layout.Viewport, (clsRect{0, 0, 2 * kBar, 2 * kBar}));
  }
}

TEST(PreviewLayout, ExtremePagesAndPositionsStayInRange) {
  const double inf = std::numeric_limits<double>::infinity();
  for (const PrinterPage& page : {PrinterPage{inf, 1e300, 0, 0}, PrinterPage{-5, std::nan(""), 0, 0}}) {
    PreviewLayout layout;
    ScalePage(layout, page, 1.0F);
    ASSERT_TRUE(Arrange(layout, 100, 100));
    for (const int wanted : {std::numeric_limits<int>::min(), 1, std::numeric_limits<int>::max()}) {
      layout.VScroll.MoveTo(wanted);
      layout.Scroll();
      EXPECT_GE(layout.VScroll.value, 0);
      EXPECT_LE(layout.VScroll.value, layout.VScroll.max);
      EXPECT_EQ(layout.ScrollArea.top, -layout.VScroll.value);
    }
  }
}

}  // namespace
}  // namespace quorvane
