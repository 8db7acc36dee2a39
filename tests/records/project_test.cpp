#include "records/project.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using Opened = Project::Opened;

struct ProjectTest : testing::Test {
  const ScratchFolder folder;
  RaceState race;
  Project project{race};
};

TEST_F(ProjectTest, OneLeftWithSomethingUnsavedCanBeOpenedAgain) {
  const std::string away = folder / "stick/day.ini";
  const std::string other = folder / "other.ini";
  ASSERT_EQ(project.Open(away), Opened::Yes);
  project.SetProjectValue("Race1", "Comments", "windy");
  EXPECT_NE(project.Problem().find(away), std::string::npos);
  ASSERT_EQ(project.Open(other), Opened::Yes);
  project.SetProjectValue("Race1", "Comments", "calm");
  EXPECT_FALSE(project.Saved());

  ASSERT_EQ(project.Open(away), Opened::Yes);
  EXPECT_EQ(race.ProjectFile, away);
  EXPECT_EQ(project.GetProjectValue("Race1", "Comments", ""), "windy");
  fs::create_directory(folder / "stick");
  EXPECT_TRUE(project.Retry());
  EXPECT_EQ(FileBytes(away), "[Race1]\r\nComments=windy\r\n");
  EXPECT_EQ(FileBytes(other), "[Race1]\r\nComments=calm\r\n");
}

TEST_F(ProjectTest, WhatAnotherProgramTookOutIsTheFirstStateAlsoOfAProjectThatWasLeft) {
  const std::string day = folder / "day.ini", flown = "[Race1]\r\nTimestamp=1\r\n[Race2]\r\nTimestamp=2\r\n";
  const auto stands = [&](const std::string& text) {
    PutFile(day, text);
    project.GetProjectValue("Race1", "Timestamp", "");
  };
  stands(flown);
  ASSERT_EQ(project.Open(day), Opened::Yes);
  stands("[Race1]\r\nTimestamp=1\r\n");
  stands("[Race2]\r\nTimestamp=3\r\n");
  ASSERT_EQ(project.Open(folder / "other.ini"), Opened::Yes);
  EXPECT_EQ(project.TakeReplaced(), (std::map<std::string, std::string>{{day, flown}}));
  EXPECT_TRUE(project.TakeReplaced().empty());
}

TEST_F(ProjectTest, AFileIsOpenInOneConsoleAtATimeUnderAnyName) {
  RaceState race2;
  Project console2(race2);
  ASSERT_EQ(project.Open(folder / "day.ini"), Opened::Yes);
  project.SetProjectValue("Current", "Title", "Cup");
  fs::create_symlink("day.ini", folder / "link.ini");
  fs::create_hard_link(folder / "day.ini", folder / "second.ini");
  for (const char* name : {"link.ini", "second.ini"}) {
    EXPECT_EQ(console2.Open(folder / name), Opened::HeldElsewhere) << name;
  }
  EXPECT_EQ(project.Open(folder / "second.ini"), Opened::Yes);
  EXPECT_EQ(race.ProjectFile, folder / "day.ini") << "the one that goes on being written";
  EXPECT_EQ(project.Open(folder / "./day.ini"), Opened::Yes);
  EXPECT_EQ(console2.Open(folder / "link.ini"), Opened::HeldElsewhere);
  project.SetProjectValue("Current", "Title", "Derby");
  EXPECT_EQ(console2.Open(folder / "second.ini"), Opened::Yes) << "a file of its own since the save";
  EXPECT_EQ(project.Open(folder / "other.ini"), Opened::Yes);
  EXPECT_EQ(console2.Open(folder / "link.ini"), Opened::Yes);
}

TEST(ProjectText, PathsAreTakenApartAtEitherSeparator) {
  const std::array<std::string, 4> kCases[] = {
      {"c:\\Quorvane\\21-Nov-2026.ini", "c:\\Quorvane\\", "c:\\Quorvane\\21-Nov-2026", "21-Nov-2026.ini"},
      {"/home/me/a.b/day", "/home/me/a.b/", "/home/me/a", "day"},
      {"/day.ini", "", "/day", "day.ini"},
      {".ini", "", ".ini", ".ini"},
      {"", "", "", ""},
  };
  for (const auto& [path, parent, base, name] : kCases) {
    EXPECT_EQ(ParentFolder(path), parent);
    EXPECT_EQ(WithoutExtension(path), base);
    EXPECT_EQ(FileNameOf(path), name);
  }
}

TEST_F(ProjectTest, FoldersAreMadeAndAFileThatExistsIsLeftAlone) {
  PutFile(folder / "day.csv", "mine");
  for (const std::string& path : {folder / "a/b/", folder / "day.csv/a/", std::string(9000, 'x')})
    MakeFolderPath(path);
  EXPECT_TRUE(FolderExists(folder / "a/b"));
  CreateResultsFile(folder / "day.csv");
  EXPECT_EQ(FileBytes(folder / "day.csv"), "mine");
}

TEST(ProjectText, AMomentIsWrittenAsADaySerialAndInWords) {
  const std::pair<LocalDateTime, const char*> kCases[] = {
      {MomentOf(2026, 11, 21, 9, 0, 0), "46347.375, 11/21/2026 9:00:00 AM"},
      {MomentOf(2026, 11, 21, 0, 5, 9), "46347.00357638889, 11/21/2026 12:05:09 AM"},
      {MomentOf(2026, 1, 2, 12, 0, 0), "46024.5, 1/2/2026 12:00:00 PM"},
      {MomentOf(2036, 11, 21, 0, 0, 0), "50000, 11/21/2036 12:00:00 AM"},
      {MomentOf(1899, 12, 30, 18, 0, 0), "0.75, 12/30/1899 6:00:00 PM"},
  };
  for (const auto& [moment, text] : kCases) EXPECT_EQ(TimestampText(moment), text);
  EXPECT_EQ(ProjectDate(MomentOf(2026, 3, 7)), "07-Mar-2026");
}

}  // namespace
}  // namespace quorvane
