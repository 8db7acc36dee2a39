// The operator's keys and clicks, as the desktop hands them to the windows.

#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>

#include "tests/ui/program_fixture.h"

namespace quorvane {
namespace {

class InputTest : public ProgramTest {
 protected:
  void SetUp() override {
    Load();
    windows.Console().activateWindow();
    Settle();
  }

  void Click(Control& control) { ClickAt(*Shown(control)); }
  static void ClickAt(QWidget& widget, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(widget.window()->windowHandle(), button, {},
                      widget.mapTo(widget.window(), widget.rect().center()));
    Settle();
  }
  static void Keys(QWidget& window, const char* text) {
    for (; *text != 0; ++text) QTest::keyClick(window.windowHandle(), *text);
  }
  void Keys(const char* text) { Keys(windows.Console(), text); }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(windows.Console().windowHandle(), key, modifiers);
  }
  frmJudge& judge() { return program.judge(); }
};

TEST_F(InputTest, CommentsAndLapBoxesAreTypedWholeAfterTheFirstLetterReplacedTheOldText) {
  for (Control* box : {&judge().txtComments, &program.lane(0).txtLapTen}) {
    box->SetText("No comments");
    windows.All().Apply();
    Click(*box);
    Keys("gusty 5");
    EXPECT_EQ(box->Text(), "gusty 5") << box->FullName();
  }
}

TEST_F(InputTest, ASavedRaceThatIsShownIsReadAndNotWritten) {
  for (const auto& [section, key, text] :
       {std::tuple("Race1", "Timestamp", "1"), std::tuple("Race1", "Comments", "gusty"),
        std::tuple("Race1_Lane1", "Placing", "First")}) {
    program.project().SetProjectValue(section, key, text);
  }
  Click(judge().cmdIncHeat);
  Click(judge().cmdDecHeat);
  const std::size_t boxes = shown.size();
  frmLane& lane = program.lane(0);
  for (Control* control : {&judge().txtComments, &lane.txtLapTen, &lane.lblStatus}) {
    Click(*control);
    Keys("calm");
  }
  EXPECT_EQ(shown.size(), boxes);
  EXPECT_EQ(judge().txtComments.Text() + lane.txtLapTen.Text() + lane.lblStatus.Caption(), "gustyFirst");
  EXPECT_TRUE(Shown(judge().txtComments)->isEnabled()) << "long comments are scrolled";
  Click(judge().cmdIncHeat);
  Click(judge().txtComments);
  Keys("calm");
  EXPECT_EQ(judge().txtComments.Text(), "calm");
}

TEST_F(InputTest, PastingNothingChangesNothing) {
  QGuiApplication::clipboard()->setMimeData(new QMimeData);
  Click(judge().txtComments);
  Keys("wind");
  Key(Qt::Key_V, Qt::ControlModifier);
  Key(Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(judge().txtComments.Text(), "wind");
  QGuiApplication::clipboard()->setText("y");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(judge().txtComments.Text(), "windy");
}

TEST_F(InputTest, HeatBeingTypedIsTheOneThatIsStarted) {
  const std::vector<std::function<void()>> starts = {[this] { Key(Qt::Key_F1); },
                                                     [this] { Key(Qt::Key_T, Qt::AltModifier); },
                                                     [this] { Click(judge().cmdStart); }};
  for (std::size_t i = 0; i < starts.size(); ++i) {
    Click(i == 1 ? judge().txtRound : judge().txtHeat);
    Keys("3");
    starts[i]();
    WaitFor([&] { return judge().RaceBeingFlown(); }, 300);
    EXPECT_TRUE(judge().RaceBeingFlown()) << i;
    EXPECT_EQ(program.race().RaceNumber, i == 1 ? 9 : 3) << i;
    program.race().RaceActive = false;
    judge().cmdReset_Click();
    program.race().RaceNumber = 1;
    judge().ShowCurrentRace();
    Enter(EventKind::Timer, "");
  }
}

}  // namespace
}  // namespace quorvane
