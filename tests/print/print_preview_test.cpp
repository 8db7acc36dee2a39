#include "print/print_preview.h"

#include <gtest/gtest.h>

#include "forms/door.h"
#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

TEST(PrintPreview, OpensAtFullSizeScalesByItsMenuAndCloses) {
  VirtualPlatform platform;
  Door door(platform);
  std::vector<float> shown;
  PrintPreview preview(door.AllForms(), [&](float scale) { shown.push_back(scale); });
  const auto checked = [&] {
    std::string scales;
    for (int i = 1; i <= 3; ++i) scales += preview.mnuScaleSet[i].Checked() ? std::to_string(i) : "";
    return scales;
  };
  for (int time = 0; time < 2; ++time) {
    preview.Open();
    EXPECT_TRUE(preview.Visible());
    EXPECT_EQ(checked(), "1");
    for (const std::string scale : {"1", "3", "2"}) {
      door.Enter({EventKind::Click, "PrintPreview.mnuScaleSet(" + scale + ")"});
      EXPECT_EQ(checked(), scale);
    }
    for (const int scale : {0, 4}) EXPECT_THROW(preview.SetScale(scale), SubscriptError);
    EXPECT_EQ(checked(), "2");
    EXPECT_EQ(shown, (std::vector<float>{1, 1, 0.375, 0.75}));
    shown.clear();
    door.Enter({EventKind::Click, "PrintPreview.mnuFileClose"});
    EXPECT_FALSE(preview.Visible());
  }
}

}  // namespace
}  // namespace quorvane
