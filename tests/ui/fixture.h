#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>

#include "field/pseudo_terminal.h"
#include "tests/support/console_rig.h"
#include "ui/demo.h"
#include "ui/printing/qt_printer.h"
#include "ui/program_windows.h"
#include "ui/qt/qt_platform.h"
#include "ui/qt/qt_serial.h"
#include "ui/qt/qt_settings.h"
#include "ui/results_window.h"
#include "ui/scoreboard.h"
#include "ui/widgets/caption_label.h"

namespace quorvane {

// Lets events be delivered until the condition holds; false when it never does.
inline bool WaitFor(const std::function<bool()>& condition, int ms = 3000) {
  return QTest::qWaitFor(condition, ms);
}

inline void Settle() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

inline void Press(QWidget* widget, int key) {
  QTest::keyClick(widget, static_cast<Qt::Key>(key));
}

inline void ClickOn(QWidget* widget) {
  QTest::mouseClick(widget, Qt::LeftButton);
}

// The far side of a pseudo-terminal that has a path of its own, as a modem has.
class Modem {
 public:
  explicit Modem(const std::string& link) : terminal_(field::PseudoTerminal::Open(link, error_)) {
    EXPECT_NE(terminal_, nullptr) << error_;
  }

  void Send(const std::string& bytes) {
    terminal_->Write(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
  }
  void Send(const Frame& frame) { terminal_->Write(frame.Bytes()); }
  std::string Receive() {
    const std::vector<std::uint8_t> bytes = terminal_->Read();
    return {bytes.begin(), bytes.end()};
  }

 private:
  std::string error_;
  std::unique_ptr<field::PseudoTerminal> terminal_;
};

// A platform that keeps its settings in a folder of the test.
class PlatformTest : public testing::Test {
 protected:
  std::string InFolder(const std::string& name) const {
    return folder.filePath(QString::fromStdString(name)).toStdString();
  }

  QTemporaryDir folder;
  QtSettings settings{InFolder("settings.ini")};
  QtPlatform platform{settings};
};

// A door with a form made up by the test behind it, and what arrives from the radio.
class DoorTest : public PlatformTest, public DeviceEvents {
 protected:
  DoorTest() { door.SetDevices(this); }
  void BytesArrived(const std::vector<std::uint8_t>& bytes) override {
    arrived.append(bytes.begin(), bytes.end());
    if (onBytes) onBytes();
  }
  void LineError(int code) override { lineErrors.push_back(code); }

  struct MadeUpForm : Form {
    using Form::Add;
    using Form::Form;
  };
  Door door{platform};
  MadeUpForm form{door.AllForms(), "frmTest"};
  std::string arrived;
  std::function<void()> onBytes;
  std::vector<int> lineErrors;
};

// The whole program in its windows, with a new project and on serial ports of that kind; boxes are answered
// as in a demonstration unless a test wants to see them.
template <typename Serial>
class ProgramOn : public PlatformTest {
 protected:
  ProgramOn() {
    platform.SetAnswerer([this](const DialogBox& box) {
      shown.push_back(box.title);
      return std::optional(answer ? answer(box) : Demo::Answer(box));
    });
    program.judge().SetStartupProject(project);
  }

  void Load() { Enter(EventKind::Load, {}); }
  // Also what is made when it is first shown.
  void MakeAll() {
    for (const Form* form : program.door().AllForms().All()) {
      FormView* view = windows.All().FindView(*form);
      for (const Control& control : form->Controls()) view->Find(&control);
    }
  }
  void Enter(EventKind kind, const std::string& target, const std::string& text = {}) {
    program.door().Enter({.kind = kind, .target = target, .text = text});
  }
  void Click(const std::string& control) { Enter(EventKind::Click, control); }
  void ConnectPort5() { settings.SaveSetting("frmSerialPort", "CommPort", "5"); }
  template <typename T = QWidget>
  T* Shown(const Control& control) {
    return dynamic_cast<T*>(windows.All().FindView(control.Owner())->Find(&control)->Widget());
  }

  const std::string project = InFolder("test.ini");
  Serial serial = [this] {
    static_cast<void>(this);  // not used for every kind
    if constexpr (std::is_same_v<Serial, QtSerial>) {
      return QtSerial(settings, SerialDevices({{5, InFolder("radio")}}));
    } else {
      return Serial();
    }
  }();
  Program program{platform, serial};
  ProgramWindows windows{program, platform};
  std::function<DialogAnswer(const DialogBox&)> answer;
  std::vector<std::string> shown;  // titles of the boxes
};

// On ports that open and stay silent.
class ProgramTest : public ProgramOn<VirtualSerial> {
 protected:
  void UsePort5() {
    serial.ports = {5};
    ConnectPort5();
  }
};

// With the windows that are only looked at, too.
class AllWindowsTest : public ProgramTest {
 protected:
  ResultsWindow results{program, windows};
  Scoreboard scoreboard{program, windows};
  QtHeatPrinter printer{program, &windows.Console()};
};

// With an operator who uses the pointer and the keys, as the desktop hands them to the windows.
class OperatorTest : public ProgramTest {
 protected:
  void SetUp() override {
    Load();
    windows.Console().activateWindow();
    Settle();
  }

  using ProgramTest::Click;
  void Click(Control& control, Qt::MouseButton button = Qt::LeftButton) {
    const QWidget& widget = *Shown(control);
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

}  // namespace quorvane
