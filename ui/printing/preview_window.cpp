#include "ui/printing/preview_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr double kPixelsPerInch = 96;
constexpr QSize kFirstSize{830, 760};
constexpr QSize kLeastPreview{51, 80};

// Moves by a tenth and by nine tenths of what is seen, which the scroll area tells it as its page.
class PageBar : public QScrollBar {
 protected:
  void sliderChange(SliderChange change) override {
    QScrollBar::sliderChange(change);
    if (change != SliderStepsChange || pageStep() == page_) return;
    const int seen = pageStep();
    page_ = std::max(1, qRound(0.9 * seen));
    setPageStep(page_);
    setSingleStep(std::max(1, qRound(0.1 * seen)));
  }

 private:
  int page_ = 0;
};

void ToCorner(const QScrollArea& area) {
  area.horizontalScrollBar()->setValue(0);
  area.verticalScrollBar()->setValue(0);
}

// Goes back to the page's upper left corner with each new size.
class PageView : public QScrollArea {
 public:
  explicit PageView(QWidget* parent) : QScrollArea(parent) {
    setHorizontalScrollBar(new PageBar);
    setVerticalScrollBar(new PageBar);
    setFrameShape(QFrame::NoFrame);
    setBackgroundRole(QPalette::Dark);
  }

 protected:
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

PreviewForm::PreviewForm(Platform& platform)
    : door_(platform),
      preview_(door_.AllForms(),
               [this](float scale) {
                 page_->resize(QSize(qRound(full_.width() * scale), qRound(full_.height() * scale)));
                 ToCorner(*view_);
               }),
      menu_(new MenuView(preview_, door_, this)),
      view_(new PageView(this)),
      page_(new QLabel) {
  place_ = new WindowPlace(*this, door_.System().Settings(), preview_.Name(), kLeastPreview);
  setMenuBar(menu_);
  setCentralWidget(view_);
  page_->setScaledContents(true);
  view_->setWidget(page_);
  door_.SetAfterEvent([this] { Follow(); });
}

PreviewForm::~PreviewForm() {
  door_.SetAfterEvent({});
}

void PreviewForm::Open(const RaceRecord& race, const Imprint& imprint, const QPageSize& paper) {
  full_ = paper.size(QPageSize::Inch) * kPixelsPerInch;
  if (!std::exchange(placed_, true)) place_->Restore(kFirstSize);
  door_.Post([this, race, imprint] {
    Draw(race, imprint);
    preview_.Open();
  });
  activateWindow();
}

// As many dots as the screen has for the page at full size.
void PreviewForm::Draw(const RaceRecord& race, const Imprint& imprint) {
  QImage picture((full_ * devicePixelRatioF()).toSize(), QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  DrawReport(painter, full_, QRectF(picture.rect()), race, imprint);
  painter.end();
  page_->setPixmap(QPixmap::fromImage(picture));
}

void PreviewForm::Follow() {
  setWindowTitle(ToQString(preview_.Caption()));
  menu_->Apply();
  if (preview_.Visible() != isVisible()) setVisible(preview_.Visible());
}

void PreviewForm::closeEvent(QCloseEvent* event) {
  event->ignore();
  door_.Enter({.kind = EventKind::Close, .target = preview_.Name()});
}

}  // namespace quorvane
