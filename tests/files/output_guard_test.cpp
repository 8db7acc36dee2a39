#include "files/output_guard.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

// What may become of a file, by its content: each column says whether a file of that kind may be put there.
TEST(OutputGuard, KnowsOurFilesByTheirContentAndKeepsThem) {
  struct Case {
    const char* content;
    FileKind kind;
    bool project;
    bool settings;
    bool journal;
    bool report;
  };
  constexpr Case kCases[] = {
      {"", FileKind::Empty, true, true, true, true},
      {"\xEF\xBB\xBF\r\n \t\n", FileKind::Empty, true, true, true, true},
      {"; a contest\r\n[ cUrrent ] x\r\nTitle=Cup\r\n", FileKind::Project, true, false, false, false},
      {"notes\r\r[Refly2_Lane1]\r", FileKind::Project, true, false, false, false},
      {"[General]\n[frmSerialPort]\nMore=1\n", FileKind::Settings, false, true, false, false},
      {"quorvane-journal 2\n0 start x\n", FileKind::Journal, false, false, false, false},
      {"[Races]\n[Racer1]\n", FileKind::Ini, false, true, false, true},
      {"Round,Heat\n[x]\n", FileKind::Other, false, false, false, true},
      {"{\"races\": [1, 2]}", FileKind::Other, false, false, false, true},
  };
  const ScratchFolder folder;
  const std::string file = folder / "file";
  for (const Case& c : kCases) {
    PutFile(file, c.content);
    EXPECT_EQ(KindOfFile(file), c.kind) << c.content;
    EXPECT_EQ(!WhyNotWrite(file, FileKind::Project), c.project) << c.content;
    EXPECT_EQ(!WhyNotWrite(file, FileKind::Settings), c.settings) << c.content;
    EXPECT_EQ(!WhyNotWrite(file, FileKind::Journal), c.journal) << c.content;
    EXPECT_EQ(!WhyNotWrite(file, FileKind::Other), c.report) << c.content;
  }
}

TEST(OutputGuard, RefusesWhatIsNoFileAndWhatIsInUseUnderAnyName) {
  const ScratchFolder folder;
  const std::string fifo = folder / "fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  std::filesystem::create_symlink(fifo, folder / "link");
  std::filesystem::create_symlink("loop", folder / "loop");
  std::filesystem::create_symlink("not-there", folder / "new");
  for (const char* name : {"", "fifo", "link", "loop"}) {
    EXPECT_TRUE(WhyNotWrite(folder / name, FileKind::Other)) << name;
  }
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
