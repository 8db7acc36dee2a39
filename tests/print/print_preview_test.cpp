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
  void Open(int width = 417, int height = 317) {
    preview.SetInnerSize(width, height);
    preview.Open();
  }
  void Click(const std::string& control) {
    door.Enter({.kind = EventKind::Click, .target = "PrintPreview." + control});
  }
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

TEST_F(PrintPreviewTest, OpensAtFullSizeWithTheReportDrawnOnThePrintersPage) {
  Open();
  EXPECT_TRUE(preview.Visible());
  EXPECT_EQ(preview.Caption(), "Print Preview");
  EXPECT_EQ(Checked(), "1");
  EXPECT_EQ(window.shown.ScrollArea, (clsRect{0, 0, 800, 1120}));
  EXPECT_EQ(window.picture.Page().left, -12);
  EXPECT_EQ(window.picture.Page().top, 20);
  EXPECT_NE(window.picture.Find("report"), nullptr);
  EXPECT_EQ(window.painted.back(), window.shown.ScrollArea);
}

TEST_F(PrintPreviewTest, DrawsTheReportOncePerOpening) {
  Open();
  Click("mnuScaleSet(2)");
  Click("mnuScaleSet(3)");
  preview.VScroll_Change(50);
  preview.ScrollArea_Paint();
  door.Enter({.kind = EventKind::Resize, .target = "PrintPreview"});
  preview.KeyDown("PageDown");
  EXPECT_EQ(drawn, 1);
  Click("mnuFileClose");
  EXPECT_FALSE(preview.Visible());
  Open();
  EXPECT_EQ(drawn, 2);
  EXPECT_EQ(Checked(), "1") << "opens at full size again";
}

TEST_F(PrintPreviewTest, ScalesByItsMenu) {
  const struct {
    const char* entry;
    const char* checked;
    int width, height;
  } cases[] = {{"mnuScaleSet(3)", "3", 300, 420},
               {"mnuScaleSet(2)", "2", 600, 840},
               {"mnuScaleSet(1)", "1", 800, 1120},
               {"mnuScaleSet(1)", "1", 800, 1120}};
  Open();
  for (const auto& example : cases) {
    preview.VScroll_Change(40);
    Click(example.entry);
    EXPECT_EQ(Checked(), example.checked);
    EXPECT_EQ(window.shown.ScrollArea, (clsRect{0, 0, example.width, example.height})) << example.entry;
    EXPECT_EQ(window.painted.back(), window.shown.ScrollArea);
  }
  for (const int scale : {0, 4, -1}) {
    EXPECT_THROW(preview.SetScale(static_cast<std::int16_t>(scale)), SubscriptError);
    EXPECT_EQ(Checked(), "1");
  }
}

TEST_F(PrintPreviewTest, KeysMoveTheBarsByTheirStepsAndStopAtTheEnds) {
  Open();  // a viewport of 400 x 300 on a page of 800 x 1120
  const struct {
    const char* key;
    int left, top;
  } presses[] = {{"Up", 0, 0},         {"Left", 0, 0},        {"PageUp", 0, 0},     {"Down", 0, 30},
                 {"Right", 40, 30},    {"PageDown", 40, 300}, {"F1", 40, 300},      {"Home", 40, 300},
                 {"", 40, 300},        {"Up", 40, 270},       {"PageUp", 40, 0},    {"Left", 0, 0},
                 {"PageDown", 0, 270}, {"PageDown", 0, 540},  {"PageDown", 0, 810}, {"PageDown", 0, 820},
                 {"Down", 0, 820}};
  for (const auto& press : presses) {
    preview.KeyDown(press.key);
    EXPECT_EQ(window.shown.ScrollArea.left, -press.left) << press.key;
    EXPECT_EQ(window.shown.ScrollArea.top, -press.top) << press.key;
  }
  for (int i = 0; i < 20; ++i) preview.KeyDown("Right");
  EXPECT_EQ(window.shown.HScroll.value, 400);
}

TEST_F(PrintPreviewTest, ABarThatIsNotNeededTakesThePageBackAndDoesNotMove) {
  Open();
  preview.VScroll_Change(500);
  preview.SetInnerSize(900, 1200);
  door.Enter({.kind = EventKind::Resize, .target = "PrintPreview"});
  EXPECT_FALSE(window.shown.VScroll.visible);
  EXPECT_EQ(window.shown.ScrollArea.top, 0);
  preview.KeyDown("PageDown");
  preview.VScroll_Change(5);
  EXPECT_EQ(window.shown.ScrollArea.top, 0);
}

}  // namespace
}  // namespace quorvane
