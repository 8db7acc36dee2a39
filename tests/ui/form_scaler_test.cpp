#include "ui/widgets/form_scaler.h"

#include <gtest/gtest.h>

#include "tests/ui/ui_fixture.h"

namespace quorvane {
namespace {

bool Inside(const clsRect& inner, const clsRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top &&
         inner.left + inner.width <= outer.left + outer.width &&
         inner.top + inner.height <= outer.top + outer.height;
}

bool Overlap(const clsRect& a, const clsRect& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

TEST(StackCellsTest, EveryMarkOfAColumnKeepsAPlaceOfItsOwn) {
  for (const clsRect room : {clsRect{100, 76, 57, 50}, clsRect{100, 76, 57, 102}, clsRect{0, 0, 20, 10}}) {
    for (int count = 0; count <= 40; ++count) {
      const std::vector<clsRect> cells = StackCells(count, room);
      ASSERT_EQ(cells.size(), static_cast<std::size_t>(count));
      for (std::size_t i = 0; i < cells.size(); ++i) {
        EXPECT_TRUE(Inside(cells[i], room)) << count << " marks, mark " << i;
        for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(Overlap(cells[i], cells[j])) << count << " marks";
      }
    }
  }
}

TEST(BesideMarkTest, PopUpStaysOnTheFormAndOffTheMark) {
  for (int left = 0; left <= 943; left += 41) {
    const clsRect mark{left, 76, 57, 22};
    const clsRect popUp = BesideMark(mark, 120, 28, 1000, 184);
    EXPECT_TRUE(Inside(popUp, {0, 0, 1000, 184}));
    EXPECT_FALSE(Overlap(popUp, mark));
  }
}

class ScaledFormTest : public UiTest {};

TEST_F(ScaledFormTest, SizeAfterManyResizesIsThatOfTheDesign) {
  Control& frame = form.Make(ControlKind::Frame, "fra");
  form.Make(ControlKind::Button, "cmd", &frame);
  FormDesign design;
  design.width = 400;
  design.height = 200;
  design.places = {{"fra", {37, 21, 301, 133}}, {"cmd", {53, 41, 101, 33}, 13}};
  FormView view(form, design, door, nullptr);
  view.resize(400, 200);
  view.show();
  Settle();
  const auto look = [&] {
    const QWidget* button = view.FindWidget("cmd");
    return std::tuple(view.FindWidget("fra")->geometry(), button->geometry(), button->font().pixelSize());
  };
  const auto before = look();
  EXPECT_EQ(std::get<1>(before), QRect(16, 20, 101, 33));
  for (const QSize size :
       {QSize(33, 17), QSize(1999, 777), QSize(401, 203), QSize(800, 400), QSize(400, 200)}) {
    view.resize(size);
    Settle();
  }
  EXPECT_EQ(look(), before);
  view.resize(800, 400);
  Settle();
  EXPECT_EQ(std::get<2>(look()), 35);  // 13 points, twice as large
}

}  // namespace
}  // namespace quorvane
