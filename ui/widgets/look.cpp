#include "ui/widgets/look.h"

#include <QApplication>
#include <QFileDialog>
#include <QFocusFrame>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QHeaderView>
#include <QIcon>
#include <QPainter>
#include <QProxyStyle>
#include <QRegion>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>
#include <QTreeView>
#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

class ConsoleStyle : public QProxyStyle {
 public:
  ConsoleStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  // Check marks and option dots grow with the font of their control.
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    const bool indicator = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight ||
                           metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight;
    if (indicator && widget != nullptr) return std::max(13, widget->font().pixelSize());
    if (metric == PM_FocusFrameHMargin || metric == PM_FocusFrameVMargin) return 3;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  // Fusion leaves the letters no room at the ends of a button.
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override {
    const int wider = type == CT_PushButton ? 12 : 0;
    return QProxyStyle::sizeFromContents(type, option, contents, widget) + QSize(wider, 0);
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    return hint == SH_FocusFrame_AboveWidget ? 1 : QProxyStyle::styleHint(hint, option, widget, result);
  }

  // Fusion's indicators with lines twice as thick. Its menus have an edge that is not seen on a dark window.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_PanelMenu) {
      painter->fillRect(option->rect, Colors().edge);
      return painter->fillRect(option->rect.adjusted(1, 1, -1, -1), option->palette.base());
    }
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (button == nullptr || (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton)) {
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    QStyleOptionButton half = *button;
    half.rect = QRect({}, button->rect.size() / 2);
    painter->save();
    painter->translate(button->rect.topLeft());
    painter->scale(2, 2);
    QProxyStyle::drawPrimitive(element, &half, painter, widget);
    painter->restore();
  }

  // Filled, not drawn with a pen, which loses an edge at fractional scales of the screen.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element == CE_FocusFrame) return painter->fillRect(option->rect, Colors().focus);
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr && item->menuItemType == QStyleOptionMenuItem::Separator) {
      const QRect& line = item->rect;
      return painter->fillRect(line.left() + 6, line.center().y(), line.width() - 12, 1, Colors().faintEdge);
    }
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element != CE_ShapedFrame || frame == nullptr || frame->frameShape != QFrame::Box) {
      return QProxyStyle::drawControl(element, option, painter, widget);
    }
    const int line = frame->lineWidth;
    const QRegion edges = QRegion(frame->rect) - frame->rect.adjusted(line, line, -line, -line);
    for (const QRect& edge : edges) painter->fillRect(edge, Colors().edge);
  }

  // A menu bar asks for the picture of a button that it never shows; reading that takes as long as the bar.
  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                     const QWidget* widget) const override {
    if (picture == SP_ToolBarHorizontalExtensionButton) return {};
    return QProxyStyle::standardIcon(picture, option, widget);
  }
};

// Fusion draws an outline in a darker shade of the window's colour, which the sun washes out.
QPalette Outlined(QPalette palette) {
  constexpr int kShade = 140;  // percent, of Fusion
  palette.setColor(QPalette::Window, Colors().edge.lighter(kShade));
  palette.setColor(QPalette::Disabled, QPalette::Window, Colors().faintEdge.lighter(kShade));
  return palette;
}

QPalette SchemePalette() {
  const QColor face = Shown(kButtonFace);
  const QColor field = Shown(kWindow);
  const QColor text = Shown(kWindowText);
  const bool dark = CurrentScheme() == Scheme::Dark;
  QPalette palette(text, face, dark ? face.lighter(170) : Qt::white, face.darker(190), face.darker(125), text,
                   text, field, face);
  palette.setColor(QPalette::AlternateBase, dark ? QColor(0x1E, 0x1E, 0x1E) : face);
  palette.setColor(QPalette::Highlight, Colors().focus);
  palette.setColor(QPalette::HighlightedText, ReadableOn(Colors().focus, field));
  palette.setColor(QPalette::ToolTipBase, field);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Link, Colors().focus);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, Colors().faintText);
  }
  palette.setColor(QPalette::PlaceholderText, Colors().faintText);
  palette.setColor(QPalette::Disabled, QPalette::Base, face);
  return palette;
}

}  // namespace

QColor ToQColor(Color color) {
  if (color.SystemColor() == Color::System::None) return QColor(QRgb{color.Rgb()});
  if (color == kButtonFace) return QColor(0xEE, 0xEE, 0xEE);
  return color == kWindow ? Qt::white : Qt::black;
}

