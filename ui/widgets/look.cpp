#include "ui/widgets/look.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double kLeastContrast = 4.5;
constexpr int kHueSteps = 20;
constexpr int kLeastStretch = 82;  // percent

double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

class ConsoleStyle : public QProxyStyle {
 public:
  ConsoleStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    switch (metric) {
      case PM_IndicatorWidth:
      case PM_IndicatorHeight:
      case PM_ExclusiveIndicatorWidth:
      case PM_ExclusiveIndicatorHeight:
        if (widget != nullptr) return std::max(13, widget->font().pixelSize());
        break;
      default:
        break;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  // Fusion draws its outlines in pale grey, which the sun washes out.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    switch (element) {
      case PE_IndicatorCheckBox:
        return DrawCheckBox(*option, *painter);
      case PE_IndicatorRadioButton:
        return DrawOption(*option, *painter);
      case PE_FrameLineEdit:
        return DrawOutline(*option, *painter);
      default:
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }

  // A plain box drawn with a pen loses an edge at fractional scales.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const bool box = element == CE_ShapedFrame && frame != nullptr && frame->frameShape == QFrame::Box;
    if (box) return DrawOutline(*option, *painter);
    QProxyStyle::drawControl(element, option, painter, widget);
  }

 private:
  static QColor Ink(const QStyleOption& option) {
    return option.state.testFlag(State_Enabled) ? QColor(0x20, 0x20, 0x20) : QColor(0x88, 0x88, 0x88);
  }

  static void DrawOutline(const QStyleOption& option, QPainter& painter) {
    DrawEdges(painter, option.rect, 1, Ink(option));
  }

  static QRectF Square(const QRect& rect) {
    const int side = std::min(rect.width(), rect.height()) - 2;
    return {rect.x() + 1.0, rect.y() + (rect.height() - side) / 2.0, side * 1.0, side * 1.0};
  }

  static void DrawCheckBox(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = Square(option.rect);
    painter.setPen(QPen(Ink(option), 2));
    painter.setBrush(Qt::white);
    painter.drawRect(box);
    if (option.state.testFlag(State_On)) {
      painter.setPen(QPen(Ink(option), std::max(2.0, box.width() / 6)));
      const QPointF corner = box.topLeft() + QPointF(box.width() * 0.42, box.height() * 0.75);
      painter.drawLine(box.topLeft() + QPointF(box.width() * 0.2, box.height() * 0.5), corner);
      painter.drawLine(corner, box.topLeft() + QPointF(box.width() * 0.82, box.height() * 0.25));
    }
    painter.restore();
  }

  static void DrawOption(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF circle = Square(option.rect);
    painter.setPen(QPen(Ink(option), 2));
    painter.setBrush(Qt::white);
    painter.drawEllipse(circle);
    if (option.state.testFlag(State_On)) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(Ink(option));
      painter.drawEllipse(circle.center(), circle.width() * 0.28, circle.width() * 0.28);
    }
    painter.restore();
  }
};

}  // namespace

QColor ToQColor(Color color) {
  switch (color.SystemColor()) {
    case Color::System::ButtonFace:
      return QColor(0xEE, 0xEE, 0xEE);
    case Color::System::Window:
      return Qt::white;
    case Color::System::ButtonText:
    case Color::System::WindowText:
      return Qt::black;
    case Color::System::None:
      break;
  }
  return QColor::fromRgb(0xFF000000U | color.Rgb());
}

double Contrast(const QColor& a, const QColor& b) {
  const double one = Luminance(a);
  const double other = Luminance(b);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor ReadableOn(const QColor& background, const QColor& text) {
  constexpr double kLeastSeen = 1.5;  // below, there is no hue to keep
  const QColor end =
      Contrast(background, Qt::black) >= Contrast(background, Qt::white) ? Qt::black : Qt::white;
  if (Contrast(background, text) < kLeastSeen) return end;
  QColor shown = text;
  for (int step = 1; step <= kHueSteps && Contrast(background, shown) < kLeastContrast; ++step) {
    const auto mixed = [step](int from, int to) { return from + (to - from) * step / kHueSteps; };
    shown = QColor(mixed(text.red(), end.red()), mixed(text.green(), end.green()),
                   mixed(text.blue(), end.blue()));
  }
  return shown;
}

QPalette OutdoorPalette() {
  const QColor face = ToQColor(kButtonFace);
  QPalette palette(Qt::black, face, Qt::white, QColor(0x80, 0x80, 0x80), QColor(0xC0, 0xC0, 0xC0), Qt::black,
                   Qt::white, Qt::white, face);
  palette.setColor(QPalette::Highlight, QColor(0x10, 0x4E, 0xB4));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, Qt::white);
  palette.setColor(QPalette::ToolTipText, Qt::black);
  const QColor faint(0x66, 0x66, 0x66);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, face);
  return palette;
}

