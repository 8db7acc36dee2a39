// The small parts that need no window.

#include "base/text.h"
#include "tests/ui/fixture.h"
#include "ui/command_line.h"

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
  const std::string wrong =
      "--port|--port 5|--port 0=/dev/x|--port 32=/dev/x|--port 5=|--port =x|--port 5x=/dev/x|"
      "--port 5=a --port 5=b|--settings|--settings= day.ini|--heats 0|--heats two|--heats 1000|--heats=|"
      "a.ini b.ini|--nonsense|-x| |--demo|--print 1 day.ini|--print 1 -o x.pdf|--print 1 day.ini -o=x.pdf|"
      "day.ini -o x.pdf|--print 0 day.ini -o x.pdf|--print 4-2 day.ini -o x.pdf|--print 1, day.ini -o x.pdf|"
      "--print= day.ini -o x.pdf|--print 1-5001 day.ini -o x.pdf|--print 99999 day.ini -o x.pdf|"
      "--print 1 a.ini -o x.pdf --paper A5|--print 1 a.ini -o x.pdf --demo d";
  for (const std::string& line : Split(wrong, '|')) {
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
  QtSettings nowhere("/nowhere/at/all.ini");
  nowhere.SaveSetting("a", "b", "c");
  EXPECT_EQ(nowhere.GetSetting("a", "b", ""), "c");
}

TEST(Demo, TellsOfARaceWhatTheProjectFileSays) {
  RaceRecord race;
  race.lanes[0].lane = 2;
  race.lanes[0].placing = "First";
  race.lanes[0].final = 16840;
  race.lanes[0].laps = {{1, 9051}, {2, 16840}};
  race.lanes[0].cuts = {{"P1", 9500, 1}};
  race.lanes[1].lane = 3;
  race.lanes[1].placing = "DNF";
  race.lanes[2].flies = race.lanes[3].flies = false;
  EXPECT_EQ(HeatText(7, race),
            "Heat 7\n  lane 2: First in 16.84 s, laps 2, cuts 1\n  lane 3: DNF, laps 0, cuts 0\n");
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
  driver.Arm();
  EXPECT_TRUE(WaitFor([&] { return shown != 0; }));
  EXPECT_GE(shown - due, 190);
  other.onTimer = [&] { other.SetEnabled(false); };
  other.SetInterval(5);
  other.SetEnabled(true);
  driver.Arm();
  EXPECT_TRUE(WaitFor([&] { return !other.Enabled(); }, 150));
}

}  // namespace
}  // namespace quorvane
