#include "ui/printing/paper.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "files/output_guard.h"
#include "print/heat_report.h"
#include "print/surface.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr double kGridWidth = 10000;  // steps across the page

QString ToText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

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
    return QFontMetricsF(OnGrid(font)).horizontalAdvance(ToText(text)) / scale_;
  }
  double LineHeight(Font font) const override { return QFontMetricsF(OnGrid(font)).height() / scale_; }

  void Text(const Box& box, std::string_view text, Font font, Align align) override {
    const QFont letters = OnGrid(font);
    const QFontMetricsF metrics(letters);
    const QString words = ToText(text);
    const QRectF room = OnGrid(box);
    const double spare = room.width() - metrics.horizontalAdvance(words);
    const double shift = align == Align::Left ? 0 : align == Align::Right ? spare : spare / 2;
    const double baseline = room.top() + (room.height() - metrics.height()) / 2 + metrics.ascent();
    painter_.setFont(letters);
    painter_.setPen(Qt::black);
    painter_.drawText(QPointF(room.left() + shift, baseline), words);
  }

  void Line(double fromX, double fromY, double toX, double toY, double thickness) override {
    painter_.setPen(QPen(Qt::black, thickness * scale_, Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(QPointF(fromX, fromY) * scale_, QPointF(toX, toY) * scale_);
  }

  void Rectangle(const Box& box, std::optional<Color> fill, double outline) override {
    const bool lined = outline > 0;
    painter_.setPen(lined ? QPen(Qt::black, outline * scale_, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin)
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

const std::vector<QPageSize>& Papers() {
  static const std::vector<QPageSize> papers{QPageSize(QPageSize::A4), QPageSize(QPageSize::Letter)};
  return papers;
}

std::optional<QPageSize> PaperNamed(const QString& name) {
  for (const QPageSize& paper : Papers()) {
    if (name.compare(paper.key(), Qt::CaseInsensitive) == 0) return paper;
  }
  return std::nullopt;
}

QPageSize UsualPaper() {
  const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

void DrawReport(QPainter& painter, const QSizeF& page, const QRectF& target, const RaceRecord& race,
                const Imprint& imprint) {
  painter.save();
  QtSurface surface(painter, page, target);
  frmPrint::PrintDocument(surface, race, imprint.program, imprint.printed);
  painter.restore();
}

bool PutOnPaper(QPagedPaintDevice& device, int dotsPerInch, const QPageSize& paper,
                const std::vector<RaceRecord>& races, const Imprint& imprint) {
  device.setPageLayout(
      QPageLayout(paper, QPageLayout::Portrait, QMarginsF(), QPageLayout::Point, QMarginsF()));
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const QSizeF sheet = paper.size(QPageSize::Inch) * dotsPerInch;
  bool first = true;
  for (const RaceRecord& race : races) {
    if (!first && !device.newPage()) return false;
    first = false;
    DrawReport(painter, sheet, QRectF(QPointF(), sheet), race, imprint);
  }
  return painter.end();
}

QString WritePdf(const QString& path, const QPageSize& paper, const std::vector<RaceRecord>& races,
                 const Imprint& imprint, const std::vector<std::string>& inUse) {
  if (const auto reason = WhyNotWrite(path.toStdString(), FileKind::Other, inUse)) return ToQString(*reason);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  {
    QPdfWriter writer(&file);
    writer.setResolution(kPdfDotsPerInch);
    writer.setCreator(ToQString(imprint.program));
    writer.setTitle(races.empty() ? QString() : ToQString(races.front().eventName));
    if (!PutOnPaper(writer, kPdfDotsPerInch, paper, races, imprint)) {
      file.cancelWriting();
      return QStringLiteral("the pages cannot be written");
    }
  }
  return file.commit() ? QString() : file.errorString();
}

}  // namespace quorvane
