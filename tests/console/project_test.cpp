#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <tuple>

#include "tests/support/console_rig.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/troubled_disk.h"

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

// What cannot be read, is none of ours, or is another console's, is told at the start and never replaced;
// another file is asked for.
TEST(Project, WhatIsNoProjectIsToldAndLeftAlone) {
  using Path = const std::string&;
  const auto unreadable = [](Path path) {
    PutFile(path, "[Current]\nTitle=Reno\n");
    std::filesystem::permissions(path, std::filesystem::perms(0222));
  };
  std::optional<ProjectStore> other;
  const auto held = [&](Path path) {
    PutFile(path, "[Current]\nTitle=Reno\n");
    ASSERT_EQ(other.emplace(path).TryLock(), LockResult::Locked);
  };
  const std::tuple<const char*, const char*, std::function<void(Path)>> kObstacles[] = {
      {"contest.ini", "open in another console", held},
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

// Whatever fails in a save, or takes seconds: the console goes on at once, says so, keeps the race beside the
// project, and has it saved soon after the disk is well again, even while the next race is flown.
TEST(Project, ASaveThatFailsOrTakesSecondsHoldsUpNobodyAndLosesNothing) {
  using std::chrono::milliseconds;
  constexpr int kSlow = static_cast<int>(std::size(TroubledDisk::kSteps));
  const auto wellAgain = [](ConsoleRig& rig) {
    rig.At(rig.platform.ClockMs() + 3100);
    return rig.program.project().Saved();
  };
  for (const auto error :
       {std::errc::no_space_on_device, std::errc::no_such_file_or_directory, std::errc::timed_out}) {
    const bool slow = error == std::errc::timed_out;
    for (int step = slow ? kSlow : 0; step < kSlow + (slow ? 1 : 0); ++step) {
      SCOPED_TRACE(std::make_error_code(error).message() + ", step " + std::to_string(step));
      static TroubledDisk disk;  // what hangs is left behind
      ConsoleRig rig(false, disk, ConsoleRig::Way::OwnThread);
      rig.Load();
      rig.Click("frmJudge.cmdStart");
      for (int lap = 1; lap <= 10; ++lap) {
        rig.At(lap * 7000);
        rig.Key("F1");
      }
      rig.At(120000);
      ASSERT_TRUE(rig.program.keeper().Wait(5000));
      disk.error = error;
      if (slow) disk.slowMs = 200;  // each of the calls
      if (!slow) disk.failing = step;
      const auto begun = std::chrono::steady_clock::now();
      rig.Click("frmJudge.cmdSave");
      rig.Click("frmJudge.cmdStart");
      for (int i = 0; i < 20; ++i) rig.At(rig.platform.ClockMs() + 500);
      EXPECT_LT(std::chrono::steady_clock::now() - begun, milliseconds(900));
      EXPECT_TRUE(rig.judge().lblNotSaved.Visible());
      EXPECT_TRUE(rig.race().BeingFlown());
      disk.failing = -1;
      disk.slowMs = 0;
      for (int i = 0; i < 100 && !wellAgain(rig); ++i) std::this_thread::sleep_for(milliseconds(20));
      EXPECT_FALSE(rig.judge().lblNotSaved.Visible());
      EXPECT_NE(FileBytes(rig.file).find("[Race1_Lane1]\r\nNumEvents=10"), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace quorvane
