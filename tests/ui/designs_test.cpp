#include "ui/designs.h"

#include <QAction>
#include <QPushButton>
#include <set>

#include "tests/ui/program_fixture.h"

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
