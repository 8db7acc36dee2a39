#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTemporaryDir>
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
  QElapsedTimer waited;
  waited.start();
  while (!condition()) {
    if (waited.elapsed() > ms) return false;
    QEventLoop loop;
    QTimer::singleShot(5, &loop, &QEventLoop::quit);
    loop.exec();
  }
  return true;
}

inline void Settle() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

inline void Press(QWidget* widget, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QCoreApplication::sendEvent(widget, &press);
  QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
  QCoreApplication::sendEvent(widget, &release);
}

inline void TypeText(QWidget* widget, const QString& text) {
  for (const QChar c : text) Press(widget, c.toUpper().unicode(), QString(c));
}

inline void ClickOn(QWidget* widget) {
  const QPointF at(widget->width() / 2.0, widget->height() / 2.0);
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const Qt::MouseButtons buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
  }
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
  void CloseRequested() override { ++closed; }
  void Resized() override { ++resized; }

  std::string keys;
  int activated = 0;
  int closed = 0;
  int resized = 0;
};

// A door with a platform that keeps its settings in a folder of the test.
class UiTest : public testing::Test {
 protected:
  std::string InFolder(const std::string& name) const {
    return folder.filePath(QString::fromStdString(name)).toStdString();
  }

  QTemporaryDir folder;
  QtSettings settings{folder.filePath("settings.ini").toStdString()};
  QtPlatform platform{settings};
  Door door{platform};
  MadeUpForm form{door.AllForms(), "frmTest"};
};

}  // namespace quorvane
