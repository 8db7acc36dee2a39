#include "ui/qt/qt_settings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>

namespace quorvane {
namespace {

TEST(QtSettings, KeepsAnyValueAndBearsAFileThatIsNone) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath("settings.ini").toStdString();
  for (const std::string value : {"5", "<", "", "c:\\Quorvane\\day.ini", "a, b,c", "\"q\" = ; #", "Größe"}) {
    QtSettings(file).SaveSetting("frmSerialPort", "Key", value);
    EXPECT_EQ(QtSettings(file).GetSetting("frmSerialPort", "Key", "none"), value);
  }
  EXPECT_EQ(QtSettings(file).GetSetting("frmSerialPort", "More", "none"), "none");
  std::ofstream(file) << "[frmSerialPort]\nCommPort=5\n[DiskFile]\nFileName=/home/me/a, b.ini\n";
  EXPECT_EQ(QtSettings(file).GetSetting("DiskFile", "FileName", ""), "/home/me/a,b.ini");
  std::ofstream(file) << std::string("\0\xFF[[=\n\n]", 9);
  EXPECT_EQ(QtSettings(file).GetSetting("frmSerialPort", "CommPort", "-1"), "-1");
  QtSettings nowhere("/nowhere/at/all.ini");
  nowhere.SaveSetting("a", "b", "c");
  EXPECT_EQ(nowhere.GetSetting("a", "b", ""), "c");
}

}  // namespace
}  // namespace quorvane
