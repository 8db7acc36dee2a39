#include "print/print_preview.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "replay/virtual_platform.h"
#include "tests/print/recording_surface.h"

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

class FakeWindow : public PreviewWindow {
 public:
  PrinterPage Printer() override { return page; }
  Surface& ClearHiddenPicture(const PrinterPage& wanted) override {
    picture = RecordingSurface({wanted.left, wanted.top, wanted.width, wanted.height});
    return picture;
  }
  void StretchPicture(const clsRect& scrollArea) override { painted.push_back(scrollArea); }
  void LayoutChanged(const PreviewLayout& layout) override { shown = layout; }

  PrinterPage page{800, 1120, -12, 20};
  RecordingSurface picture{{0, 0, 0, 0}};
  std::vector<clsRect> painted;
  PreviewLayout shown;
};

class PrintPreviewTest : public testing::Test {
 protected:
  // A viewport of 400 x 300 on a page of 800 x 1120.
  PrintPreviewTest() { Open(); }
  void Open() {
    preview.SetInnerSize(417, 317);
    preview.Open();
  }
  void Enter(EventKind kind, const std::string& target) { door.Enter({kind, "PrintPreview" + target}); }
  std::string Checked() {
    std::string scales;
    for (int i = 1; i <= 3; ++i) scales += preview.mnuScaleSet[i].Checked() ? std::to_string(i) : "";
    return scales;
  }

  VirtualPlatform platform;
  Door door{platform};
  FakeWindow window;
  int drawn = 0;
  PrintPreview preview{door.AllForms(), window, [this](Surface& page) {
                         ++drawn;
                         page.Text(page.Page(), "report", {10, false}, Align::Left);
                       }};
};

TEST_F(PrintPreviewTest, OpensAtFullSizeAndDrawsTheReportOnceOnThePrintersPage) {
  EXPECT_EQ(preview.Caption(), "Print Preview");
  EXPECT_EQ(window.picture.Page().left, -12);
  EXPECT_EQ(window.picture.Page().top, 20);
  EXPECT_NE(window.picture.Find("report"), nullptr);
  EXPECT_EQ(Checked(), "1");
  Enter(EventKind::Click, ".mnuScaleSet(3)");
  preview.ScrollArea_Paint();
  Enter(EventKind::Resize, "");
  preview.KeyDown("PageDown");
  EXPECT_EQ(drawn, 1);
  Enter(EventKind::Click, ".mnuFileClose");
  EXPECT_FALSE(preview.Visible());
  Open();
  EXPECT_TRUE(preview.Visible());
  EXPECT_EQ(drawn, 2);
  EXPECT_EQ(Checked(), "1") << "opens at full size again";
}

TEST_F(PrintPreviewTest, ScalesByItsMenu) {
  const clsRect sizes[] = {{}, {0, 0, 800, 1120}, {0, 0, 600, 840}, {0, 0, 300, 420}};
  for (const int scale : {3, 2, 1, 1}) {
    preview.VScroll_Change(40);
    Enter(EventKind::Click, ".mnuScaleSet(" + std::to_string(scale) + ")");
    EXPECT_EQ(Checked(), std::to_string(scale));
    EXPECT_EQ(window.shown.ScrollArea, sizes[scale]);
    EXPECT_EQ(window.painted.back(), window.shown.ScrollArea);
  }
  for (const std::int16_t scale : {std::int16_t{0}, std::int16_t{4}}) {
    EXPECT_THROW(preview.SetScale(scale), SubscriptError);
    EXPECT_EQ(Checked(), "1");
  }
}

TEST_F(PrintPreviewTest, KeysMoveTheBarsByTheirStepsAndStopAtTheEnds) {
  const struct {
    const char* key;
    int left, top;
  } presses[] = {{"Up", 0, 0},          {"PageUp", 0, 0},     {"Down", 0, 30},      {"Right", 40, 30},
                 {"PageDown", 40, 300}, {"Home", 40, 300},    {"Up", 40, 270},      {"PageUp", 40, 0},
                 {"Left", 0, 0},        {"PageDown", 0, 270}, {"PageDown", 0, 540}, {"PageDown", 0, 810},
                 {"PageDown", 0, 820},  {"Down", 0, 820}};
  for (const auto& press : presses) {
    preview.KeyDown(press.key);
    EXPECT_EQ(window.shown.ScrollArea.left, -press.left) << press.key;
    EXPECT_EQ(window.shown.ScrollArea.top, -press.top) << press.key;
  }
  EXPECT_EQ(window.shown.HScroll.large, 360);
  preview.SetInnerSize(900, 1200);  // no bar is needed any more
  Enter(EventKind::Resize, "");
  preview.KeyDown("PageDown");
  EXPECT_EQ(window.shown.ScrollArea.top, 0);
}

}  // namespace
}  // namespace quorvane
