#include "files/background_files.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "tests/support/scratch_folder.h"
#include "tests/support/troubled_disk.h"

namespace quorvane {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

std::string OnDisk(const std::string& path) {
  return ContentOf(path, 1000).value_or("none");
}

struct BackgroundFilesTest : testing::Test {
  const ScratchFolder folder;
};

// Whatever fails, the caller goes on at once, the old content or the new one is there, and the newest one
// comes when the disk is mended.
TEST_F(BackgroundFilesTest, OutliveEachFailureOfTheDisk) {
  for (int step = 0; step < static_cast<int>(std::size(TroubledDisk::kSteps)); ++step) {
    SCOPED_TRACE(TroubledDisk::kSteps[step]);
    TroubledDisk disk;
    BackgroundFiles files(disk, BackgroundFiles::Way::OwnThread);
    const std::string path = folder / "contest.running";
    files.Keep(path, "first");
    ASSERT_TRUE(files.Wait(5000));
    disk.failing = step;
    files.Keep(path, "second");
    files.Keep(path, "third");
    EXPECT_FALSE(files.Wait(50));
    EXPECT_NE(files.Problem(), "");
    EXPECT_TRUE(OnDisk(path) == "first" || step == 8) << OnDisk(path);
    disk.failing = -1;
    if (step > 0) files.Keep(path, "third");  // tries at once; without it in a second
    ASSERT_TRUE(files.Wait(5000));
    EXPECT_EQ(files.Problem(), "");
    EXPECT_EQ(OnDisk(path), "third");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / ""), {}), 1);
  }
}

// A stick that was pulled out costs the race on another disk nothing.
TEST_F(BackgroundFilesTest, GoOnWithOtherFilesWhileOneFails) {
  BackgroundFiles files(SystemFiles(), BackgroundFiles::Way::OwnThread);
  files.Keep(folder / "gone/contest.running", "lost");
  while (files.Problem().empty()) std::this_thread::sleep_for(milliseconds(1));
  files.Keep(folder / "contest.running", "kept");
  const auto begun = Clock::now();
  while (OnDisk(folder / "contest.running") != "kept" && Clock::now() - begun < milliseconds(5000)) {
    std::this_thread::sleep_for(milliseconds(5));
  }
  EXPECT_LT(Clock::now() - begun, milliseconds(500));
  EXPECT_NE(files.Problem(), "");
}

// A disk that takes seconds holds up nobody, not even the end.
TEST_F(BackgroundFilesTest, NeverMakeTheCallerWait) {
  static TroubledDisk disk;  // its thread is left behind
  const std::string path = folder / "contest.running";
  const auto begun = Clock::now();
  {
    BackgroundFiles files(disk, BackgroundFiles::Way::OwnThread);
    disk.slowMs = 600;
    for (int i = 0; i < 1000; ++i) files.Keep(path, std::to_string(i));
    EXPECT_LT(Clock::now() - begun, milliseconds(300));
  }
  EXPECT_LT(Clock::now() - begun, milliseconds(1500));
  disk.slowMs = 0;
  std::this_thread::sleep_for(milliseconds(1500));
  EXPECT_EQ(OnDisk(path), "999");
}

TEST(BackgroundFileNames, HaveANameOfTheirOwnForEachProject) {
  EXPECT_EQ(BesideProject("/My.Cups/day.INI", kRunningEnding), "/My.Cups/day.running");
  EXPECT_EQ(BesideProject("/My.Cups/day.txt", kRunningEnding), "/My.Cups/day.txt.running");
  EXPECT_EQ(BesideProject("/My.Cups/day", kRunningEnding), "/My.Cups/day.running");
}

// The only copy stays until the one in its place is on the disk; a disk that only hangs is told of.
TEST_F(BackgroundFilesTest, RemoveWhatIsReplacedOnlyAfterIt) {
  TroubledDisk disk;
  BackgroundFiles files(disk, BackgroundFiles::Way::OwnThread);
  files.Keep(folder / "a", "only");
  ASSERT_TRUE(files.Wait(5000));
  disk.failing = 5;
  files.Keep(folder / "b", "only", folder / "a");
  EXPECT_FALSE(files.Wait(100));
  EXPECT_EQ(OnDisk(folder / "a"), "only");
  disk.failing = -1;
  EXPECT_TRUE(files.Wait(5000));
  EXPECT_EQ(OnDisk(folder / "a") + OnDisk(folder / "b"), "noneonly");
  disk.slowMs = 300;
  files.Keep(folder / "b", "slow");
  std::this_thread::sleep_for(milliseconds(1200));
  EXPECT_EQ(files.Problem(), "Writing " + (folder / "b") + " takes long");
  EXPECT_TRUE(files.Wait(5000));
  EXPECT_EQ(files.Problem(), "");
}

TEST_F(BackgroundFilesTest, KeepTheOrderOfWhatIsKeptAndRemoved) {
  for (const auto way : {BackgroundFiles::Way::OwnThread, BackgroundFiles::Way::AtOnce}) {
    BackgroundFiles files(SystemFiles(), way);
    files.Keep(folder / "a", "running");
    files.Keep(folder / "b", "dropped");
    files.Remove(folder / "a");
    EXPECT_EQ(files.Read(folder / "a"), std::nullopt);
    EXPECT_EQ(files.Read(folder / "b"), "dropped");
    files.Remove(folder / "b");
    files.Keep(folder / "b", "again");
    EXPECT_EQ(files.Read(folder / "b"), "again");
  }
}

}  // namespace
}  // namespace quorvane
