// An operator who does anything at all while a noisy field is on the air.

#include <QAbstractButton>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>
#include <random>
#include <set>

#include "field/field.h"
#include "tests/ui/program_fixture.h"
#include "ui/printing/qt_printer.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"
#include "ui/small_windows.h"

namespace quorvane {
namespace {

class RandomDrive : public ProgramTest {
 protected:
  RandomDrive() {
    serial.ports = {{5, true}};
    settings.SaveSetting("frmSerialPort", "CommPort", "5");
    AddSmallWindows(program, windows.All(), windows.Console());
    // Most boxes are real ones, answered by the keys and clicks of the drive.
    platform.SetAnswerer([this](const DialogBox& box) -> std::optional<DialogAnswer> {
      shown.push_back(box.title);
      if (box.kind == DialogKind::OpenFile || box.kind == DialogKind::SaveFile) return DialogAnswer{};
      if (box.title == "Close Quorvane") return DialogAnswer{DialogAnswer::Word::No};
      if (!driving_ || Below(3) == 0) return Demo::Answer(box);
      return std::nullopt;
    });
    printer.SetSpooler([](const PrinterChoice&, const RaceRecord&, const Imprint&) {
      return PrintOutcome{true, "printed"};
    });
    QObject::connect(&boxes_, &QTimer::timeout, [this] { AnswerBox(); });
  }

  unsigned Below(unsigned limit) { return random_() % limit; }
  template <typename T>
  T* Any(const std::vector<T*>& choices) {
    return choices.empty() ? nullptr : choices[Below(static_cast<unsigned>(choices.size()))];
  }

  void AnswerBox() {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return;
    if (Below(4) == 0) return QTest::keyClick(box, Below(2) == 0 ? Qt::Key_Escape : Qt::Key_Return);
    if (Below(3) == 0) QTest::keyClicks(box, Below(2) == 0 ? "3" : "x9");
    const QList<QAbstractButton*> buttons = box->findChildren<QAbstractButton*>();
    if (QAbstractButton* button = Any(std::vector<QAbstractButton*>(buttons.begin(), buttons.end())))
      button->click();
  }

  void PressAnyKey() {
    static const std::vector<int> kKeys = {Qt::Key_F1,   Qt::Key_F2,       Qt::Key_F5,    Qt::Key_F8,
                                           Qt::Key_F9,   Qt::Key_F12,      Qt::Key_7,     Qt::Key_0,
                                           Qt::Key_Tab,  Qt::Key_Escape,   Qt::Key_Space, Qt::Key_Return,
                                           Qt::Key_Down, Qt::Key_Backspace};
    QWidget* front = QApplication::activeWindow();
    if (front == nullptr || front->windowHandle() == nullptr) return;
    QTest::keyClick(front->windowHandle(),
                    static_cast<Qt::Key>(kKeys[Below(static_cast<unsigned>(kKeys.size()))]));
  }

  void ClickAnywhere() {
    std::vector<QWidget*> places;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible() || window->windowHandle() == nullptr ||
          qobject_cast<QDialog*>(window) != nullptr)
        continue;
      for (QWidget* child : window->findChildren<QWidget*>()) {
        if (child->isVisible() && child->window() == window) places.push_back(child);
      }
    }
    QWidget* place = Any(places);
    if (place == nullptr) return;
    const QPoint at = place->mapTo(
        place->window(), QPoint(static_cast<int>(Below(static_cast<unsigned>(place->width() + 1))),
                                static_cast<int>(Below(static_cast<unsigned>(place->height() + 1)))));
    const auto button = Below(12) == 0 ? Qt::MiddleButton : Qt::LeftButton;
    QTest::mouseClick(place->window()->windowHandle(), button, {}, at);
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  }

