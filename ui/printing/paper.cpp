#include "ui/printing/paper.h"

#include <QFileInfo>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "files/output_guard.h"
#include "print/heat_report.h"
#include "ui/printing/qt_surface.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr int kPdfDotsPerInch = 1200;

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
    painter.save();
    QtSurface surface(painter, {0, 0, sheet.width(), sheet.height()}, QRectF(QPointF(), sheet));
    frmPrint(race, imprint.program, imprint.printed).PrintDocument(surface);
    painter.restore();
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
