#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "forms/door.h"
#include "ui/qt/qt_platform.h"
#include "ui/qt/qt_settings.h"
#include "ui/windows.h"

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

// A form made up by a test.
class MadeUpForm : public Form {
 public:
  using Form::Form;
  Control& Make(ControlKind kind, const std::string& name, Control* parent = nullptr) {
    return Add(kind, name, parent);
  }
  void KeyDown(const std::string& key) override { keys += key + " "; }
  void Activated() override { ++activated; }

  std::string keys;
  int activated = 0;
};

// A door with a platform that keeps its settings in a folder of the test.
class UiTest : public testing::Test {
 protected:
  std::string InFolder(const std::string& name) const {
    return folder.filePath(QString::fromStdString(name)).toStdString();
  }

  QTemporaryDir folder;
  QtSettings settings{InFolder("settings.ini")};
  QtPlatform platform{settings};
  Door door{platform};
  MadeUpForm form{door.AllForms(), "frmTest"};
};

}  // namespace quorvane
