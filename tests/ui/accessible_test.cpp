// What a screen reader is told.

#include <QAccessible>
#include <QMenuBar>
#include <map>
#include <set>

#include "tests/ui/fixture.h"
#include "ui/first_start.h"
#include "ui/view_menu.h"

namespace quorvane {
namespace {

using Role = QAccessible::Role;

class AccessibleTest : public AllWindowsTest {
 protected:
  // Everything below it, also what is hidden now. What is to be worked with has a name of its own, no
  // control's.
  void Walk(QAccessibleInterface* at, const std::string& where) {
    const auto name = at->text(QAccessible::Name).toStdString();
    const QString object = at->object() == nullptr ? QString() : at->object()->objectName();
    static const std::set<int> kNameless = {Role::Client,      Role::Window,    Role::Pane,      Role::Table,
                                            Role::LayeredPane, Role::PopupMenu, Role::ScrollBar, Role::Border,
                                            Role::Separator,   Role::List,      Role::MenuBar,   Role::Cell,
                                            Role::ToolTip,     Role::Indicator};
    // The toolkit's own, within a control that has a name; the row of a box's buttons.
    const bool row = at->role() == Role::Grouping && at->object()->inherits("QDialogButtonBox");
    if (object.startsWith("qt_") && at->childCount() == 0) return;
    EXPECT_NE(at->role(), Role::NoRole) << where;
    const bool ours = object.startsWith("frm") && at->role() != Role::Separator;
    const bool blank = at->role() == Role::StaticText && !ours;  // a line that has nothing to say now
    if (ours || (kNameless.count(at->role()) == 0 && !blank && !row)) {
      EXPECT_NE(name, "") << where << ", role " << at->role();
      EXPECT_FALSE(ours && !at->state().invisible && object.endsWith(QString::fromStdString("." + name)))
          << where << ", " << name;
      ++roles[at->role()];
    }
    for (int i = 0; i < at->childCount(); ++i) {
      if (QAccessibleInterface* child = at->child(i)) Walk(child, where + " / " + name);
    }
  }
  void WalkWindows() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible()) continue;
      titles.insert(window->windowTitle().toStdString());
      Walk(QAccessible::queryAccessibleInterface(window), window->windowTitle().toStdString());
    }
  }
  QAccessibleInterface* Of(const Control& control) {
    return QAccessible::queryAccessibleInterface(Shown(control));
  }

  ViewMenu view{windows.Console(), settings};
  std::map<int, int> roles;
  std::set<std::string> titles;
};

TEST_F(AccessibleTest, EverythingHasARoleAndAName) {
  Load();
  MakeAll();
  for (const char* control :
       {"frmJudge.mnuTimerSettings", "frmJudge.mnuKeyboard", "frmJudge.mnuAbout", "frmJudge.mnuLog",
        "frmJudge.mnuResults", "frmJudge.mnuScoreboard", "frmJudge.mnuPrintPreview", "frmSerialPort.cmdMore",
        "frmSerialPort.cmdPractice"}) {
    Click(control);
  }
  FirstStartForm first(settings, {{5, "ttyUSB0"}}, InFolder(""), MomentOf(2026, 11, 21));
  first.show();
  OpenPrinterSetup({}, {}, settings, &windows.Console());
  Settle();
  for (const DialogKind kind : {DialogKind::YesNoCancel, DialogKind::Input}) {
    QTimer::singleShot(10, [&] {
      WalkWindows();
      Press(QApplication::activeModalWidget(), Qt::Key_Escape);
    });
    ShowQtDialog({kind, "Box", "Text"}, &windows.Console());
  }
  Click("frmJudge.mnuProtestSheet");
  Settle();
  WalkWindows();
  for (const char* title : {"Practice Field", "Quorvane First Start", "Print Preview", "Protest Sheet",
                            "Printer Setup", "Box", "Laps and Cuts", "Results", "Scoreboard"}) {
    EXPECT_TRUE(titles.contains(title)) << title;
  }
  for (const Role role : {Role::Button, Role::StaticText, Role::CheckBox, Role::RadioButton, Role::ComboBox,
                          Role::Grouping, Role::EditableText, Role::MenuItem, Role::Tree}) {
    EXPECT_GT(roles[role], 0) << "role " << role;
  }
}

TEST_F(AccessibleTest, NamesSayLaneAndControlAndStatesAreThoseOfTheControls) {
  Load();
  const auto expect = [&](const Control& control, Role role, const char* name) {
    EXPECT_EQ(Of(control)->role(), role) << control.FullName();
    EXPECT_EQ(Of(control)->text(QAccessible::Name).toStdString(), name);
  };
  frmJudge& judge = program.judge();
  Click("frmJudge.cmdStart");
  program.lane(1).DoCut("11", 1, 6500);
  windows.All().Apply();
  expect(program.lane(1).cmdLap, Role::Button, "Lane 2 Lap");
  expect(program.lane(1).cmdCut, Role::Button, "Lane 2 Cuts(2)");
  expect(program.lane(2).lblLow, Role::StaticText, "Lane 3 low marking");
  expect(program.lane(1).lblLow, Role::StaticText, "Lane 2 low marking, lit");
  expect(program.lane(3).lblStatus, Role::Button, "Lane 4 status");
  expect(program.lane(0).fraLane, Role::Grouping, "Lane 1 panel");
  expect(judge.lblStatus, Role::StaticText, "Race clock: 0.0");
  expect(judge.txtHeat, Role::EditableText, "Heat");
  expect(judge.cboRaceMode, Role::ComboBox, "Race mode: AMA 1324");
  expect(judge.chkSixtySecondCount, Role::CheckBox, "60 Second Count");
  EXPECT_EQ(Of(judge.chkSixtySecondCount)->state().checked, judge.chkSixtySecondCount.Value() != 0);
  EXPECT_TRUE(Of(judge.chkSixtySecondCount)->state().disabled);  // a race is flown
  EXPECT_FALSE(Of(program.lane(1).cmdLap)->state().disabled);
  EXPECT_TRUE(Of(judge.txtHeat)->state().disabled);
  // A label that is clicked can be pressed without a mouse.
  Control& station = program.link().lblStation[2];
  expect(station, Role::Button, "Judges 3");
  Of(station)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(program.link().cmdStation.Visible());
}

}  // namespace
}  // namespace quorvane
