#pragma once

#include <QFont>
#include <QPainter>

#include "print/surface.h"

namespace quorvane {

// A page on whatever a QPainter paints on: printer, PDF file or picture. The page fills the target, which is
// in the painter's coordinates. Everything is laid out on one fine grid before it is brought to the target's
// size, so that a report has the same lines and breaks on each of them.
class QtSurface : public Surface {
 public:
  // The painter must outlive the surface and is left transformed. The page must have a size.
  QtSurface(QPainter& painter, const Box& page, const QRectF& target);

  Box Page() const override { return page_; }
  double TextWidth(std::string_view text, Font font) const override;
  double LineHeight(Font font) const override;
  void Text(const Box& box, std::string_view text, Font font, Align align) override;
  void Line(double fromX, double fromY, double toX, double toY, double thickness) override;
  void Rectangle(const Box& box, std::optional<Color> fill, double outline) override;

 private:
  QFont OnGrid(Font font) const;
  QRectF OnGrid(const Box& box) const;
  QPointF OnGrid(double x, double y) const;

  QPainter& painter_;
  const Box page_;
  const double scale_;  // steps of the grid for one page unit
};

}  // namespace quorvane