  void TypeOrPaste() {
    QWidget* comments = Shown(program.judge().txtComments);
    QTest::mouseClick(windows.Console().windowHandle(), Qt::LeftButton, {},
                      comments->mapTo(&windows.Console(), comments->rect().center()));
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (Below(3) == 0) clipboard.setMimeData(new QMimeData);
    if (Below(3) == 0) clipboard.setText(QString(static_cast<int>(Below(3000)), QChar(u'\u00e9')));
    QWindow* console = windows.Console().windowHandle();
    if (Below(2) == 0) {
      for (const char c : {'g', 'u', 's', 't', '7'}) QTest::keyClick(console, c);
    } else {
      QTest::keyClick(console, Qt::Key_V, Qt::ControlModifier);
    }
  }

  void ChooseFromMenu() {
    std::vector<Control*> entries;
    for (const Control& control : program.judge().Controls()) {
      Control* entry = program.judge().Find(control.Name());
      if (control.Kind() == ControlKind::Menu && control.onClick && entry != &program.judge().mnuExit)
        entries.push_back(entry);
    }
    Enter(EventKind::Click, Any(entries)->FullName());
  }

  void Act() {
    switch (Below(16)) {
      case 0:
        return TypeOrPaste();
      case 1:
        return ChooseFromMenu();
      case 2:
        return windows.Console().resize(1024 + static_cast<int>(Below(900)),
                                        700 + static_cast<int>(Below(500)));
      case 3:
        serial.ports[5] = Below(4) != 0;
        return program.door().Enter({.kind = EventKind::Ports, .numbers = {5}});
      case 4:
        return program.door().Enter(
            {.kind = EventKind::LineError, .number = 1000 + static_cast<int>(Below(12))});
      case 5:
      case 6:
      case 7:
        return PressAnyKey();
      default:
        return ClickAnywhere();
    }
  }

  // What must hold whatever was done.
  void ExpectSound() {
    std::set<std::string> places;
    for (int i = 0; i < 4; ++i) {
      frmLane& lane = program.lane(i);
      const std::string& place = lane.lblStatus.Caption();
      if (program.judge().cmdSave.Enabled() && (place == "First" || place == "Second")) {
        EXPECT_TRUE(places.insert(place).second) << "two lanes are " << place;
      }
      EXPECT_LE(lane.EventCount(), 101);
    }
    EXPECT_TRUE(program.project().Saved()) << program.project().Problem();
  }

  std::mt19937 random_{20261121};
  bool driving_ = false;
  QTimer boxes_;
  ResultsWindow results{program, windows};
  Scoreboard scoreboard{program, windows, settings};
  QtHeatPrinter printer{program, platform, &windows.Console()};
};

// QUORVANE_LONG drives through 4000 actions.
TEST_F(RandomDrive, EndsCleanWhateverTheOperatorDoesWithANoisyFieldOnTheAir) {
  Load();
  boxes_.start(15);
  driving_ = true;
  field::FieldOptions options;
  options.heats = 0;
  options.mode = 0;
  options.count = false;
  options.quick = true;
  options.line = {.noise = 0.05, .loss = 0.05, .damage = 0.05, .split = true};
  field::Field field(options);
  field.BeginHeats(0);
  const char* isLong = std::getenv("QUORVANE_LONG");
  const bool longer = isLong != nullptr && *isLong == '1';
  const int actions = longer ? 4000 : 400;
  const std::int64_t pace = longer ? 120 : 500;  // ms of the field for each action
  for (int i = 1; i <= actions && !HasFailure(); ++i) {
    for (const field::Chunk& chunk : field.AdvanceTo(i * pace)) {
      program.door().Enter({.kind = EventKind::Bytes, .bytes = chunk.bytes});
    }
    Act();
    Settle();
    ExpectSound();
  }
  driving_ = false;
  WaitFor([] { return QApplication::activeModalWidget() == nullptr; });
  boxes_.stop();
  EXPECT_GT(shown.size(), 3U);
}

}  // namespace
}  // namespace quorvane
