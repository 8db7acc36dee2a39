#include "ui/widgets/look.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontMetrics>

#include "ui/widgets/caption_button.h"
#include "ui/window_place.h"

namespace quorvane {
namespace {

TEST(LookTest, TextIsReadableOnEveryBackgroundThatTheRaceGivesIt) {
  const std::vector<QColor> backgrounds = {
      ToQColor(Color::Rgb(0x8080FF)), ToQColor(kGreen),     ToQColor(kSilver),
      ToQColor(Color::Rgb(0xFFC0C0)), ToQColor(kRed),       Qt::white,
      ToQColor(Color::Rgb(0xFF6060)), ToQColor(kButtonFace)};
  for (const QColor& background : backgrounds) {
    for (const Color text : {kRed, kButtonText, kButtonFace, kDarkGrey, kWhite}) {
      EXPECT_GE(Contrast(background, ReadableOn(background, ToQColor(text))), 4.5)
          << background.name().toStdString() << " " << text.Name();
    }
  }
  EXPECT_EQ(ReadableOn(Qt::white, QColor(Qt::red)).hue(), QColor(Qt::red).hue());  // still says "bad"
}

TEST(LookTest, TextIsCutAtAWordAndNeverWiderThanItsRoom) {
  const QFont font = FontOfPixels(13, false);
  const QFontMetrics metrics(font);
  const QString mark = QStringLiteral("C P2 43.95");
  EXPECT_EQ(ElideAtWord(mark, font, 1000), mark);
  EXPECT_EQ(ElideAtWord(mark, font, metrics.horizontalAdvance(QStringLiteral("C P2 43.9"))),
            QStringLiteral("C P2"));
  for (int width = 0; width < 120; width += 7) {
    const int shown = metrics.horizontalAdvance(ElideAtWord(mark, font, width));
    EXPECT_LE(shown, std::max(width, metrics.horizontalAdvance(QChar(0x2026))));
  }
}

TEST(LookTest, FontShrinksOnlyAsFarAsItMayAndOnlyWhenItMust) {
  const QFont font = FontOfPixels(40, true);
  EXPECT_EQ(FitFont(font, QStringLiteral("1"), 500, 10), font);
  const QString caption = QStringLiteral("Holding");
  const QFont fitted = FitFont(font, caption, 90, 10);
  EXPECT_LE(QFontMetrics(fitted).horizontalAdvance(caption), 90);
  EXPECT_EQ(FitFont(font, QString(100, QLatin1Char('x')), 90, 10).pixelSize(), 10);
}

// Thirteen lines of a frame's detail, in whatever the desktop calls its monospaced font.
TEST(LookTest, LinesFitTheirRoomWithAnyFontOfOneWidth) {
  const QString lines = QStringLiteral("Time=0x00,0x00,0x00,0x00 (16777.21)\n").repeated(12) + "Dif=0x06";
  int fonts = 0;
  for (const QString& family : QFontDatabase::families()) {
    if (!QFontDatabase::isFixedPitch(family)) continue;
    ++fonts;
    QFont font(family);
    font.setPixelSize(15);
    const LineFit fit = FitLines(font, lines, QSize(384, 244), 13);
    const QFontMetricsF metrics(fit.font);
    EXPECT_LE(fit.pitch * 13, 244.001) << family.toStdString();
    EXPECT_LE(metrics.tightBoundingRect(QStringLiteral("gT(")).height(), fit.pitch) << family.toStdString();
    EXPECT_LE(metrics.size(0, lines).width(), 384) << family.toStdString();
    font.setPixelSize(27);
    const QFontMetricsF header(FitColumns(font, 28));
    EXPECT_LE(header.tightBoundingRect(QStringLiteral("Stn Ag")).height(), 28) << family.toStdString();
    EXPECT_NEAR(header.horizontalAdvance(QString(22, 'a')), 22 * 0.6 * 27, 22) << family.toStdString();
  }
  EXPECT_GT(fonts, 0);
}

TEST(WindowPlaceTest, WindowsLieOnTheirScreenAndTheResultsBesideOrUnderTheClock) {
  for (const QSize size : {QSize(1024, 700), QSize(1366, 768), QSize(1280, 720), QSize(2560, 1440)}) {
    const QRect screen(QPoint(0, 24), size - QSize(0, 24));
    for (const QRect window :
         {QRect(-30, 5, 472, 684), QRect(900, 600, 882, 684), QRect(2000, 0, 1290, 820)}) {
      const QRect moved = MovedInto(screen, window);
      EXPECT_TRUE(screen.contains(moved));
      EXPECT_EQ(moved.size(), window.size().boundedTo(screen.size()));
    }
    const QRect clock(10, 60, size.width() / 5, size.height() / 6);
    const QRect results = ClearOf(clock, QSize(1350, 690), screen);
    EXPECT_TRUE(screen.contains(results));
    EXPECT_FALSE(results.intersects(clock));
    EXPECT_GE(results.width(), std::min(1350, size.width()));
  }
}

TEST(LookTest, MnemonicIsMarkedAndAmpersandsStay) {
  EXPECT_EQ(WithMnemonic(QStringLiteral("Start"), 't'), QStringLiteral("S&tart"));
  EXPECT_EQ(WithMnemonic(QStringLiteral("Cut"), 'x'), QStringLiteral("Cut"));
  EXPECT_EQ(WithMnemonic(QStringLiteral("A & B"), 0), QStringLiteral("A && B"));
}

TEST(LookTest, LinesEndWithCarriageReturns) {
  EXPECT_EQ(ToQString("a\rb\r\nc\n"), QStringLiteral("a\nb\nc\n"));
}

}  // namespace
}  // namespace quorvane
