#include <gtest/gtest.h>

#include <QApplication>

#include "ui/widgets/look.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  quorvane::DressApplication();
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
