#include "ui/printing/paper.h"

#include <QFileInfo>
#include <QLocale>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

#include "files/output_guard.h"
#include "print/heat_report.h"
#include "ui/printing/qt_surface.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr int kPdfDotsPerInch = 1200;

QPageSize SizeOf(Paper paper) {
  return QPageSize(paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter);
}

}  // namespace

bool PaperNamed(const std::string& name, Paper& paper) {
  for (const Paper known : {Paper::A4, Paper::Letter}) {
    if (ToQString(name).compare(QLatin1String(PaperName(known)), Qt::CaseInsensitive) != 0) continue;
    paper = known;
    return true;
  }
  return false;
}

const char* PaperName(Paper paper) {
  return paper == Paper::A4 ? "A4" : "Letter";
}

QSizeF PaperInches(Paper paper) {
  return SizeOf(paper).size(QPageSize::Inch);
}

Paper UsualPaper() {
  return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? Paper::Letter : Paper::A4;
}

bool PutOnPaper(QPagedPaintDevice& device, int dotsPerInch, Paper paper, const std::vector<RaceRecord>& races,
                const Imprint& imprint) {
  device.setPageLayout(
      QPageLayout(SizeOf(paper), QPageLayout::Portrait, QMarginsF(), QPageLayout::Point, QMarginsF()));
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const QSizeF sheet = PaperInches(paper) * dotsPerInch;
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

QString WritePdf(const QString& path, Paper paper, const std::vector<RaceRecord>& races,
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
