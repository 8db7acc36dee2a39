#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <tuple>

#include "tests/support/console_rig.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

TEST(Project, ASecondConsoleOnTheSameFileIsTurnedAway) {
  ConsoleRig first;
  first.Load();
  ConsoleRig second;
  second.platform.settings.SaveSetting("DiskFile", "FileName", first.file);
  second.Answer(Word::Yes);
  second.Answer(Word::Ok);
  second.Answer(Word::File, second.folder / "own.ini");
  second.Load();
  EXPECT_NE(second.platform.shown[1].box.text.find("open in another console"), std::string::npos);
  EXPECT_EQ(second.race().ProjectFile, second.folder / "own.ini");
}

// What cannot be read, or is none of ours, is told at the start and never replaced; another file is asked
// for.
TEST(Project, WhatIsNoProjectIsToldAndLeftAlone) {
  using Path = const std::string&;
  const auto unreadable = [](Path path) {
    PutFile(path, "[Current]\nTitle=Reno\n");
    std::filesystem::permissions(path, std::filesystem::perms(0222));
  };
  const std::tuple<const char*, const char*, std::function<void(Path)>> kObstacles[] = {
      {"contest.ini", "is not a file", [](Path path) { std::filesystem::create_directory(path); }},
      {"contest.ini", "is not a file", [](Path path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
      {"contest.ini", "Permission denied", unreadable},
      {"contest.ini", "is no project", [](Path path) { PutFile(path, "[frmSerialPort]\nCommPort=5\n"); }},
      {"contest.ini/day.ini", "cannot be made", [](Path path) { PutFile(path, "a file"); }},
      {"contest.ini", "Cannot read", [](Path path) { std::filesystem::create_symlink(path, path); }},
  };
  for (const auto& [name, told, make] : kObstacles) {
    SCOPED_TRACE(told);
    ConsoleRig rig;
    make(rig.file);
    std::filesystem::permissions(rig.folder / "", std::filesystem::perms::all);
    rig.platform.settings.SaveSetting("DiskFile", "FileName", rig.folder / name);
    const AsOrdinaryUser user;
    const auto before = std::filesystem::symlink_status(rig.file);
    if (FileExists(rig.folder / name)) rig.Answer(Word::Yes);
    rig.Answer(Word::Ok);
    rig.Answer(Word::File, rig.folder / "own.ini");
    rig.Load();
    const std::size_t box = rig.platform.shown.size() - 4;
    EXPECT_NE(rig.platform.shown[box].box.text.find(told), std::string::npos)
        << rig.platform.shown[box].box.text;
    EXPECT_EQ(rig.platform.shown[box + 1].box.title, "Open New Quorvane Project");
    EXPECT_EQ(rig.platform.shown[box + 1].box.preset, rig.folder / "21-Nov-2026.ini");
    EXPECT_EQ(rig.race().ProjectFile, rig.folder / "own.ini");
    EXPECT_EQ(rig.judge().EventName(), "Cup");
    EXPECT_EQ(std::filesystem::symlink_status(rig.file).type(), before.type());
    EXPECT_EQ(std::filesystem::symlink_status(rig.file).permissions(), before.permissions());
  }
}

// Counts what the console asks of the disk.
struct CountedFiles : FileOps {
  int looks = 0, replacements = 0;

  std::error_code Look(const std::string& path, FileStamp& stamp) override {
    ++looks;
    return FileOps::Look(path, stamp);
  }
  std::error_code Rename(const std::string& from, const std::string& to) override {
    ++replacements;
    return FileOps::Rename(from, to);
  }
};

TEST(Project, TheDiskIsAskedOnceASecondNeverInTheRaceAndWrittenOnceASave) {
  CountedFiles files;
  ConsoleRig rig(false, files);
  rig.Load();
  files.looks = 0;
  for (int i = 0; i < 50; ++i) {
    rig.At(1000 + i * 100);
    rig.Click("frmJudge.lblStatus");
  }
  EXPECT_GE(files.looks, 4);
  EXPECT_LE(files.looks, 6);

  rig.Click("frmJudge.cmdStart");
  files.looks = 0;
  for (int lap = 0; lap < 9; ++lap) {
    rig.At(rig.platform.ClockMs() + 4000);
    for (const char* key : {"F1", "F2", "F3", "F4"}) rig.Key(key);
  }
  EXPECT_EQ(files.looks, 0);
  rig.At(rig.platform.ClockMs() + 60000);
  ASSERT_TRUE(rig.judge().cmdSave.Enabled());
  files.replacements = 0;
  rig.Click("frmJudge.cmdSave");
  EXPECT_EQ(files.replacements, 1);
  EXPECT_NE(FileBytes(rig.file).find("[Current]\r\nRace=2"), std::string::npos);
}

}  // namespace
}  // namespace quorvane
