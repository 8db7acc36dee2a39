#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRect>
#include <QString>
#include <string>

#include "base/color.h"

class QWidget;

namespace quorvane {

QColor ToQColor(Color color);

// The text colour itself where it can be read on that background (a contrast of 4.5), otherwise as much
// darker or lighter as it takes. The race logic picks both colours one by one, so that some pairs (red on
// green) would be hard to read outdoors.
QColor ReadableOn(const QColor& background, const QColor& text);

// Contrast of two colours as a ratio of luminances, 1..21.
double Contrast(const QColor& a, const QColor& b);

// Gives the application the console's style, palette and font: dark on light whatever the desktop's theme
// says, because the console is read in the sun.
void DressApplication();

// Puts a dark ring around the control of the window that has the focus, so that it is seen in the sun.
void RingFocus(QWidget& window);

// Text from the race logic: UTF-8, lines ending with a carriage return.
QString ToQString(const std::string& text);

QFont FontOfPixels(double pixels, bool bold, bool fixedWidth = false);

// The font that makes the text fit the width: as given where it fits, else smaller, never under
// minimumPixels.
QFont FitFont(QFont font, const QString& text, int width, int minimumPixels);

// The font for a text of several lines that is drawn with those flags of Qt: as given where it fits the room,
// else smaller, never under minimumPixels.
QFont FitParagraph(QFont font, const QString& text, const QSize& room, int flags, int minimumPixels);

// One line in which every letter takes the same room, whatever the font: words stand over the columns under
// them. Never higher than the room.
QFont FitColumns(QFont font, int height);

// The text cut after its last word that fits the width; within the first word when not even that one fits.
QString ElideAtWord(const QString& text, const QFont& font, int width);

}  // namespace quorvane
