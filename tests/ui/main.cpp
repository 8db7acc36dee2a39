#include <gtest/gtest.h>

#include <QApplication>

#include "ui/widgets/look.h"

// Qt and the font library keep memory until the end of the program.
extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() {
  return "detect_leaks=0";
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  quorvane::DressApplication();
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
