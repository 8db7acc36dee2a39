#pragma once

#include <QRect>
#include <QSize>
#include <vector>

#include "common/form_scaling.h"

namespace quorvane {

// Turns a form's design into pixels of its present size. Every figure comes from the design, never from an
// earlier size.
class FormScaler {
 public:
  FormScaler(int designWidth, int designHeight)
      : designWidth_(designWidth), designHeight_(designHeight), size_(designWidth, designHeight) {}

  void SetDesignWidth(int width) { designWidth_ = width; }
  void SetSize(QSize size) { size_ = size; }
  int DesignWidth() const { return designWidth_; }
  int DesignHeight() const { return designHeight_; }

  QRect Scaled(const clsRect& design) const;     // in the form
  double FontPixels(double designPoints) const;  // a point being 96/72 of a designed pixel

 private:
  int designWidth_;
  int designHeight_;
  QSize size_;
};

// Shares the room among that many marks: one under the other while they fit, then in columns side by side.
std::vector<clsRect> StackCells(int count, const clsRect& room);

// Where a pop-up of that size stands next to the mark: on its right, or on its left where the form ends.
clsRect BesideMark(const clsRect& mark, int width, int height, int formWidth, int formHeight);

}  // namespace quorvane
