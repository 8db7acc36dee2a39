#include "files/output_guard.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>
#include <tuple>

#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

// What may become of a file, by its content: the kinds that may be put there.
TEST(OutputGuard, KnowsOurFilesByTheirContentAndKeepsThem) {
  using enum FileKind;
  const std::tuple<const char*, FileKind, std::set<FileKind>, const char*> cases[] = {
      {"", Empty, {Project, Settings, Journal, Other}, "-"},
      {"\xEF\xBB\xBF\r\n \t\n", Empty, {Project, Settings, Journal, Other}, "-"},
      {"; a contest\r\n[ cUrrent ] x\r\nTitle=Cup\r\n", Project, {Project}, "it is a project file"},
      {"notes\r\r[Refly2_Lane1]\r", Project, {Project}, "it is a project file"},
      {"[General]\n[frmSerialPort]\nMore=1\n", Settings, {Settings}, "it is a settings file"},
      {"[Running]\r\nRace=7\r\n", KeptRace, {}, "it keeps a race"},
      {"[Unsaved]\r\nTitle=Cup\r\n", KeptRace, {}, "it keeps a race"},
      {"quorvane-journal 2\n0 start x\n", Journal, {}, "it is a session journal"},
      {"[Races]\n[Racer1]\n", Ini, {Settings, Other}, "it is a file of another kind"},
      {"Round,Heat\n[x]\n", Other, {Other}, "it is a file of another kind"},
      {"{\"races\": [1, 2]}", Other, {Other}, "it is a file of another kind"}};
  for (const std::string section : {"DiskFile", "RaceInfo", "frmSerialPort", "frmJudge", "Ports", "Printer",
                                    "Scoreboard", "Timer", "Practice", "FirstStart"}) {
    EXPECT_EQ(KindOfContent("[" + section + "]\n"), Settings) << section;
  }
  const ScratchFolder folder;
  const std::string file = folder / "file";
  for (const auto& [content, kind, places, why] : cases) {
    PutFile(file, content);
    EXPECT_EQ(KindOfFile(file), kind) << content;
    EXPECT_EQ(WhyNotWrite(file, KeptRace).value_or("-"), why);
    for (const FileKind place : {Project, Settings, Journal, Other}) {
      EXPECT_EQ(!WhyNotWrite(file, place), places.contains(place)) << content;
    }
  }
}

TEST(OutputGuard, RefusesWhatIsNoFileAndWhatIsInUseUnderAnyName) {
  const ScratchFolder folder;
  const std::string fifo = folder / "fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  std::filesystem::create_symlink(fifo, folder / "link");
  std::filesystem::create_symlink("loop", folder / "loop");
  std::filesystem::create_symlink("not-there", folder / "new");
  for (const char* name : {"", "fifo", "link"}) {
    EXPECT_EQ(WhyNotWrite(folder / name, FileKind::Other), "it is not a file") << name;
  }
  EXPECT_EQ(WhyNotWrite(folder / "loop", FileKind::Other), "it cannot be looked at");
  EXPECT_FALSE(WhyNotWrite(folder / "new", FileKind::Other));

  const std::string used = folder / "used";
  EXPECT_TRUE(WhyNotWrite(folder / "./used", FileKind::Other, {used})) << "missing yet";
  PutFile(used, "");
  std::filesystem::create_hard_link(used, folder / "second");
  EXPECT_TRUE(WhyNotWrite(folder / "second", FileKind::Other, {used}));
}

TEST(OutputGuard, AJournalThatExistsIsKeptAndTheNextNameTaken) {
  const ScratchFolder folder;
  EXPECT_EQ(FreeJournalName(folder / "day.journal"), folder / "day.journal");
  PutFile(folder / "day.journal", "quorvane-journal 1\n");
  PutFile(folder / "day-2.journal", "something else");
  EXPECT_EQ(FreeJournalName(folder / "day.journal"), folder / "day-3.journal");
}

}  // namespace
}  // namespace quorvane
