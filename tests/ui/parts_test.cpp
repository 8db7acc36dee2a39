// The small parts that need no window.

#include "base/text.h"
#include "programs/console_command.h"
#include "programs/ending.h"
#include "tests/support/test_data.h"
#include "tests/ui/fixture.h"

namespace quorvane {
namespace {

TEST(CommandLineTest, TakesEverythingInAnyOrder) {
  const CommandLine line = ParseCommandLine({"--port", "5=/dev/ttyUSB0", "day.ini", "--settings=my.ini",
                                             "--port=7=a=b", "--demo", "out", "--heats", "3"});
  EXPECT_EQ(line.project, "day.ini");
  EXPECT_EQ(line.settings, "my.ini");
  EXPECT_EQ(line.ports, (std::map<int, std::string>{{5, "/dev/ttyUSB0"}, {7, "a=b"}}));
  EXPECT_EQ(line.demo, "out");
  EXPECT_EQ(line.heats, 3);
  EXPECT_EQ(ParseCommandLine({"--", "--help"}).project, "--help");
  EXPECT_EQ(ParseCommandLine({}).project, "");
  const CommandLine print =
      ParseCommandLine({"--print", "7,2-4", "day.ini", "-o", "x.pdf", "--print=9", "--paper", "a4"});
  EXPECT_EQ(print.print.races, (std::vector<int>{7, 2, 3, 4, 9}));
  EXPECT_EQ(ParseCommandLine({"--print", "1-5000", "day.ini", "-o", "x.pdf"}).print.races.size(), 5000U);
  EXPECT_TRUE(ParseCommandLine({"--print", "all", "day.ini", "--output=x.pdf"}).print.all);
}

TEST(CommandLineTest, RefusesWithOneLine) {
  const auto lines = Rows("programs/refused-window.json")[0];
  for (const std::string& line : lines) {
    try {
      ParseCommandLine(Split(line, ' '));
      ADD_FAILURE() << line;
    } catch (const Ending& ending) {
      EXPECT_EQ(ending.status, 2);
      EXPECT_EQ(ending.text.find('\n'), ending.text.size() - 1) << ending.text;
    }
  }
}

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
  TimerDriver driver(door, display, [] { return 200; });
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
