// An operator who does anything at all while a noisy field is on the air.

#include <QAbstractButton>
#include <QClipboard>
#include <QDialog>
#include <QMimeData>
#include <random>

#include "field/field.h"
#include "tests/ui/fixture.h"

namespace quorvane {
namespace {

class RandomDrive : public AllWindowsTest {
 protected:
  RandomDrive() {
    UsePort5();
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

  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  template <typename T>
  auto Any(const T& choices) {
    return choices[static_cast<typename T::size_type>(random_()) % choices.size()];
  }

  void AnswerBox() {
    QWidget* box = QApplication::activeModalWidget();
    if (box == nullptr) return;
    if (Below(4) == 0) return Press(box, Below(2) == 0 ? Qt::Key_Escape : Qt::Key_Return);
    if (Below(3) == 0) QTest::keyClicks(box, Below(2) == 0 ? "3" : "x9");
    const QList<QAbstractButton*> buttons = box->findChildren<QAbstractButton*>();
    if (!buttons.empty()) Any(buttons)->click();
  }

  void PressAnyKey() {
    static const std::vector kKeys = {Qt::Key_F1,    Qt::Key_F5,     Qt::Key_F8,   Qt::Key_F12,
                                      Qt::Key_7,     Qt::Key_0,      Qt::Key_Tab,  Qt::Key_Escape,
                                      Qt::Key_Space, Qt::Key_Return, Qt::Key_Down, Qt::Key_Backspace};
    QWidget* front = QApplication::activeWindow();
    if (front != nullptr && front->windowHandle() != nullptr)
      QTest::keyClick(front->windowHandle(), Any(kKeys));
  }

  void ClickAnywhere() {
    std::vector<QWidget*> places;
    for (QWidget* place : QApplication::allWidgets()) {
      const QWidget* window = place->window();
      const bool inSight = place->isVisible() && place != window && window->windowHandle() != nullptr;
      if (inSight && qobject_cast<const QDialog*>(window) == nullptr) places.push_back(place);
    }
    if (!places.empty()) ClickIn(*Any(places));
  }
  void ClickIn(QWidget& place) {
    const QPoint at(Below(place.width() + 1), Below(place.height() + 1));
    QTest::mouseClick(place.window()->windowHandle(), Below(12) == 0 ? Qt::MiddleButton : Qt::LeftButton, {},
                      place.mapTo(place.window(), at));
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  }

  void TypeOrPaste() {
    ClickIn(*Shown(program.judge().txtComments));
    QClipboard& clipboard = *QGuiApplication::clipboard();
    if (Below(3) == 0) clipboard.setMimeData(new QMimeData);
    if (Below(3) == 0) clipboard.setText(QString(Below(3000), QChar(u'\u00e9')));
    QWindow* console = windows.Console().windowHandle();
    if (Below(2) == 0) return QTest::keyClick(console, Qt::Key_V, Qt::ControlModifier);
    for (const char c : {'g', 'u', 's', 't', '7'}) QTest::keyClick(console, c);
  }

  void ChooseFromMenu() {
    std::vector<std::string> entries;
    for (const Control& control : program.judge().Controls()) {
      const bool entry = control.Kind() == ControlKind::Menu && control.onClick;
      if (entry && control.Name() != "mnuExit") entries.push_back(control.FullName());
    }
    Enter(EventKind::Click, Any(entries));
  }

  void Act() {
    const int choice = Below(16);
    if (choice > 8) return ClickAnywhere();
    if (choice > 5) return PressAnyKey();
    if (choice == 0) return TypeOrPaste();
    if (choice == 1 || choice == 5) return ChooseFromMenu();
    if (choice == 2) return windows.Console().resize(1024 + Below(900), 700 + Below(500));
    if (choice == 3) serial.busy = {{5, {Below(4) == 0 ? kErrorBusy : 0, "Another program is using it."}}};
    program.door().Enter(choice == 3 ? Event{.kind = EventKind::Ports, .numbers = {5}}
                                     : Event{.kind = EventKind::LineError, .number = 1000 + Below(12)});
  }

  // What must hold whatever was done.
  void ExpectSound() {
    const auto placed = [&](const char* place) {
      int lanes = 0;
      for (int i = 0; i < 4; ++i) lanes += program.lane(i).lblStatus.Caption() == place ? 1 : 0;
      return lanes;
    };
    EXPECT_FALSE(program.judge().cmdSave.Enabled() && (placed("First") > 1 || placed("Second") > 1));
    EXPECT_TRUE(program.project().Saved()) << program.project().Problem();
  }

  std::mt19937 random_{20261121};
  bool driving_ = false;
  QTimer boxes_;
};

// QUORVANE_LONG drives through 4000 actions.
TEST_F(RandomDrive, EndsCleanWhateverTheOperatorDoesWithANoisyFieldOnTheAir) {
  Load();
  boxes_.start(15);
  driving_ = true;
  field::FieldOptions options{.heats = 0, .mode = 0, .count = false, .quick = true};
  options.line = {.noise = 0.05, .loss = 0.05, .damage = 0.05, .split = true};
  field::Field field(options);
  field.BeginHeats(0);
  const bool longer = qEnvironmentVariable("QUORVANE_LONG") == "1";
  const int actions = longer ? 4000 : 400;
  const std::int64_t pace = longer ? 120 : 500;  // ms of the field for each action
  for (int i = 1; i <= actions && !HasFailure(); ++i) {
    for (const field::Chunk& chunk : field.AdvanceTo(i * pace)) {
      program.door().Enter({.kind = EventKind::Bytes, .bytes = chunk.bytes});
    }
    Act();
    Settle();
    if (i % 50 == 0) {  // one who has strayed to another port, or into practice, comes back
      Enter(EventKind::Click, "frmPractice.cmdEnd");
      program.door().Enter({.kind = EventKind::Ports, .numbers = {5}});
      Enter(EventKind::Click, "frmSerialPort.optPort(1)");
    }
    ExpectSound();
  }
  driving_ = false;
  WaitFor([] { return QApplication::activeModalWidget() == nullptr; });
  boxes_.stop();
  EXPECT_GT(program.link().Counters().good, 500) << "the field was on the air";
}

}  // namespace
}  // namespace quorvane
