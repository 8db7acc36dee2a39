#include "ui/widgets/form_scaler.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr int kRow = 22;  // height of a mark that has room

}  // namespace

QRect FormScaler::Scaled(const clsRect& design) const {
  const clsRect r = ScaleRect(design, designWidth_, designHeight_, size_.width(), size_.height());
  return {r.left, r.top, r.width, r.height};
}

double FormScaler::FontPixels(double designPoints) const {
  if (fontsOf_ != nullptr) return fontsOf_->FontPixels(designPoints);
  return ScaleFont(designPoints, designWidth_, designHeight_, size_.width(), size_.height()) * 96.0 / 72.0;
}

std::vector<clsRect> StackCells(int count, const clsRect& room, int lines) {
  std::vector<clsRect> cells;
  if (count <= 0) return cells;
  const int mostRows = std::max(1, room.height / kLeastMarkRow);
  const int columns = (count + mostRows - 1) / mostRows;
  const int rows = (count + columns - 1) / columns;
  const int height = std::min(lines > 1 ? lines * kLeastMarkRow : kRow, room.height / rows);
  for (int i = 0; i < count; ++i) {
    const int column = i / rows;
    const int left = room.left + room.width * column / columns;
    const int right = room.left + room.width * (column + 1) / columns;
    cells.push_back({left, room.top + (i % rows) * height, right - left, height});
  }
  return cells;
}

clsRect BesideMark(const clsRect& mark, int width, int height, int formWidth, int formHeight) {
  clsRect popUp{mark.left + mark.width + 2, mark.top + (mark.height - height) / 2, width, height};
  if (popUp.left + width > formWidth) popUp.left = mark.left - width - 2;
  popUp.left = std::max(0, popUp.left);
  popUp.top = std::clamp(popUp.top, 0, std::max(0, formHeight - height));
  return popUp;
}

}  // namespace quorvane
