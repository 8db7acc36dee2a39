#include "forms/form_scaling.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(FormScaling, TheDesignedSizeGivesTheDesignAndNeighboursTouchAtEverySize) {
  const clsRect left{10, 20, 53, 44}, right{63, 20, 53, 44};
  EXPECT_EQ(ScaleRect(left, 1280, 800, 1280, 800), left);
  for (int width = 300; width < 3000; width += 7) {
    const clsRect a = ScaleRect(left, 1280, 800, width, 900);
    ASSERT_EQ(a.left + a.width, ScaleRect(right, 1280, 800, width, 900).left) << width;
  }
}

TEST(FormScaling, FontsFollowTheSmallerFactor) {
  EXPECT_DOUBLE_EQ(ScaleFont(10.0, 1280, 800, 2560, 800), 10.0);
  EXPECT_DOUBLE_EQ(ScaleFont(10.0, 1280, 800, 2560, 1600), 20.0);
  EXPECT_DOUBLE_EQ(ScaleFont(10.0, 1280, 800, 0, 0), 1.0);
}

}  // namespace
}  // namespace quorvane
