#include "ui/look.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "ui/caption_button.h"

namespace quorvane {
namespace {

TEST(LookTest, TextIsReadableOnEveryBackgroundThatTheRaceGivesIt) {
  const std::vector<QColor> backgrounds = {
      ToQColor(Color::Rgb(0x8080FF)), ToQColor(kGreen),     ToQColor(kSilver),
      ToQColor(Color::Rgb(0xFFC0C0)), ToQColor(kRed),       Qt::white,
      ToQColor(Color::Rgb(0xFF6060)), ToQColor(kButtonFace)};
  for (const QColor& background : backgrounds) {
    for (const Color text : {kRed, kButtonText, kButtonFace, kDarkGrey, kWhite}) {
      EXPECT_GE(Contrast(background, ReadableOn(background, ToQColor(text))), 2.5)
          << background.name().toStdString() << " " << text.Name();
    }
  }
  EXPECT_EQ(ReadableOn(Qt::white, QColor(Qt::red)), QColor(Qt::red));
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
