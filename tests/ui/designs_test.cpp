#include "ui/designs.h"

#include <QAction>
#include <QImage>
#include <QPushButton>
#include <map>
#include <set>

#include "tests/ui/program_fixture.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

class DesignsTest : public ProgramTest {
 protected:
  std::vector<FormView*> Views() {
    std::vector<FormView*> views = {&windows.Console().View(), &windows.Link().View()};
    for (int i = 0; i < 4; ++i) views.push_back(&windows.Lane(i));
    return views;
  }
};

TEST_F(DesignsTest, EveryControlHasItsPlaceAndEveryPlaceItsControl) {
  for (FormView* view : Views()) {
    EXPECT_EQ(view->Unplaced(), std::vector<std::string>()) << view->Of().Name();
    for (const Place& place : view->Design().places) {
      EXPECT_NE(view->Of().Find(place.name), nullptr) << view->Of().Name() << "." << place.name;
    }
  }
}

// Controls that lie on others on purpose.
bool Covers(const Place& place) {
  return place.anchoring != Anchoring::None || place.name.starts_with("fra");
}

TEST_F(DesignsTest, ControlsNeitherOverlapNorLeaveTheirFormAndNoTextIsUnderTenPoints) {
  for (const FormDesign& design : {ConsoleDesign(), LaneDesign(1), LinkDesign()}) {
    const QRect form(0, 0, design.width, design.height);
    std::vector<std::pair<std::string, QRect>> taken;
    const auto take = [&](const std::string& name, const clsRect& r) {
      const QRect rect(r.left, r.top, r.width, r.height);
      EXPECT_TRUE(form.contains(rect)) << name;
      for (const auto& [other, there] : taken)
        EXPECT_FALSE(rect.intersects(there)) << name << " on " << other;
      taken.emplace_back(name, rect);
    };
    for (const Place& place : design.places) {
      EXPECT_GE(place.points, 10) << place.name;
      if (!Covers(place)) take(place.name, place.rect);
    }
    for (const StaticText& text : design.texts) {
      EXPECT_GE(text.points, 10) << text.text;
      take(text.text, text.rect);
    }
  }
}

TEST_F(DesignsTest, EveryControlHasAnAccessibleNameAndLanesDiffer) {
  Load();
  std::set<QString> laneButtons;
  for (FormView* view : Views()) {
    for (const Control& control : view->Of().Controls()) {
      const ControlView* seen = view->Find(control);
      if (seen == nullptr) continue;
      EXPECT_FALSE(seen->Widget()->accessibleName().isEmpty()) << control.FullName();
      if (control.Name() == "cmdLap") laneButtons.insert(seen->Widget()->accessibleName());
    }
  }
  EXPECT_EQ(laneButtons.size(), 4U);
}

// What is written on a widget, if it is any text.
QString Written(const QWidget& widget) {
  for (const char* property : {"text", "plainText", "currentText"}) {
    if (widget.property(property).isValid()) return widget.property(property).toString().trimmed();
  }
  return {};
}

// The contrast of the letters on a widget with what is behind them, in a picture of its window: the most
// frequent colour is the background, the one that differs most the letters'.
double LetterContrast(const QImage& picture, const QWidget& widget) {
  const double dots = picture.devicePixelRatio();
  QRect inner(widget.mapTo(widget.window(), QPoint(4, 4)), widget.size() - QSize(8, 8));
  const bool ticked = widget.inherits("QCheckBox") || widget.inherits("QRadioButton");
  if (ticked) inner.setLeft(inner.left() + 30);
  if (widget.inherits("QComboBox")) inner.setRight(inner.right() - 30);
  std::map<QRgb, int> seen;
  const QRect area = QRectF(inner.topLeft() * dots, inner.size() * dots).toRect().intersected(picture.rect());
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) ++seen[picture.pixel(x, y)];
  }
  if (seen.empty()) return 21;
  const auto fewer = [](const auto& a, const auto& b) { return a.second < b.second; };
  const QColor behind(std::max_element(seen.begin(), seen.end(), fewer)->first);
  double most = 1;
  for (const auto& [color, count] : seen) most = std::max(most, Contrast(behind, QColor(color)));
  return most;
}

