#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <string>

#include "base/color.h"
#include "ui/widgets/scheme.h"

class QFileDialog;
class QWidget;

namespace quorvane {

// As on paper; what is on the screen is Shown.
QColor ToQColor(Color color);

// The text colour, made darker or lighter until it reads well there (a contrast of 4.5, outdoors more): the
// race logic picks both colours one by one, and some pairs, such as red on green, are hard to read.
QColor ReadableOn(const QColor& background, const QColor& text);

// Contrast of two colours as a ratio of luminances, 1..21.
double Contrast(const QColor& a, const QColor& b);

// The console's style, font and colours in all windows, whatever the desktop's; again for another scheme.
void DressApplication(Scheme scheme = Scheme::Light);
// Whether the desktop's theme was dark before the program was dressed for the first time.
bool ThemeIsDark();

// Puts a dark ring around the control of the window that has the focus.
void RingFocus(QWidget& window);

// Wide enough for what stands in its columns. The desktop's own box is left as it is.
void FitFileDialog(QFileDialog& dialog);

// Text from the race logic: UTF-8, lines ending with a carriage return.
QString ToQString(const std::string& text);

QFont FontOfPixels(double pixels, bool bold, bool fixedWidth = false);

// The font, smaller where it takes that for the text to fit the width, but not under minimumPixels.
QFont FitFont(QFont font, const QString& text, int width, int minimumPixels);

// The same for a text of several lines that is drawn with those flags of Qt.
QFont FitParagraph(QFont font, const QString& text, const QSize& room, int flags, int minimumPixels);

// For a line in which every letter takes the same room whatever the font, so that words stand over columns.
// Never higher than the room, and no letter wider than `pitch`.
QFont FitColumns(QFont font, int height, double pitch);

// Figures are as wide as a zero: what a text that runs takes is worked out once, and not at every tick.
QString WithZeros(QString text);

// The text cut after its last word that fits the width; within the first word when not even that one fits.
QString ElideAtWord(const QString& text, const QFont& font, int width);

}  // namespace quorvane
