#include "console/first_start.h"

#include <gtest/gtest.h>

#include <tuple>

#include "tests/support/console_rig.h"

namespace quorvane {
namespace {

using Radio = FirstAnswers::Radio;

TEST(FirstStart, ComesWhereTheSettingsHoldNothingThatSomebodyHasChosen) {
  EXPECT_TRUE(NothingConfigured({}));
  EXPECT_TRUE(NothingConfigured({"Ports", "Ports"}));
  EXPECT_FALSE(NothingConfigured({"Ports", "RaceInfo"}));
  MemorySettings declined;
  DeclineFirstStart(declined);
  EXPECT_FALSE(NothingConfigured({declined.All().begin()->first.first}));
}

TEST(FirstStart, NamesTheProjectAfterEventAndDateOnEverySystem) {
  const std::string longName(200, 'x');
  const std::tuple<std::string, std::string> kNames[] = {
      {"Autumn Cup", "Autumn Cup 21-Nov-2026.ini"},
      {"", "21-Nov-2026.ini"},
      {" A/B: \"C\"?\t", "A-B- -C--- 21-Nov-2026.ini"},
      {"..", "21-Nov-2026.ini"},
      {"K\xC3\xB6ln", "K\xC3\xB6ln 21-Nov-2026.ini"},
      {longName, longName.substr(0, 80) + " 21-Nov-2026.ini"}};
  for (const auto& [event, name] : kNames) {
    EXPECT_EQ(FirstProject("/home/", event, MomentOf(2026, 11, 21)), "/home/" + name);
  }
}

// What stands at the project's place, and what comes of it. Empty: nothing stands there.
TEST(FirstStart, LeavesTheConsoleNothingToAskAndNothingWrittenOver) {
  const struct {
    const char *before, *trouble, *title, *heats;
  } cases[] = {{"", "", "Reno", "6"},
               {"[Current]\r\nTitle=Cup\r\nHeatsPerRound=3\r\nRace=2\r\n", "", "Cup", "3"},
               {"[Current]\r\nTitle=Cup\r\nHeatsPerRound=1\r\n", "", "Cup", "6"},
               {"[Race1]\r\nTimestamp=1\r\n", "", "Reno", "6"},
               {"Wind from the west.\n", "This file is no project:", "", ""},
               {"[frmSerialPort]\nCommPort=5\n", "This file is no project:", "", ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.before);
    ConsoleRig rig(true);
    const std::string file = rig.folder / "deep/down/reno.ini";
    if (*c.before != 0) {
      MakeFolderPath(ParentFolder(file));
      PutFile(file, c.before);
    }
    const FoundProject found = LookForProject(file);
    EXPECT_EQ(found.trouble.empty(), *c.trouble == 0);
    EXPECT_EQ(found.exists, *c.before == '[' && *c.trouble == 0);
    const auto settings = rig.platform.settings.All();
    const std::string trouble = PrepareFirstStart(
        {.eventName = "Reno", .heatsPerRound = 6, .project = file, .radio = Radio::kPort, .port = 5},
        rig.platform.settings);
    EXPECT_TRUE(trouble.starts_with(c.trouble) && trouble.empty() == (*c.trouble == 0)) << trouble;
    if (!trouble.empty()) {
      EXPECT_EQ(FileBytes(file), c.before);
      EXPECT_EQ(rig.platform.settings.All(), settings);
      continue;
    }
    rig.judge().SetStartupProject(file);
    rig.program.door().Enter({EventKind::Load});
    EXPECT_TRUE(rig.platform.shown.empty()) << rig.LastBox();
    EXPECT_EQ(rig.Value("Current", "Title"), c.title);
    EXPECT_EQ(rig.Value("Current", "HeatsPerRound"), c.heats);
    EXPECT_EQ(rig.judge().lblComm.Caption(), "COM5");
    // The next start asks as it always has, and about this project.
    EXPECT_EQ(rig.platform.settings.GetSetting("DiskFile", "FileName", ""), file);
  }
}

TEST(FirstStart, SaysWhyAPlaceWillNotDo) {
  const ScratchFolder folder;
  MemorySettings settings;
  PutFile(folder / "file", "x");
  for (const std::string& file : {std::string(), folder / "", folder.path().string()}) {
    EXPECT_FALSE(LookForProject(file).trouble.empty()) << file;
  }
  EXPECT_NE(PrepareFirstStart({.eventName = "Reno", .project = folder / "file/reno.ini"}, settings), "");
  EXPECT_TRUE(settings.All().empty());
}

}  // namespace
}  // namespace quorvane
