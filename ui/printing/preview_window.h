#pragma once

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QWidget>
#include <optional>

#include "print/print_preview.h"
#include "ui/printing/paper.h"
#include "ui/printing/qt_surface.h"
#include "ui/widgets/menu_view.h"
#include "ui/window_place.h"

namespace quorvane {

// The window of the print preview. It has a door of its own: nothing that happens in it can touch a race or
// be held up by one.
class PreviewForm : public QWidget, private PreviewWindow {
 public:
  explicit PreviewForm(Platform& platform);
  ~PreviewForm() override;

  // Shows the heat report as that paper would carry it. A preview that is open starts anew.
  void Open(const RaceRecord& race, const Imprint& imprint, Paper paper);

  PrintPreview& Of() { return preview_; }
  MenuView& Menu() { return menu_; }
  QScrollBar& Across() { return across_; }
  QScrollBar& Down() { return down_; }
  const QImage& HiddenPicture() const { return picture_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  class Page;

  PrinterPage Printer() override;
  Surface& ClearHiddenPicture(const PrinterPage& page) override;
  void StretchPicture(const clsRect& scrollArea) override;
  void LayoutChanged(const PreviewLayout& layout) override;

  void Draw(Surface& surface) const;
  void Follow();
  void ShowBar(QScrollBar& bar, const ScrollBar& as);
  void TellInnerSize();

  Door door_;
  RaceRecord race_;
  Imprint imprint_;
  Paper paper_ = Paper::A4;
  QImage picture_;
  QPixmap stretched_;  // of picture_, in the size in which it was painted last
  std::optional<QPainter> drawing_;
  std::optional<QtSurface> surface_;
  PrintPreview preview_;
  MenuView menu_;
  QWidget viewport_;
  Page* page_;
  QScrollBar across_;
  QScrollBar down_;
  WindowPlace* place_;
  bool placed_ = false;
};

}  // namespace quorvane
