// What was entered is put right with the keys alone, and with the pointer alone.

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QTreeWidget>
#include <algorithm>

#include "tests/ui/fixture.h"

namespace quorvane {
namespace {

class CorrectionsTest : public OperatorTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    OperatorTest::SetUp();
    platform.SetAnswerer({});
    QObject::connect(&boxes_, &QTimer::timeout, [this] {
      QWidget* box = QApplication::activeModalWidget();
      if (box == nullptr) return;
      QTest::keyClicks(box->focusWidget(), reply);
      QTest::keyClick(box->focusWidget(), reply.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    });
    boxes_.start(5);
  }

  bool ByKeys() const { return GetParam(); }
  frmLog& table() { return judge().LapsAndCuts(); }

  // The desktop gives the focus back when a box or a menu has closed; the offscreen platform does not.
  static void KeyIn(QWidget& window, Qt::Key key, Qt::KeyboardModifier modifier) {
    window.activateWindow();
    Settle();
    QTest::keyClick(window.windowHandle(), key, modifier);
    Settle();
  }
  // A control with its letter, or with a click.
  void Press(Control& control, Qt::Key letter) {
    if (!ByKeys()) return Click(control);
    KeyIn(*Shown(control)->window(), letter, Qt::AltModifier);
    QTest::qWait(150);  // so long it is shown as pressed before it acts
  }
  // An entry of the menu that is open: the letter that chooses it, or a click.
  void Take(const QString& text, Qt::Key letter) {
    const QPointer menu(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    ASSERT_NE(menu, nullptr) << text.toStdString();
    const auto entries = menu->actions();
    const auto entry = std::ranges::find(entries, text, &QAction::text);
    ASSERT_NE(entry, entries.end()) << text.toStdString();
    if (ByKeys()) {
      QTest::keyClick(menu, letter);
    } else {
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(*entry).center());
    }
    if (menu != nullptr) menu->close();
    Settle();
  }
  void Edit(const QString& text, Qt::Key letter) {
    if (ByKeys()) {
      KeyIn(windows.Console(), Qt::Key_I, Qt::AltModifier);
    } else {
      MenuView& menu = *windows.Console().Menu();
      QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.Find(&judge().mnuEdit)).center());
    }
    Take(text, letter);
  }
  // The menu of a lane: what the desktop makes of the menu key and of a right click.
  void OpenTable(int lane) {
    QWidget* at = Shown(ByKeys() ? program.lane(lane).chkNovice : program.lane(lane).lblLaneName);
    if (ByKeys()) at->setFocus();
    QContextMenuEvent event(ByKeys() ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse, {},
                            at->mapToGlobal(QPoint()));
    QCoreApplication::sendEvent(at, &event);
    Take("&Laps and Cuts ...", Qt::Key_L);
    ASSERT_TRUE(WaitFor([&] { return Rows().hasFocus(); }));
  }
  QTreeWidget& Rows() { return *Shown<QTreeWidget>(table().lstEntries); }
  // From the last row, where the table opens.
  void Choose(int row) {
    QTreeWidgetItem* item = Rows().topLevelItem(row);
    ASSERT_NE(item, nullptr);
    if (!ByKeys()) {
      QTest::mouseClick(Rows().viewport(), Qt::LeftButton, {}, Rows().visualItemRect(item).center());
    } else {
      quorvane::Press(&Rows(), Qt::Key_End);
      for (int i = Rows().topLevelItemCount() - 1; i > row; --i) quorvane::Press(&Rows(), Qt::Key_Up);
    }
    EXPECT_EQ(table().lstEntries.ListIndex(), row);
  }
  // What the table shows of its entries, their times left out.
  std::string Told() {
    std::string told;
    for (int i = 0; i < Rows().topLevelItemCount(); ++i) {
      told += Rows().topLevelItem(i)->text(2).toStdString() + ", ";
    }
    return told;
  }

  QString reply;  // is typed into each box that opens; empty: it is left

 private:
  QTimer boxes_;
};

