#include "ui/qt/qt_settings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>

namespace quorvane {
namespace {

TEST(QtSettingsTest, ValuesComeBackAsTheyWereWhateverIsInThem) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath("settings.ini").toStdString();
  const std::vector<std::string> values = {"5",      "-1",          "<",    "", "c:\\Quorvane\\day.ini",
                                           "a, b,c", "\"q\" = ; #", "Größe"};
  for (std::size_t i = 0; i < values.size(); ++i) {
    QtSettings(file).SaveSetting("frmSerialPort", "Key" + std::to_string(i), values[i]);
  }
  const QtSettings settings(file);
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(settings.GetSetting("frmSerialPort", "Key" + std::to_string(i), "none"), values[i]);
  }
  EXPECT_EQ(settings.GetSetting("frmSerialPort", "More", "none"), "none");
}

TEST(QtSettingsTest, ReadsWhatWasWrittenByHandAndBearsAFileThatIsNone) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath("hand.ini").toStdString();
  std::ofstream(file) << "[frmSerialPort]\nCommPort=5\n[DiskFile]\nFileName=/home/me/a, b.ini\n";
  EXPECT_EQ(QtSettings(file).GetSetting("frmSerialPort", "CommPort", "-1"), "5");
  std::ofstream(file) << std::string("\0\xFF[[=\n\n]", 9);
  QtSettings broken(file);
  EXPECT_EQ(broken.GetSetting("frmSerialPort", "CommPort", "-1"), "-1");
  QtSettings nowhere("/nowhere/at/all.ini");
  nowhere.SaveSetting("a", "b", "c");
  EXPECT_EQ(nowhere.GetSetting("a", "b", ""), "c");
}

}  // namespace
}  // namespace quorvane
