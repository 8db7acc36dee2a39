#include "ui/designs.h"

#include <QAction>
#include <QImage>
#include <map>
#include <set>

#include "tests/ui/fixture.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

class DesignsTest : public ProgramTest {
 protected:
  std::vector<FormView*> Views() {
    std::vector<FormView*> views;
    for (const Form* form : program.door().AllForms().All()) {
      if (FormView* view = windows.All().FindView(*form)) views.push_back(view);
    }
    return views;
  }
};

TEST_F(DesignsTest, EveryControlHasItsPlaceAndNameAndEveryPlaceItsControl) {
  Load();
  std::set<QString> laneButtons;
  for (FormView* view : Views()) {
    for (const Control& control : view->Of().Controls()) {
      if (control.Kind() == ControlKind::Menu || control.Kind() == ControlKind::Timer) continue;
      const ControlView* seen = view->Find(&control);
      ASSERT_NE(seen, nullptr) << control.FullName();
      EXPECT_FALSE(seen->Widget()->accessibleName().isEmpty()) << control.FullName();
      if (control.Kind() == ControlKind::Button) {
        EXPECT_FALSE(seen->Widget()->toolTip().isEmpty()) << control.FullName();
      }
      if (control.Name() == "cmdLap") laneButtons.insert(seen->Widget()->accessibleName());
    }
    for (const Place& place : view->Design().places) {
      EXPECT_NE(view->Of().Find(place.name), nullptr) << view->Of().Name() << "." << place.name;
    }
  }
  EXPECT_EQ(laneButtons.size(), 4U);
  for (const Control& entry : program.judge().Controls()) {
    if (entry.Kind() != ControlKind::Menu || entry.Parent() == nullptr || entry.Caption() == "-") continue;
    EXPECT_FALSE(windows.Console().Menu()->Find(&entry)->statusTip().isEmpty()) << entry.Name();
  }
  for (const Place& place : LaneDesign(4).places) {
    EXPECT_TRUE(place.name != "cmdCut" || place.key == "F8 F12 0") << place.key;
  }
}

TEST_F(DesignsTest, ControlsNeitherOverlapNorLeaveTheirFormAndNoTextIsUnderTenPoints) {
  for (const FormDesign& design : {ConsoleDesign(), LaneDesign(1), LinkDesign(), LogDesign(), TimerDesign(),
                                   KeyboardDesign(), AboutDesign()}) {
    QRegion taken;
    const auto take = [&](const std::string& name, const QRect& rect, double points) {
      EXPECT_TRUE(QRect(0, 0, design.width, design.height).contains(rect)) << name;
      EXPECT_FALSE(taken.intersects(rect)) << name;
      EXPECT_GE(points, 10) << name;
      taken += rect;
    };
    for (const Place& place : design.places) {
      const bool covers = place.anchoring != Anchoring::None || place.name.starts_with("fra");
      if (!covers) take(place.name, place.rect, place.points);
    }
    for (const StaticText& text : design.texts) take(text.text, text.rect, text.points);
  }
}

TEST_F(DesignsTest, TheNoticeHasTheRoomOfTheRollCallWhileThatIsHidden) {
  Load();
  for (const bool called : {false, true, false}) {
    program.judge().lblSilent.SetVisible(called);
    windows.All().Apply();
    EXPECT_EQ(Shown(program.judge().lblNotice)->height() > 100, !called);
  }
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
  const bool ticked = widget.inherits("QCheckBox") || widget.inherits("QRadioButton");
  const bool list = widget.inherits("QComboBox");
  const QRect inner = widget.rect().adjusted(ticked ? 34 : 4, 4, list ? -34 : -4, -4);
  const QImage part = picture.copy({widget.mapTo(widget.window(), inner.topLeft()) * 2, inner.size() * 2});
  std::map<QRgb, int> seen;
  for (int y = 0; y < part.height(); ++y) {
    for (int x = 0; x < part.width(); ++x) ++seen[part.pixel(x, y)];
  }
  const auto fewer = [](const auto& a, const auto& b) { return a.second < b.second; };
  const QColor behind(std::max_element(seen.begin(), seen.end(), fewer)->first);
  double most = 1;
  for (const auto& [color, count] : seen) most = std::max(most, Contrast(behind, QColor(color)));
  return most;
}

TEST_F(DesignsTest, EveryWordCanBeReadInEveryScheme) {
  Load();
  const auto lookIn = [&](Scheme scheme, const char* state) {
    DressApplication(scheme);
    windows.All().Apply();
    for (FormView* view : Views()) {
      QWidget& window = *view->window();
      QImage picture(window.size() * 2, QImage::Format_RGB32);
      picture.setDevicePixelRatio(2);
      window.render(&picture);
      for (const Control& control : view->Of().Controls()) {
        const ControlView* seen = view->Find(&control);
        if (seen == nullptr || !seen->Widget()->isVisible() || Written(*seen->Widget()).isEmpty()) continue;
        EXPECT_GE(LetterContrast(picture, *seen->Widget()), 4.5)
            << control.FullName() << " while " << state << ", scheme " << static_cast<int>(scheme);
      }
    }
  };
  const auto look = [&](const char* state) {
    for (const Scheme scheme : {Scheme::Dark, Scheme::Outdoor, Scheme::Light}) lookIn(scheme, state);
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
  judge.chkSixtySecondCount.SetValue(0);
  Enter(EventKind::Click, "frmJudge.cmdStart");
  for (int lane = 0; lane < 4; ++lane) {
    program.lane(lane).DoLap(6000, 2000);
    program.lane(lane).DoCut("11", lane, 6500 + lane);
    if (lane % 2 == 0) program.lane(lane).DoTurn(4, 7000, 2000);
  }
  look("flying with cuts and lights");
  judge.FinalizeRace();
  Enter(EventKind::Timer, "frmJudge.tmrTimeTick");
  look("finished");
}

// The same window, whether it has always worn a scheme or been given it.
TEST_F(DesignsTest, SchemeIsPutOnWhileTheProgramRuns) {
  Load();
  Settle();
  const QImage before = windows.Console().grab().toImage();
  DressApplication(Scheme::Dark);
  const QImage dark = windows.Console().grab().toImage();
  DressApplication(Scheme::Outdoor);
  DressApplication(Scheme::Dark);
  EXPECT_EQ(windows.Console().grab().toImage(), dark);
  DressApplication();
  EXPECT_EQ(windows.Console().grab().toImage(), before);
  EXPECT_NE(before, dark);
}

TEST_F(DesignsTest, TabGoesThroughTheConsoleAndThenTheLanes) {
  Load();
  std::vector<QString> designed;
  std::vector<QString> chain;
  const auto add = [](std::vector<QString>& to, const QWidget& widget) {
    const bool stop = widget.objectName().startsWith("frm") && (widget.focusPolicy() & Qt::TabFocus) != 0;
    if (stop) to.push_back(widget.objectName());
  };
  for (FormView* view : Views()) {
    if (view->window() != &windows.Console()) continue;
    for (const Place& place : view->Design().places) add(designed, *view->FindWidget(place.name));
  }
  QWidget* const console = &windows.Console();
  for (QWidget* at = console->nextInFocusChain(); at != console; at = at->nextInFocusChain()) add(chain, *at);
  EXPECT_EQ(chain, designed);
  EXPECT_GT(chain.size(), 30U);
}

}  // namespace
}  // namespace quorvane
