#include "ui/look.h"

#include <QFontMetrics>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

constexpr double kLeastContrast = 2.5;

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
  if (Contrast(background, text) >= kLeastContrast) return text;
  return Contrast(background, Qt::black) >= Contrast(background, Qt::white) ? Qt::black : Qt::white;
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

QFont FontOfPixels(double pixels, bool bold) {
  QFont font;
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
  font.setBold(bold);
  return font;
}

QFont FitFont(QFont font, const QString& text, int width, int minimumPixels) {
  const int full = QFontMetrics(font).horizontalAdvance(text);
  if (full <= width || full <= 0) return font;
  int pixels = std::max(minimumPixels, font.pixelSize() * width / full);
  font.setPixelSize(pixels);
  while (pixels > minimumPixels && QFontMetrics(font).horizontalAdvance(text) > width) {
    font.setPixelSize(--pixels);
  }
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
