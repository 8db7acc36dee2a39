// The small parts that need no window.

#include "tests/support/test_data.h"
#include "tests/ui/fixture.h"

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
  std::ofstream(file) << std::string("\0\xFF[[=\n\n]", 8);
  EXPECT_EQ(QtSettings(file).GetSetting("frmSerialPort", "CommPort", "-1"), "-1");
  QtSettings nowhere(file + "/at/all.ini");  // below a file there is nothing
  nowhere.SaveSetting("a", "b", "c");
  EXPECT_EQ(nowhere.GetSetting("a", "b", ""), "c");
}

using TimerDriverTest = DoorTest;

TEST_F(TimerDriverTest, OnlyTheDisplayTimerWaitsForTheNextMultiple) {
  Control& display = form.Add(ControlKind::Timer, "tmrShow");
  Control& other = form.Add(ControlKind::Timer, "tmrOther");
  std::int64_t shown = 0;
  display.onTimer = [&] {
    shown = door.Now();
    display.SetEnabled(false);
  };
  TimerDriver driver(door, platform, display, [] { return 200; });
  door.Enter({.kind = EventKind::Resize, .target = "frmTest"});
  display.SetInterval(200 - static_cast<int>(door.Now() % 200) + 10);
  display.SetEnabled(true);
  const std::int64_t due = *door.AllForms().Timers().NextDue();
  other.onTimer = [&] { other.SetEnabled(false); };
  other.SetInterval(5);
  other.SetEnabled(true);
  driver.Arm();
  EXPECT_TRUE(WaitFor([&] { return !other.Enabled(); }, 150));
  EXPECT_TRUE(WaitFor([&] { return shown != 0; }));
  EXPECT_GE(shown - due, 190);
}

}  // namespace
}  // namespace quorvane
