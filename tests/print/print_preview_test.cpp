#include "print/print_preview.h"

#include <gtest/gtest.h>

#include "tests/print/recording_surface.h"
#include "tools/replay/virtual_platform.h"

namespace quorvane {
namespace {

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
