#include "ui/widgets/look.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QScreen>
#include <cmath>

#include "tests/ui/fixture.h"
#include "ui/widgets/form_view.h"
#include "ui/window_place.h"

namespace quorvane {
namespace {

TEST(LookTest, TextThatDoesNotFitIsMadeSmallerOrCutAtAWordAndKeepsItsHue) {
  EXPECT_EQ(ReadableOn(Qt::white, QColor(Qt::red)).hue(), QColor(Qt::red).hue());  // still says "bad"
  const QFont font = FontOfPixels(13, false);
  const QFontMetrics metrics(font);
  const QString mark = QStringLiteral("C P2 43.95");
  EXPECT_EQ(ElideAtWord(mark, font, 1000), mark);
  EXPECT_EQ(ElideAtWord(mark, font, metrics.horizontalAdvance(QStringLiteral("C P2 43.9"))), "C P2");
  for (int width = 0; width < 120; width += 7) {
    const int shown = metrics.horizontalAdvance(ElideAtWord(mark, font, width));
    EXPECT_LE(shown, std::max(width, metrics.horizontalAdvance(QChar(0x2026))));
  }
  const QFont large = FontOfPixels(40, true);
  EXPECT_EQ(FitFont(large, QStringLiteral("1"), 500, 10), large);
  const QString caption = QStringLiteral("Holding");
  EXPECT_LE(QFontMetrics(FitFont(large, caption, 90, 10)).horizontalAdvance(caption), 90);
  EXPECT_EQ(FitFont(large, QString(100, QLatin1Char('x')), 90, 10).pixelSize(), 10);
}

// A colour's place in CIE L*a*b* for somebody who lacks one kind of cones, by the matrices for linear light
// of Machado, Oliveira and Fernandes (2009); kind 0 lacks none.
using Seen = std::array<double, 3>;
Seen SeenBy(int kind, const QColor& color) {
  static constexpr std::array<std::array<double, 9>, 4> kCones = {
      {{1, 0, 0, 0, 1, 0, 0, 0, 1},
       {0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998},
       {0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.011820, 0.042940, 0.968881},
       {1.255528, -0.076749, -0.178779, -0.078411, 0.930809, 0.147602, 0.004733, 0.691367, 0.303900}}};
  static constexpr std::array<double, 9> kXyz = {0.4339, 0.3762, 0.1899, 0.2126, 0.7152,
                                                 0.0722, 0.0177, 0.1095, 0.8728};  // of white: 1, 1, 1
  const auto times = [](const std::array<double, 9>& m, const Seen& v) {
    Seen product{};
    for (std::size_t i = 0; i < 9; ++i) product[i / 3] += m[i] * v[i % 3];
    return product;
  };
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  Seen light = times(kCones[static_cast<std::size_t>(kind)],
                     {linear(color.redF()), linear(color.greenF()), linear(color.blueF())});
  for (double& part : light) part = std::clamp(part, 0.0, 1.0);
  Seen f = times(kXyz, light);
  for (double& part : f) part = part > 0.008856 ? std::cbrt(part) : 7.787 * part + 16.0 / 116;
  return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

TEST(LookTest, ColoursThatMeanDifferentThingsAreToldApartByEverybodyInEveryScheme) {
  const auto rgb = [](std::uint32_t value) { return Color::Rgb(value); };
  const std::vector<std::vector<Color>> kTogether = {
      {rgb(0xFF6060), rgb(0x60FF60), rgb(0x8080FF), rgb(0xFFFF60), rgb(0xFF8000), kButtonFace},  // lanes
      {rgb(0xFFFFD0), rgb(0xFFC0C0), rgb(0xC0FFC0), kSilver, kWhite},                            // clock
      {rgb(0x8080FF), kGreen, kWindow},                  // lane's light
      {kWhite, kSilver, rgb(0x80FF80), rgb(0xFFC0C0)}};  // cells
  for (const Scheme scheme : {Scheme::Dark, Scheme::Outdoor, Scheme::Light}) {
    SetScheme(scheme);
    for (const std::vector<Color>& colors : kTogether) {
      for (std::size_t pair = 0; pair < colors.size() * colors.size(); ++pair) {
        const Color one = colors[pair / colors.size()];
        const Color other = colors[pair % colors.size()];
        for (int kind = 0; kind < 4 && one != other; ++kind) {
          const Seen a = SeenBy(kind, Shown(one));
          const Seen b = SeenBy(kind, Shown(other));
          EXPECT_GE(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), 10)
              << one.Name() << " and " << other.Name() << ", scheme " << static_cast<int>(scheme) << ", "
              << kind;
        }
      }
    }
  }
}

// Thirteen lines of a frame's detail, in whatever the desktop calls its monospaced font.
TEST(LookTest, LinesFitTheirRoomWithAnyFontOfOneWidth) {
  const QString lines = QStringLiteral("Time=0x00,0x00,0x00,0x00 (16777.21)\n").repeated(12) + "Dif=0x06";
  for (const QString& family : QFontDatabase::families()) {
    if (!QFontDatabase::isFixedPitch(family)) continue;
    QFont font(family);
    font.setPixelSize(15);
    const QFontMetricsF metrics(FitParagraph(font, lines, QSize(384, 244), Qt::AlignTop, 1));
    EXPECT_LE(metrics.lineSpacing() * 13, 244.001) << family.toStdString();
    EXPECT_LE(metrics.size(0, lines).width(), 384) << family.toStdString();
    font.setPixelSize(27);
    const QFontMetricsF header(FitColumns(font, 28, 12));
    EXPECT_LE(header.tightBoundingRect(QStringLiteral("Stn Ag")).height(), 28) << family.toStdString();
    EXPECT_LE(header.horizontalAdvance('a'), 12) << family.toStdString();
  }
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

TEST(MarkPlacesTest, EveryMarkOfAColumnKeepsAPlaceOfItsOwn) {
  for (const QRect room : {QRect(100, 76, 57, 50), QRect(100, 76, 57, 102), QRect(0, 0, 20, 10)}) {
    for (int count = 1; count <= 40; ++count) {
      const std::vector<QRect> cells = StackCells(count, room);
      ASSERT_EQ(cells.size(), static_cast<std::size_t>(count));
      QRegion taken;
      for (const QRect& cell : cells) {
        EXPECT_TRUE(cell.isEmpty() || (room.contains(cell) && !taken.intersects(cell))) << count << " marks";
        taken += cell;
      }
    }
  }
  EXPECT_EQ(StackCells(2, {100, 76, 57, 102}, 2),
            std::vector({QRect(100, 76, 57, 32), QRect(100, 108, 57, 32)}));
}

TEST(MarkPlacesTest, PopUpStaysOnTheFormAndOffTheMark) {
  for (int left = 0; left <= 943; left += 41) {
    const QRect mark(left, 76, 57, 22);
    const QRect popUp = BesideMark(mark, {120, 28}, {1000, 184});
    EXPECT_TRUE(QRect(0, 0, 1000, 184).contains(popUp));
    EXPECT_FALSE(popUp.intersects(mark));
  }
}

using ScaledFormTest = DoorTest;

const Place kMark{"mark", {}, 10, Look::Border | Look::Words, {}, 0, {}, {}, Anchoring::Stack};

TEST_F(ScaledFormTest, SizeAfterManyResizesIsThatOfTheDesign) {
  Control& frame = form.Add(ControlKind::Frame, "fra");
  form.Add(ControlKind::Button, "cmd", &frame);
  FormDesign design{400, 200, {{"fra", {37, 21, 301, 133}}, {"cmd", {53, 41, 101, 33}, 13}}};
  FormView view(form, design, door, nullptr);
  view.show();
  for (const QSize size : {QSize(33, 17), QSize(1999, 777), QSize(401, 203), QSize(400, 200)}) {
    view.resize(size);
    Settle();
  }
  QWidget* button = view.FindWidget("cmd");
  EXPECT_EQ(view.FindWidget("fra")->geometry(), QRect(37, 21, 301, 133));
  EXPECT_EQ(button->geometry(), QRect(16, 20, 101, 33));
  EXPECT_EQ(button->font().pixelSize(), 17);  // 13 points
}

// Outdoors, too, where other edges are thick.
TEST_F(ScaledFormTest, MarkThatDoesNotFitOneLineGetsTwo) {
  Control& cell = form.Add(ControlKind::Label, "cell");
  Control& mark = form.Add(ControlKind::Label, "mark");
  mark.SetCaption("T  10.72");
  mark.SetAnchor(&cell);
  for (const Scheme scheme : {Scheme::Outdoor, Scheme::Light}) {
    DressApplication(scheme);
    for (int width = 40; width < 100; ++width) {
      FormDesign design{.width = 400, .height = 200, .stackTop = 50, .stackBottom = 190};
      design.places = {{"cell", {10, 10, width, 30}, 12, Look::Border}, kMark};
      FormView view(form, design, door, nullptr);
      view.resize(400, 200);
      view.show();
      view.Apply();
      const QWidget* shown = view.FindWidget("mark");
      const int words = QFontMetrics(shown->font()).horizontalAdvance("T  10.72");
      EXPECT_EQ(shown->height() > 22, words > shown->contentsRect().width() - 2) << width;
    }
  }
}

// Qt does not ask what lies over a widget in which another one has just moved.
TEST_F(ScaledFormTest, WordsOnAFrameStayWhileAMarkInItMoves) {
  Control& frame = form.Add(ControlKind::Frame, "fra");
  Control& mark = form.Add(ControlKind::Label, "mark", &frame);
  Control* cells[] = {&form.Add(ControlKind::Label, "a", &frame), &form.Add(ControlKind::Label, "b", &frame)};
  FormDesign design{.width = 400, .height = 200, .stackTop = 50, .stackBottom = 90};
  design.places = {{"fra", {0, 0, 400, 200}, 12, Look::Bare | Look::Heavy | Look::White},
                   {"a", {10, 10, 60, 30}, 12, Look::Border},
                   {"b", {80, 10, 60, 30}, 12, Look::Border},
                   kMark};
  design.texts = {{"Lap 10", {200, 120, 100, 30}, 12, Look::Plain}};
  mark.SetAnchor(cells[0]);
  FormView view(form, design, door, nullptr);
  view.resize(400, 200);
  view.show();
  view.Apply();
  Settle();
  const auto ink = [&] {
    const QImage words = view.screen()->grabWindow(view.winId()).toImage().copy(200, 120, 100, 30);
    int dark = 0;
    for (int i = 0; i < 3000; ++i) dark += qGray(words.pixel(i % 100, i / 100)) < 100 ? 1 : 0;
    return dark;
  };
  const int before = ink();
  EXPECT_GT(before, 20);
  mark.SetAnchor(cells[1]);
  view.Find(&mark)->Changed(Property::Anchor);
  view.FindWidget("fra")->update();
  view.Apply();
  Settle();
  EXPECT_EQ(ink(), before);
}

}  // namespace
}  // namespace quorvane
