#include "ui/printing/preview_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <cmath>

#include "print/heat_report.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr double kPixelsPerInch = 96;
constexpr QSize kFirstSize{830, 760};

QRect ToQRect(const clsRect& rect) {
  return {rect.left, rect.top, rect.width, rect.height};
}

std::string KeyName(int key) {
  switch (key) {
    case Qt::Key_Left:
      return "Left";
    case Qt::Key_Right:
      return "Right";
    case Qt::Key_Up:
      return "Up";
    case Qt::Key_Down:
      return "Down";
    case Qt::Key_PageUp:
      return "PageUp";
    case Qt::Key_PageDown:
      return "PageDown";
    default:
      return {};
  }
}

}  // namespace

// The scaled page. It lies in the viewport, which shows a part of it.
class PreviewForm::Page : public QWidget {
 public:
  Page(PreviewForm& form, QWidget* viewport) : QWidget(viewport), form_(form) {
    setAttribute(Qt::WA_OpaquePaintEvent);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    form_.door_.Contain([this] { form_.preview_.ScrollArea_Paint(); });
    QPainter painter(this);
    painter.setClipRect(event->rect());
    painter.drawPixmap(rect(), form_.stretched_);
  }

 private:
  PreviewForm& form_;
};

PreviewForm::PreviewForm(Platform& platform)
    : door_(platform),
      preview_(door_.AllForms(), *this, [this](Surface& surface) { Draw(surface); }),
      menu_(preview_, door_, this),
      viewport_(this),
      page_(new Page(*this, &viewport_)),
      across_(Qt::Horizontal, this),
      down_(Qt::Vertical, this) {
  setFocusPolicy(Qt::StrongFocus);
  const QSize least(3 * kScrollBarThickness, 3 * kScrollBarThickness + menu_.sizeHint().height());
  place_ = new WindowPlace(*this, door_.System().Settings(), preview_.Name(), least);
  auto* layout = new QVBoxLayout(this);
  layout->setMenuBar(&menu_);
  viewport_.setAutoFillBackground(true);
  viewport_.setBackgroundRole(QPalette::Dark);
  for (QScrollBar* bar : {&across_, &down_}) bar->setFocusPolicy(Qt::NoFocus);
  QObject::connect(&across_, &QScrollBar::valueChanged, this,
                   [this](int value) { door_.Contain([&] { preview_.HScroll_Change(value); }); });
  QObject::connect(&down_, &QScrollBar::valueChanged, this,
                   [this](int value) { door_.Contain([&] { preview_.VScroll_Change(value); }); });
  door_.SetAfterEvent([this] { Follow(); });
}

PreviewForm::~PreviewForm() {
  door_.SetAfterEvent({});
}

void PreviewForm::Open(const RaceRecord& race, const Imprint& imprint, Paper paper) {
  race_ = race;
  imprint_ = imprint;
  paper_ = paper;
  if (!placed_) {
    placed_ = true;
    place_->Restore(kFirstSize);
  }
  TellInnerSize();
  door_.Post([this] { preview_.Open(); });
  activateWindow();
}

void PreviewForm::Follow() {
  setWindowTitle(ToQString(preview_.Caption()));
  menu_.Apply();
  if (preview_.Visible() != isVisible()) setVisible(preview_.Visible());
}

void PreviewForm::Draw(Surface& surface) const {
  frmPrint(race_, imprint_.program, imprint_.printed).PrintDocument(surface);
}

PrinterPage PreviewForm::Printer() {
  const QSizeF page = PaperInches(paper_) * kPixelsPerInch;
  return {page.width(), page.height(), 0, 0};
}

// As many dots as the screen has for the page at full size.
Surface& PreviewForm::ClearHiddenPicture(const PrinterPage& page) {
  surface_.reset();
  drawing_.reset();
  stretched_ = QPixmap();
  const double dots = devicePixelRatioF();
  picture_ = QImage(QSize(static_cast<int>(std::lround(page.width * dots)),
                          static_cast<int>(std::lround(page.height * dots))),
                    QImage::Format_RGB32);
  picture_.fill(Qt::white);
  drawing_.emplace(&picture_);
  surface_.emplace(*drawing_, Box{page.left, page.top, page.width, page.height}, QRectF(picture_.rect()));
  return *surface_;
}

// Scaled once for each size; scrolling and painting only copy it.
void PreviewForm::StretchPicture(const clsRect& scrollArea) {
  const double dots = devicePixelRatioF();
  const QSize size = QSize(scrollArea.width, scrollArea.height) * dots;
  if (picture_.isNull() || stretched_.size() == size) return;
  drawing_.reset();
  stretched_ = QPixmap::fromImage(picture_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  page_->update();
}

void PreviewForm::LayoutChanged(const PreviewLayout& layout) {
  const int top = menu_.height();
  viewport_.setGeometry(ToQRect(layout.Viewport).translated(0, top));
  page_->setGeometry(ToQRect(layout.ScrollArea));
  ShowBar(across_, layout.HScroll);
  ShowBar(down_, layout.VScroll);
}

void PreviewForm::ShowBar(QScrollBar& bar, const ScrollBar& as) {
  const QSignalBlocker quiet(&bar);
  bar.setGeometry(ToQRect(as.rectangle).translated(0, menu_.height()));
  bar.setRange(0, as.max);
  bar.setSingleStep(as.small);
  bar.setPageStep(as.large);
  bar.setValue(as.value);
  bar.setVisible(as.visible);
}

void PreviewForm::TellInnerSize() {
  preview_.SetInnerSize(width(), height() - menu_.height());
}

void PreviewForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  TellInnerSize();
  Event resize;
  resize.kind = EventKind::Resize;
  resize.target = preview_.Name();
  door_.Enter(resize);
}

void PreviewForm::keyPressEvent(QKeyEvent* event) {
  const std::string key = KeyName(event->key());
  if (key.empty()) return QWidget::keyPressEvent(event);
  door_.Contain([&] { preview_.KeyDown(key); });
}

void PreviewForm::wheelEvent(QWheelEvent* event) {
  QCoreApplication::sendEvent(event->modifiers().testFlag(Qt::ShiftModifier) ? &across_ : &down_, event);
}

void PreviewForm::closeEvent(QCloseEvent* event) {
  event->ignore();
  Event close;
  close.kind = EventKind::Close;
  close.target = preview_.Name();
  door_.Enter(close);
}

}  // namespace quorvane
