#include "ui/printing/preview_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "ui/designs.h"
#include "ui/words.h"

namespace quorvane {
namespace {

constexpr double kPixelsPerInch = 96;
constexpr double kBetweenPages = 12;
constexpr QSize kFirstSize{830, 760};
constexpr QSize kLeastPreview{51, 80};

// To the page's upper left corner, from where the bars move by a tenth and by nine tenths of what is seen.
void ToCorner(const QScrollArea& area) {
  const auto fit = [](QScrollBar& bar, int seen) {
    bar.setSingleStep(std::max(1, qRound(0.1 * seen)));
    bar.setPageStep(std::max(1, qRound(0.9 * seen)));
    bar.setValue(0);
  };
  fit(*area.horizontalScrollBar(), area.viewport()->width());
  fit(*area.verticalScrollBar(), area.viewport()->height());
}

// The area sets its bars' steps anew with each size of its own and with each picture of the page.
class PageView : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;

 protected:
  bool event(QEvent* event) override {
    const bool taken = QScrollArea::event(event);
    if (event->type() == QEvent::LayoutRequest) ToCorner(*this);
    return taken;
  }
  void resizeEvent(QResizeEvent* event) override {
    QScrollArea::resizeEvent(event);
    ToCorner(*this);
  }
  void wheelEvent(QWheelEvent* event) override {
    const bool across = event->modifiers().testFlag(Qt::ShiftModifier);
    QCoreApplication::sendEvent(across ? horizontalScrollBar() : verticalScrollBar(), event);
  }
};

}  // namespace

PreviewWindow::PreviewWindow(Platform& platform, Print print)
    : door_(platform),
      preview_(
          door_.AllForms(),
          [this](float scale) {
            page_->resize(QSize(qRound(full_.width() * scale), qRound(full_.height() * scale)));
            ToCorner(*view_);
          },
          [this, print = std::move(print)] { print(race_, imprint_); }),
      menu_(new MenuView(preview_, door_, this, PreviewTips())),
      view_(new PageView(this)),
      page_(new QLabel) {
  place_ = new WindowPlace(*this, door_.System().Settings(), preview_.Name(), kLeastPreview);
  setMenuBar(menu_);
  menu_->SetShortcut(preview_.mnuFilePrint, QStringLiteral("Ctrl+P"));
  QObject::connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  setCentralWidget(view_);
  page_->setScaledContents(true);
  view_->setFrameShape(QFrame::NoFrame);
  view_->setBackgroundRole(QPalette::Dark);
  view_->setWidget(page_);
  door_.SetAfterEvent([this] { Follow(); });
}

void PreviewWindow::Open(const RaceRecord& race, const Imprint& imprint, const QPageSize& paper) {
  if (!std::exchange(placed_, true)) place_->Restore(kFirstSize);
  door_.Post([this, race, imprint, page = paper.size(QPageSize::Inch) * kPixelsPerInch] {
    race_ = race;
    imprint_ = imprint;
    preview_.SetCaption(imprint.report == Report::Heat ? "Print Preview" : "Protest Sheet");
    const int pages = PagesOf(page, race, imprint);
    full_ = QSizeF(page.width(), page.height() * pages + kBetweenPages * (pages - 1));
    // As many dots as the screen has for the pages at full size.
    const double dots = devicePixelRatioF();
    QImage picture((full_ * dots).toSize(), QImage::Format_RGB32);
    picture.fill(palette().color(QPalette::Dark));
    QPainter painter(&picture);
    for (int number = 1; number <= pages; ++number) {
      const QPointF corner(0, (page.height() + kBetweenPages) * (number - 1) * dots);
      const QRectF sheet(corner, QSizeF((page * dots).toSize()));
      painter.fillRect(sheet, Qt::white);
      DrawReport(painter, page, sheet, race, imprint, number);
    }
    painter.end();
    page_->setPixmap(QPixmap::fromImage(picture));
    preview_.Open();
  });
  activateWindow();
}

void PreviewWindow::Follow() {
  setWindowTitle(Words::Of(preview_.Caption()));
  page_->setAccessibleName(windowTitle());
  menu_->Apply();
  if (preview_.Visible() != isVisible()) setVisible(preview_.Visible());
}

void PreviewWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  door_.Enter({.kind = EventKind::Close, .target = preview_.Name()});
}

}  // namespace quorvane
