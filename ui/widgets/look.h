#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRect>
#include <QString>
#include <string>

#include "base/color.h"

class QPainter;
class QStyle;

namespace quorvane {

QColor ToQColor(Color color);

// The text colour itself where it can be read on that background (a contrast of 4.5), otherwise as much
// darker or lighter as it takes. The race logic picks both colours one by one, so that some pairs (red on
// green) would be hard to read outdoors.
QColor ReadableOn(const QColor& background, const QColor& text);

// Contrast of two colours as a ratio of luminances, 1..21.
double Contrast(const QColor& a, const QColor& b);

// Dark on light whatever the desktop's theme says: the console is read in the sun.
QPalette OutdoorPalette();

// A Qt style whose check marks and option dots grow with the font of their control.
QStyle* NewConsoleStyle();

// Text from the race logic: UTF-8, lines ending with a carriage return.
QString ToQString(const std::string& text);

QFont FontOfPixels(double pixels, bool bold, bool fixedWidth = false);

// A line of that width along the inner edge of the rectangle. Filled, not drawn with a pen, which loses an
// edge at fractional scales of the screen.
void DrawEdges(QPainter& painter, const QRect& rect, int width, const QColor& color);

// The font that makes the text fit the width: as given where it fits, else smaller, never under
// minimumPixels.
QFont FitFont(QFont font, const QString& text, int width, int minimumPixels);

// Lines of letters of one width, as they fit the room: the font as given where it fits, else smaller, never
// under minimumPixels; after that the lines move together. The pitch is the height of a line.
struct LineFit {
  QFont font;
  double pitch;
};
LineFit FitLines(QFont font, const QString& lines, const QSize& room, int minimumPixels);

// The font for text that is broken into lines at the width: as given where they fit the height, else smaller.
QFont FitParagraph(QFont font, const QString& text, const QSize& room, int minimumPixels);

// One line in which every letter takes the same room, whatever the font: words stand over the columns under
// them. Never higher than the room.
QFont FitColumns(QFont font, int height);

// The text cut after its last word that fits the width; within the first word when not even that one fits.
QString ElideAtWord(const QString& text, const QFont& font, int width);

}  // namespace quorvane
