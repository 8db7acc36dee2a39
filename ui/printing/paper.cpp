#include "ui/printing/paper.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "files/output_guard.h"
#include "print/heat_report.h"
#include "print/protest_sheet.h"
#include "print/surface.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr double kGridWidth = 10000;  // steps across the page

// A page on whatever a QPainter paints on: printer, PDF file or picture. It fills the target, which is in the
// painter's coordinates. Everything is laid out on one fine grid before it is brought to the target's size,
// so that a report has the same lines and breaks on each of them.
class QtSurface : public Surface {
 public:
  // The painter is left transformed.
  QtSurface(QPainter& painter, const QSizeF& page, const QRectF& target)
      : painter_(painter), page_{0, 0, page.width(), page.height()}, scale_(kGridWidth / page.width()) {
    painter_.translate(target.topLeft());
    painter_.scale(target.width() / kGridWidth, target.height() / (page.height() * scale_));
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  }

  Box Page() const override { return page_; }
  double TextWidth(std::string_view text, Font font) const override {
    return QFontMetricsF(OnGrid(font)).horizontalAdvance(QString::fromUtf8(text)) / scale_;
  }
  double LineHeight(Font font) const override { return QFontMetricsF(OnGrid(font)).height() / scale_; }

  void Text(const Box& box, std::string_view text, Font font, Align align) override {
    constexpr std::array kSides = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};  // as Align has them
    const auto side = kSides[static_cast<std::size_t>(align)];
    painter_.setFont(OnGrid(font));
    painter_.setPen(Qt::black);
    painter_.drawText(OnGrid(box), side | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                      QString::fromUtf8(text));
  }

  void Line(double fromX, double fromY, double toX, double toY, double thickness) override {
    painter_.setPen(QPen(Qt::black, thickness * scale_, Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(QPointF(fromX, fromY) * scale_, QPointF(toX, toY) * scale_);
  }

  void Rectangle(const Box& box, std::optional<Color> fill, double outline) override {
    painter_.setPen(outline > 0 ? QPen(Qt::black, outline * scale_, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin)
                                : QPen(Qt::NoPen));
    painter_.setBrush(fill ? QBrush(ToQColor(*fill)) : QBrush(Qt::NoBrush));
    painter_.drawRect(OnGrid(box));
  }

 private:
  // Letters must not be fitted to the dots of one device, or they would be wider there than elsewhere.
  QFont OnGrid(Font font) const {
    QFont letters = FontOfPixels(font.size * scale_, font.bold);
    // The same letters with and without a screen.
    letters.setFamilies(
        {QStringLiteral("DejaVu Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
    letters.setHintingPreference(QFont::PreferNoHinting);
    return letters;
  }
  QRectF OnGrid(const Box& box) const {
    return {QPointF(box.left, box.top) * scale_, QSizeF(box.width, box.height) * scale_};
  }

  QPainter& painter_;
  const Box page_;
  const double scale_;  // steps of the grid for one page unit
};

}  // namespace

std::optional<QPageSize> PaperNamed(const QString& name) {
  for (const QPageSize::PageSizeId paper : kPapers) {
    if (name.compare(QPageSize::key(paper), Qt::CaseInsensitive) == 0) return QPageSize(paper);
  }
  return std::nullopt;
}

int PagesOf(const QSizeF& page, const RaceRecord& race, const Imprint& imprint) {
  if (imprint.report == Report::Heat) return 1;
  return frmProtest::Pages({0, 0, page.width(), page.height()}, race);
}

void DrawReport(QPainter& painter, const QSizeF& page, const QRectF& target, const RaceRecord& race,
                const Imprint& imprint, int number) {
  painter.save();
  QtSurface surface(painter, page, target);
  if (imprint.report == Report::Heat) {
    frmPrint::PrintDocument(surface, race, imprint.program, imprint.printed);
  } else {
    frmProtest::PrintPage(surface, race, number, imprint.program, imprint.printed);
  }
  painter.restore();
}

bool PutOnPaper(QPagedPaintDevice& device, const QPageSize& paper, const std::vector<RaceRecord>& races,
                const Imprint& imprint) {
  device.setPageLayout(
      QPageLayout(paper, QPageLayout::Portrait, QMarginsF(), QPageLayout::Point, QMarginsF()));
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const QSizeF sheet = paper.size(QPageSize::Inch) * device.logicalDpiX();
  for (const RaceRecord& race : races) {
    const int pages = PagesOf(sheet, race, imprint);
    for (int page = 1; page <= pages; ++page) {
      const bool first = &race == &races.front() && page == 1;
      if (!first && !device.newPage()) return false;
      DrawReport(painter, sheet, QRectF(QPointF(), sheet), race, imprint, page);
    }
  }
  return painter.end();
}

std::string WritePdf(const std::string& path, const QPageSize& paper, const std::vector<RaceRecord>& races,
                     const Imprint& imprint, const std::vector<std::string>& inUse) {
  if (const auto reason = WhyNotWrite(path, FileKind::Other, inUse)) return *reason;
  QSaveFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::WriteOnly)) return file.errorString().toStdString();
  {
    QPdfWriter writer(&file);
    writer.setResolution(kPdfDotsPerInch);
    writer.setCreator(ToQString(imprint.program));
    writer.setTitle(races.empty() ? QString() : ToQString(races.front().eventName));
    if (!PutOnPaper(writer, paper, races, imprint)) {
      file.cancelWriting();
      return "the pages cannot be written";
    }
  }
  return file.commit() ? "" : file.errorString().toStdString();
}

}  // namespace quorvane