QStyle* NewConsoleStyle() {
  return new ConsoleStyle;
}

QString ToQString(const std::string& text) {
  QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return shown;
}

QFont FontOfPixels(double pixels, bool bold, bool fixedWidth) {
  QFont font = fixedWidth ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont();
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
  font.setBold(bold);
  return font;
}

void DrawEdges(QPainter& painter, const QRect& rect, int width, const QColor& color) {
  painter.fillRect(rect.left(), rect.top(), rect.width(), width, color);
  painter.fillRect(rect.left(), rect.bottom() + 1 - width, rect.width(), width, color);
  painter.fillRect(rect.left(), rect.top(), width, rect.height(), color);
  painter.fillRect(rect.right() + 1 - width, rect.top(), width, rect.height(), color);
}

QFont FitFont(QFont font, const QString& text, int width, int minimumPixels) {
  int full = QFontMetrics(font).horizontalAdvance(text);
  if (full <= width || full <= 0) return font;
  // Narrower letters first: they read better than small ones.
  font.setStretch(std::max(kLeastStretch, width * 100 / full));
  full = QFontMetrics(font).horizontalAdvance(text);
  if (full <= width) return font;
  int pixels = std::max(minimumPixels, font.pixelSize() * width / full);
  font.setPixelSize(pixels);
  while (pixels > minimumPixels && QFontMetrics(font).horizontalAdvance(text) > width) {
    font.setPixelSize(--pixels);
  }
  return font;
}

LineFit FitLines(QFont font, const QString& lines, const QSize& room, int minimumPixels) {
  const qsizetype count = lines.count(QLatin1Char('\n')) + 1;
  const auto fits = [&] {
    const QFontMetricsF metrics(font);
    return metrics.lineSpacing() * static_cast<double>(count) <= room.height() &&
           metrics.size(0, lines).width() <= room.width();
  };
  while (font.pixelSize() > minimumPixels && !fits()) font.setPixelSize(font.pixelSize() - 1);
  const double share = static_cast<double>(room.height()) / static_cast<double>(count);
  return {font, std::min(QFontMetricsF(font).lineSpacing(), share)};
}

QFont FitParagraph(QFont font, const QString& text, const QSize& room, int minimumPixels) {
  const auto fits = [&] {
    const QRect within(0, 0, room.width(), QWIDGETSIZE_MAX);
    return QFontMetrics(font).boundingRect(within, Qt::TextWordWrap, text).height() <= room.height();
  };
  while (font.pixelSize() > minimumPixels && !fits()) font.setPixelSize(font.pixelSize() - 1);
  return font;
}

QFont FitColumns(QFont font, int height) {
  constexpr double kPitch = 0.6;  // of the font's size
  const double pitch = font.pixelSize() * kPitch;
  font.setPixelSize(std::max(1, std::min(font.pixelSize(), height * 4 / 5)));
  font.setLetterSpacing(QFont::AbsoluteSpacing,
                        pitch - QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')));
  return font;
}

QString ElideAtWord(const QString& text, const QFont& font, int width) {
  const QFontMetrics metrics(font);
  QString shown = text;
  while (metrics.horizontalAdvance(shown) > width) {
    const qsizetype blank = shown.trimmed().lastIndexOf(QLatin1Char(' '));
    if (blank <= 0) return metrics.elidedText(shown, Qt::ElideRight, width);
    shown.truncate(blank);
    shown = shown.trimmed();
  }
  return shown;
}

}  // namespace quorvane
