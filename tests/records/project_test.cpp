#include "records/project.h"

#include <gtest/gtest.h>

#include "tests/records/scratch_folder.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

TEST(Project, OneLeftWithSomethingUnsavedCanBeOpenedAgain) {
  const ScratchFolder folder;
  RaceState race;
  Project project(race);
  const std::string away = folder / "stick/day.ini";
  const std::string other = folder / "other.ini";
  ASSERT_TRUE(project.Open(away));
  project.SetProjectValue("Race1", "Comments", "windy");
  ASSERT_TRUE(project.Open(other));
  project.SetProjectValue("Race1", "Comments", "calm");
  EXPECT_FALSE(project.Saved());

  ASSERT_TRUE(project.Open(away));
  EXPECT_EQ(race.ProjectFile, away);
  EXPECT_EQ(project.GetProjectValue("Race1", "Comments", ""), "windy");
  ASSERT_TRUE(project.Open(other));
  EXPECT_EQ(project.GetProjectValue("Race1", "Comments", ""), "calm");
  fs::create_directory(folder / "stick");
  EXPECT_TRUE(project.Retry());
  EXPECT_EQ(FileBytes(away), "[Race1]\r\nComments=windy\r\n");
}

TEST(Project, AnotherNameOfTheOpenFileIsNoOtherConsole) {
  const ScratchFolder folder;
  RaceState race;
  Project project(race);
  ASSERT_TRUE(project.Open(folder / "day.ini"));
  project.SetProjectValue("Current", "Title", "Cup");
  fs::create_symlink("day.ini", folder / "link.ini");
  EXPECT_TRUE(project.Open(folder / "link.ini"));
  EXPECT_TRUE(project.Open(folder / "./day.ini"));

  RaceState race2;
  Project console2(race2);
  EXPECT_FALSE(console2.Open(folder / "link.ini"));
  EXPECT_TRUE(project.Open(folder / "other.ini"));
  EXPECT_TRUE(console2.Open(folder / "link.ini"));
}

TEST(Project, PathsAreTakenApartAtEitherSeparator) {
  const struct {
    const char* path;
    const char* parent;
    const char* base;
    const char* name;
  } kCases[] = {
      {"c:\\Quorvane\\21-Nov-2026.ini", "c:\\Quorvane\\", "c:\\Quorvane\\21-Nov-2026", "21-Nov-2026.ini"},
      {"/home/me/a.b/day", "/home/me/a.b/", "/home/me/a", "day"},
      {"/day.ini", "", "/day", "day.ini"},
      {".ini", "", ".ini", ".ini"},
      {"day.2.ini", "", "day.2", "day.2.ini"},
      {"", "", "", ""},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(ParentFolder(c.path), c.parent);
    EXPECT_EQ(WithoutExtension(c.path), c.base);
    EXPECT_EQ(FileNameOf(c.path), c.name);
  }
}

TEST(Project, MissingFoldersAreMadeAndTroubleIsIgnored) {
  const ScratchFolder folder;
  MakeFolderPath(folder / "a/b/c/");
  EXPECT_TRUE(FolderExists(folder / "a/b/c"));
  PutFile(folder / "file", "");
  for (const std::string& path :
       {folder / "file/a/", std::string(), std::string("/"), std::string(9000, 'x')}) {
    MakeFolderPath(path);
  }
  EXPECT_FALSE(FolderExists(folder / "file"));
  EXPECT_TRUE(FileExists(folder / "file"));
  EXPECT_FALSE(FileExists(folder / "a"));
}

TEST(Project, TheResultsFileIsMadeOnceAndNeverTouched) {
  const ScratchFolder folder;
  const std::string path = folder / "day.csv";
  CreateResultsFile(path);
  const std::string header = FileBytes(path);
  EXPECT_TRUE(header.starts_with("Round,Heat(racemode&time),Lane,"));
  EXPECT_TRUE(header.ends_with(",Lap10,Comments\r\n"));
  PutFile(path, "mine");
  CreateResultsFile(path);
  EXPECT_EQ(FileBytes(path), "mine");
  fs::create_directory(folder / "folder.csv");
  CreateResultsFile(folder / "folder.csv");
}

TEST(Project, AMomentIsWrittenAsADaySerialAndInWords) {
  const std::pair<LocalDateTime, const char*> kCases[] = {
      {{2026, 11, 21, 9, 0, 0}, "46347.375, 11/21/2026 9:00:00 AM"},
      {{2026, 11, 21, 0, 5, 9}, "46347.00357638889, 11/21/2026 12:05:09 AM"},
      {{2026, 1, 2, 12, 0, 0}, "46024.5, 1/2/2026 12:00:00 PM"},
      {{2036, 11, 21, 0, 0, 0}, "50000, 11/21/2036 12:00:00 AM"},
      {{1899, 12, 30, 18, 0, 0}, "0.75, 12/30/1899 6:00:00 PM"},
  };
  for (const auto& [moment, text] : kCases) EXPECT_EQ(TimestampText(moment), text);
  EXPECT_EQ(ProjectDate({2026, 3, 7}), "07-Mar-2026");
}

}  // namespace
}  // namespace quorvane
