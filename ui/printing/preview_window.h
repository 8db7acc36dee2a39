#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QScrollArea>
#include <functional>

#include "print/print_preview.h"
#include "ui/printing/paper.h"
#include "ui/widgets/menu_view.h"
#include "ui/window_place.h"

namespace quorvane {

// The window of the print preview: a report's pages, one below the other. By a door of its own nothing in it
// touches a race or waits for one. Opening it draws the report; scaling and scrolling only copy that.
class PreviewWindow : public QMainWindow {
 public:
  // `print` puts the report that is shown on paper.
  using Print = std::function<void(const RaceRecord& race, const Imprint& imprint)>;
  PreviewWindow(Platform& platform, Print print);
  ~PreviewWindow() override { door_.SetAfterEvent({}); }

  // Shows the report as that paper would carry it. A preview that is open starts anew.
  void Open(const RaceRecord& race, const Imprint& imprint, const QPageSize& paper);

  PrintPreview& Of() { return preview_; }
  MenuView& Menu() { return *menu_; }
  QScrollArea& View() { return *view_; }
  Report Shown() const { return imprint_.report; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Follow();

  Door door_;
  PrintPreview preview_;
  MenuView* menu_;
  QScrollArea* view_;
  QLabel* page_;
  WindowPlace* place_;
  QSizeF full_;  // the pages at full size, in pixels of the window
  RaceRecord race_;
  Imprint imprint_;
  bool placed_ = false;
};

}  // namespace quorvane
