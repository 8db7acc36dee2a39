#include "ui/widgets/form_view.h"

#include "tests/ui/ui_fixture.h"

namespace quorvane {
namespace {

TEST(MarkPlacesTest, EveryMarkOfAColumnKeepsAPlaceOfItsOwn) {
  for (const QRect room : {QRect(100, 76, 57, 50), QRect(100, 76, 57, 102), QRect(0, 0, 20, 10)}) {
    for (int count = 0; count <= 40; ++count) {
      const std::vector<QRect> cells = StackCells(count, room);
      ASSERT_EQ(cells.size(), static_cast<std::size_t>(count));
      QRegion taken;
      for (const QRect& cell : cells) {
        EXPECT_TRUE(cell.isEmpty() || (room.contains(cell) && !taken.intersects(cell))) << count << " marks";
        taken += cell;
      }
    }
  }
  EXPECT_EQ(StackCells(2, {100, 76, 57, 102}, 2),
            std::vector({QRect(100, 76, 57, 32), QRect(100, 108, 57, 32)}));
}

TEST(MarkPlacesTest, PopUpStaysOnTheFormAndOffTheMark) {
  for (int left = 0; left <= 943; left += 41) {
    const QRect mark(left, 76, 57, 22);
    const QRect popUp = BesideMark(mark, {120, 28}, {1000, 184});
    EXPECT_TRUE(QRect(0, 0, 1000, 184).contains(popUp));
    EXPECT_FALSE(popUp.intersects(mark));
  }
}

class ScaledFormTest : public UiTest {};

TEST_F(ScaledFormTest, SizeAfterManyResizesIsThatOfTheDesign) {
  Control& frame = form.Make(ControlKind::Frame, "fra");
  form.Make(ControlKind::Button, "cmd", &frame);
  FormDesign design{400, 200, {{"fra", {37, 21, 301, 133}}, {"cmd", {53, 41, 101, 33}, 13}}};
  FormView view(form, design, door, nullptr);
  view.show();
  const auto look = [&](QSize size) {
    view.resize(size);
    Settle();
    const QWidget* button = view.FindWidget("cmd");
    return std::tuple(view.FindWidget("fra")->geometry(), button->geometry(), button->font().pixelSize());
  };
  const std::tuple designed(QRect(37, 21, 301, 133), QRect(16, 20, 101, 33), 17);
  for (const QSize size : {QSize(33, 17), QSize(1999, 777), QSize(401, 203)}) {
    look(size);
    EXPECT_EQ(look({400, 200}), designed);
  }
  EXPECT_EQ(std::get<2>(look({800, 400})), 35);  // 13 points, twice as large
}

}  // namespace
}  // namespace quorvane