TEST_F(DesignsTest, EveryWordCanBeReadInTheSun) {
  Load();
  std::set<std::string> found;
  const auto look = [&](const char* state) {
    windows.All().Apply();
    for (FormView* view : Views()) {
      QWidget& window = *view->window();
      QImage picture(window.size() * 2, QImage::Format_RGB32);
      picture.setDevicePixelRatio(2);
      window.render(&picture);
      for (const Control& control : view->Of().Controls()) {
        const ControlView* seen = view->Find(control);
        if (seen == nullptr || !seen->Widget()->isVisible() || Written(*seen->Widget()).isEmpty()) continue;
        if (LetterContrast(picture, *seen->Widget()) >= 4.5) continue;
        if (found.insert(control.FullName()).second)
          ADD_FAILURE() << control.FullName() << " while " << state;
      }
    }
  };
  frmJudge& judge = program.judge();
  look("waiting");
  for (Control* label : {&judge.lblNotSaved, &judge.lblController, &judge.lblNotice, &judge.lblSilent}) {
    label->SetCaption(label->Caption().empty() ? "Silent" : label->Caption());
    label->SetVisible(true);
  }
  for (Control* silent : program.link().lblSilent) silent->SetVisible(true);
  for (Control* station : program.link().lblStation) station->SetForeColor(kRed);
  look("something is wrong");
  program.race().RaceHolding = true;
  judge.DisplayStatus();
  judge.lblRaceMode.SetCaption("Hold");
  judge.lblRaceMode.SetForeColor(kRed);
  look("holding");
  program.race().RaceHolding = false;
  judge.chkSixtySecondCount.SetValue(1);
  Enter(EventKind::Click, "frmJudge.cmdStart");
  look("counting");
  Enter(EventKind::Click, "frmJudge.cmdReset");
  judge.chkSixtySecondCount.SetValue(0);
  Enter(EventKind::Click, "frmJudge.cmdStart");
  for (int lane = 0; lane < 4; ++lane) {
    program.lane(lane).DoLap(6000, 2000);
    program.lane(lane).DoCut("11", lane, 6500 + lane);
    if (lane % 2 == 0) program.lane(lane).DoTurn(4, 7000, 2000);
  }
  look("flying with cuts and lights");
  judge.FinalizeRace();
  program.race().RaceDone = true;
  judge.DisplayStatus();
  look("finished");
}

TEST_F(DesignsTest, LettersWithAltAreUsedOnceInTheConsole) {
  Load();
  std::set<QString> used;
  const auto use = [&](const QString& text) {
    const qsizetype at = text.indexOf(QLatin1Char('&'));
    if (at < 0) return;
    EXPECT_TRUE(used.insert(text.mid(at + 1, 1).toUpper()).second) << text.toStdString();
  };
  for (const QAction* menu : windows.Console().Menu()->actions()) use(menu->text());
  for (const Place& place : windows.Console().View().Design().places) {
    if (place.mnemonic != 0) use(QStringLiteral("&") + QLatin1Char(place.mnemonic));
  }
  for (const StaticText& text : windows.Console().View().Design().texts)
    use(QString::fromStdString(text.text));
  EXPECT_GE(used.size(), 12U);
}

TEST_F(DesignsTest, TabGoesThroughTheConsoleAndThenTheLanes) {
  Load();
  const std::vector<QWidget*> chain = windows.Console().View().TabChain();
  ASSERT_GT(chain.size(), 10U);
  QWidget* at = chain.front();
  for (std::size_t i = 1; i < chain.size(); ++i) {
    do {
      at = at->nextInFocusChain();
    } while ((at->focusPolicy() & Qt::TabFocus) == 0);
    EXPECT_EQ(at->objectName(), chain[i]->objectName());
  }
}

}  // namespace
}  // namespace quorvane