double Contrast(const QColor& a, const QColor& b) {
  const double one = Luminance(a);
  const double other = Luminance(b);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor ReadableOn(const QColor& background, const QColor& text) {
  constexpr double kLeastSeen = 1.5;  // below, there is no hue to keep
  const double leastContrast = Colors().contrast;
  constexpr int kHueSteps = 20;
  const QColor end =
      Contrast(background, Qt::black) >= Contrast(background, Qt::white) ? Qt::black : Qt::white;
  const double contrast = Contrast(background, text);
  // Grey letters have no hue to keep either, and halfway to the end they would only be dim.
  if (contrast < kLeastSeen || (contrast < leastContrast && text.hsvSaturation() == 0)) return end;
  QColor shown = text;
  for (int step = 1; step <= kHueSteps && Contrast(background, shown) < leastContrast; ++step) {
    const auto mixed = [step](int from, int to) { return from + (to - from) * step / kHueSteps; };
    shown = QColor(mixed(text.red(), end.red()), mixed(text.green(), end.green()),
                   mixed(text.blue(), end.blue()));
  }
  return shown;
}

bool ThemeIsDark() {
  static const bool dark = QApplication::palette().color(QPalette::Window).lightness() < 128;
  return dark;
}

void DressApplication(Scheme scheme) {
  ThemeIsDark();  // looks once
  SetScheme(scheme);
  if (dynamic_cast<ConsoleStyle*>(QApplication::style()) == nullptr) {
    QApplication::setStyle(new ConsoleStyle);
    QApplication::setFont(FontOfPixels(16, false));
  }
  const QPalette palette = SchemePalette();
  QToolTip::setPalette(palette);
  QApplication::setPalette(palette);  // forgets those of the kinds
  for (const char* kind : {"QAbstractButton", "QLineEdit", "QComboBox", "QAbstractSpinBox"}) {
    QApplication::setPalette(Outlined(palette), kind);
  }
  // Qt has told of the change before it was complete.
  for (QWidget* widget : QApplication::allWidgets()) {
    QEvent changed(QEvent::ApplicationPaletteChange);
    QCoreApplication::sendEvent(widget, &changed);
  }
}

void RingFocus(QWidget& window) {
  auto* ring = new QFocusFrame(&window);
  QObject::connect(qApp, &QApplication::focusChanged, ring, [ring, &window](QWidget*, QWidget* now) {
    const bool ours = now != nullptr && now != &window && now->window() == &window &&
                      (now->focusPolicy() & Qt::TabFocus) != 0;
    ring->setWidget(ours ? now : nullptr);
  });
}

void FitFileDialog(QFileDialog& dialog) {
  constexpr QSize kWide(860, 460);
  const auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (list == nullptr) return;
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  dialog.resize(dialog.size().expandedTo(kWide));
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

QFont FitFont(QFont font, const QString& text, int width, int minimumPixels) {
  const auto advance = [&] { return QFontMetrics(font).horizontalAdvance(text); };
  const int full = advance();
  if (full <= width || full <= 0) return font;
  constexpr int kLeastStretch = 82;  // percent
  // Narrower letters first: they read better than small ones.
  font.setStretch(std::max(kLeastStretch, width * 100 / full));
  if (const int narrow = advance(); narrow > width) {
    font.setPixelSize(std::max(minimumPixels, font.pixelSize() * width / narrow));
  }
  while (font.pixelSize() > minimumPixels && advance() > width) font.setPixelSize(font.pixelSize() - 1);
  return font;
}

QFont FitParagraph(QFont font, const QString& text, const QSize& room, int flags, int minimumPixels) {
  const auto fits = [&] {
    const QRect endless(0, 0, room.width(), QWIDGETSIZE_MAX);
    const QSize needed = QFontMetrics(font).boundingRect(endless, flags, text).size();
    return needed.height() <= room.height() && needed.width() <= room.width();
  };
  while (font.pixelSize() > minimumPixels && !fits()) font.setPixelSize(font.pixelSize() - 1);
  return font;
}

QFont FitColumns(QFont font, int height, double pitch) {
  font.setPixelSize(std::max(1, std::min(font.pixelSize(), height * 4 / 5)));
  const auto fits = [&] { return QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')) <= pitch; };
  while (font.pixelSize() > 1 && !fits()) font.setPixelSize(font.pixelSize() - 1);
  return font;
}

QString WithZeros(QString text) {
  for (QChar& c : text) c = c.isDigit() ? QLatin1Char('0') : c;
  return text;
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
