#pragma once

#include <QRect>
#include <QSize>
#include <vector>

#include "forms/form_scaling.h"

namespace quorvane {

// Turns a form's design into pixels of its present size. Every figure comes from the design, never from an
// earlier size.
class FormScaler {
 public:
  FormScaler(int designWidth, int designHeight)
      : designWidth_(designWidth), designHeight_(designHeight), size_(designWidth, designHeight) {}

  void SetDesignWidth(int width) { designWidth_ = width; }
  void SetSize(QSize size) { size_ = size; }
  // The letters are those of the form in which this one stands, so that panels whose sizes differ by a
  // rounded pixel look alike. The other scaler lives as long as this one.
  void TakeFontsOf(const FormScaler& other) { fontsOf_ = &other; }
  int DesignWidth() const { return designWidth_; }
  int DesignHeight() const { return designHeight_; }

  QRect Scaled(const clsRect& design) const;     // in the form
  double FontPixels(double designPoints) const;  // a point being 96/72 of a designed pixel

 private:
  int designWidth_;
  int designHeight_;
  QSize size_;
  const FormScaler* fontsOf_ = nullptr;
};

inline constexpr int kLeastMarkRow = 16;  // holds a line of the smallest text

// Shares the room among that many marks: one under the other while they fit, then in columns side by side. A
// mark of two lines is twice as high where there is room.
std::vector<clsRect> StackCells(int count, const clsRect& room, int lines = 1);

// Where a pop-up of that size stands next to the mark: on its right, or on its left where the form ends.
clsRect BesideMark(const clsRect& mark, int width, int height, int formWidth, int formHeight);

}  // namespace quorvane