TEST_P(CorrectionsTest, ARunningRaceIsPutRight) {
  program.judge().chkSixtySecondCount.SetValue(0);
  Key(Qt::Key_F1);
  QTest::qWait(20);  // the turn and the cut come after the lap that is inserted
  Click(program.lane(1).cmdTurn);
  Click(program.lane(1).cmdCut);
  OpenTable(1);
  EXPECT_EQ(Told(), "Turn, Cut ME, ");
  reply = "3";
  Press(table().cmdMove, Qt::Key_M);
  EXPECT_EQ(Told(), "Turn, Cut MP3, ");
  Choose(0);
  Press(table().cmdStrike, Qt::Key_S);
  EXPECT_EQ(Told(), "Cut MP3, ");
  reply = "0.01";
  Press(table().cmdInsert, Qt::Key_I);
  EXPECT_EQ(Told(), "Lap 1, Cut MP3, ");
  EXPECT_EQ(table().lstEntries.ListIndex(), 0);
  for (const bool fromTable : {true, false}) {
    for (const auto& [letter, told] : {std::pair(Qt::Key_Z, "Cut MP3, "),
                                       {Qt::Key_Z, "Turn, Cut MP3, "},
                                       {Qt::Key_Y, "Cut MP3, "},
                                       {Qt::Key_Y, "Lap 1, Cut MP3, "}}) {
      KeyIn(fromTable ? *Rows().window() : windows.Console(), letter, Qt::ControlModifier);
      EXPECT_EQ(Told(), told);
    }
  }
  Edit("&Undo lap 1, lane 2", Qt::Key_U);
  Edit("&Undo strike of turn, lane 2", Qt::Key_U);
  EXPECT_EQ(Told(), "Turn, Cut MP3, ");
  Edit("&Redo strike of turn, lane 2", Qt::Key_R);
  EXPECT_EQ(Told(), "Cut MP3, ");
  Press(table().cmdClose, Qt::Key_C);
  EXPECT_FALSE(Rows().isVisible());
}

TEST_P(CorrectionsTest, ASavedRaceIsAmended) {
  const char* const race[][3] = {{"Race1", "Timestamp", "46347.5, 11/21/2026 12:00:00 PM"},
                                 {"Race1", "RaceMode", "2, AMA 1324"},
                                 {"Race1_Lane1", "NumEvents", "2"},
                                 {"Race1_Lane1", "Event0", "1,4,L,TM,8000,0"},
                                 {"Race1_Lane1", "Event1", "1,1,C,P2,9000,9000"}};
  for (const auto& [section, key, value] : race) program.project().SetProjectValue(section, key, value);
  judge().ShowCurrentRace();
  Enter(EventKind::Timer, "");
  Edit("&Amend Race", Qt::Key_A);
  OpenTable(0);
  EXPECT_EQ(Told(), "Lap 1, Cut P2, ");
  Press(table().cmdStrike, Qt::Key_S);
  reply = "16";
  Press(table().cmdInsert, Qt::Key_I);
  EXPECT_EQ(Told(), "Lap 1, Lap 2, ");
  Press(table().cmdClose, Qt::Key_C);
  reply = "";
  ByKeys() ? KeyIn(windows.Console(), Qt::Key_S, Qt::ControlModifier) : Click(judge().cmdSave);
  for (const std::string line :
       {"\nAmendments=1\r", "\nWas1_Event1=1,1,C,P2,9000,9000\r", ";struck;P2;1,1,C,P2,9000,9000;\r",
        "\nEvent1=2,4,L,TM,16000,0\r", ";inserted;hand;;2,4,L,TM,16000,0\r"}) {
    EXPECT_TRUE(WaitFor([&] { return FileBytes(project).find(line) != std::string::npos; })) << line;
  }
}

INSTANTIATE_TEST_SUITE_P(Way, CorrectionsTest, testing::Bool(),
                         [](const auto& way) { return way.param ? "Keys" : "Pointer"; });

}  // namespace
}  // namespace quorvane
