#include "ui/printing/qt_surface.h"

#include <QFontMetricsF>
#include <algorithm>

#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr double kGridWidth = 10000;  // steps across the page

QString ToText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

QtSurface::QtSurface(QPainter& painter, const Box& page, const QRectF& target)
    : painter_(painter), page_(page), scale_(kGridWidth / page.width) {
  painter_.translate(target.topLeft());
  painter_.scale(target.width() / kGridWidth, target.height() / (page.height * scale_));
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

// Letters must not be fitted to the dots of one device, or they would be wider there than elsewhere.
QFont QtSurface::OnGrid(Font font) const {
  QFont letters = FontOfPixels(font.size * scale_, font.bold);
  // The same letters with and without a screen.
  letters.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
  letters.setHintingPreference(QFont::PreferNoHinting);
  return letters;
}

QRectF QtSurface::OnGrid(const Box& box) const {
  return {OnGrid(box.left, box.top), QSizeF(box.width * scale_, box.height * scale_)};
}

QPointF QtSurface::OnGrid(double x, double y) const {
  return {(x - page_.left) * scale_, (y - page_.top) * scale_};
}

double QtSurface::TextWidth(std::string_view text, Font font) const {
  return QFontMetricsF(OnGrid(font)).horizontalAdvance(ToText(text)) / scale_;
}

double QtSurface::LineHeight(Font font) const {
  return QFontMetricsF(OnGrid(font)).height() / scale_;
}

void QtSurface::Text(const Box& box, std::string_view text, Font font, Align align) {
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

void QtSurface::Line(double fromX, double fromY, double toX, double toY, double thickness) {
  painter_.setPen(QPen(Qt::black, thickness * scale_, Qt::SolidLine, Qt::FlatCap));
  painter_.drawLine(OnGrid(fromX, fromY), OnGrid(toX, toY));
}

void QtSurface::Rectangle(const Box& box, std::optional<Color> fill, double outline) {
  const bool lined = outline > 0;
  painter_.setPen(lined ? QPen(Qt::black, outline * scale_, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin)
                        : QPen(Qt::NoPen));
  painter_.setBrush(fill ? QBrush(ToQColor(*fill)) : QBrush(Qt::NoBrush));
  painter_.drawRect(OnGrid(box));
}

}  // namespace quorvane
