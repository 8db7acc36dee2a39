#include "files/background_files.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// The real calls, of which one fails or takes long until it is mended.
class TroubledDisk : public FileOps {
 public:
  static constexpr const char* kSteps[] = {"resolve", "look", "may write", "create",      "mode",
                                           "write",   "sync", "close",     "sync folder", "rename"};
  std::atomic<int> failing = -1;  // of kSteps
  std::atomic<int> slowMs = 0;

  std::error_code Resolve(const std::string& p, std::string& t) override {
    return Do(0, [&] { return FileOps::Resolve(p, t); });
  }
  std::error_code Look(const std::string& p, FileStamp& s) override {
    return Do(1, [&] { return FileOps::Look(p, s); });
  }
  std::error_code MayWrite(const std::string& t) override {
    return Do(2, [&] { return FileOps::MayWrite(t); });
  }
  std::error_code CreateTemp(const std::string& p, TempFile& t) override {
    return Do(3, [&] { return failing == 3 ? std::error_code() : FileOps::CreateTemp(p, t); });
  }
  std::error_code KeepMode(const TempFile& t, const std::string& p) override {
    return Do(4, [&] { return FileOps::KeepMode(t, p); });
  }
  std::error_code Write(const TempFile& t, std::string_view b) override {
    return Do(5, [&] { return FileOps::Write(t, b.substr(0, failing == 5 ? b.size() / 2 : b.size())); });
  }
  std::error_code Sync(const TempFile& t) override {
    return Do(6, [&] { return FileOps::Sync(t); });
  }
  std::error_code Close(TempFile& t, FileStamp& s) override {
    const std::error_code done = FileOps::Close(t, s);
    return Do(7, [&] { return done; });
  }
  std::error_code SyncFolder(const std::string& t) override {
    return Do(8, [&] { return FileOps::SyncFolder(t); });
  }
  std::error_code Rename(const std::string& from, const std::string& to) override {
    return Do(9, [&] { return failing == 9 ? std::error_code() : FileOps::Rename(from, to); });
  }

 private:
  template <typename Call>
  std::error_code Do(int step, const Call& call) {
    std::this_thread::sleep_for(milliseconds(slowMs));
    const std::error_code done = call();
    return failing == step ? std::make_error_code(std::errc::no_space_on_device) : done;
  }
};

std::string OnDisk(const std::string& path) {
  return ContentOf(path, 1000).value_or("none");
}

// Whatever fails, the caller goes on at once, the old content or the new one is there, and the newest one
// comes when the disk is mended.
TEST(BackgroundFiles, OutliveEachFailureOfTheDisk) {
  for (int step = 0; step < static_cast<int>(std::size(TroubledDisk::kSteps)); ++step) {
    SCOPED_TRACE(TroubledDisk::kSteps[step]);
    const ScratchFolder folder;
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
TEST(BackgroundFiles, GoOnWithOtherFilesWhileOneFails) {
  const ScratchFolder folder;
  BackgroundFiles files(SystemFiles(), BackgroundFiles::Way::OwnThread);
  files.Keep(folder / "gone/contest.running", "lost");
  files.Keep(folder / "contest.running", "kept");
  const auto begun = Clock::now();
  while (OnDisk(folder / "contest.running") != "kept" && Clock::now() - begun < milliseconds(5000)) {
    std::this_thread::sleep_for(milliseconds(5));
  }
  EXPECT_LT(Clock::now() - begun, milliseconds(500));
  EXPECT_NE(files.Problem(), "");
}

// A disk that takes seconds holds up nobody, not even the end.
TEST(BackgroundFiles, NeverMakeTheCallerWait) {
  const ScratchFolder folder;
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

TEST(BackgroundFiles, KeepTheOrderOfWhatIsKeptAndRemoved) {
  const ScratchFolder folder;
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
