#include "common/form_scaling.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(FormScaling, NeighboursThatTouchInTheDesignTouchAtEverySize) {
  const clsRect left{10, 20, 53, 44};
  const clsRect right{63, 20, 53, 44};
  for (int width = 300; width < 3000; width += 7) {
    const clsRect a = ScaleRect(left, 1280, 800, width, 900);
    const clsRect b = ScaleRect(right, 1280, 800, width, 900);
    ASSERT_EQ(a.left + a.width, b.left) << width;
  }
}

TEST(FormScaling, TheDesignedSizeGivesTheDesign) {
  const clsRect design{7, 9, 101, 33};
  EXPECT_EQ(ScaleRect(design, 1280, 800, 1280, 800), design);
  EXPECT_DOUBLE_EQ(ScaleFont(12.0, 1280, 800, 1280, 800), 12.0);
}

TEST(FormScaling, FontsFollowTheSmallerFactor) {
  EXPECT_DOUBLE_EQ(ScaleFont(10.0, 1280, 800, 2560, 800), 10.0);
  EXPECT_DOUBLE_EQ(ScaleFont(10.0, 1280, 800, 2560, 1600), 20.0);
  EXPECT_DOUBLE_EQ(ScaleFont(10.0, 1280, 800, 0, 0), 1.0);
}

}  // namespace
}  // namespace quorvane
