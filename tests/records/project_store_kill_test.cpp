#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

#include "records/project_store.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

const std::string kSections[] = {"Race0", "Race1", "Race2"};

// Saves version after version, all keys of one with the same number, and reports each number once it is
// saved.
[[noreturn]] void SaveForEver(const std::string& path, int report) {
  ProjectStore store;
  store.Open(path);
  store.TryLock();
  for (long version = std::stol(store.Read("Race0", "Event0", "0")) + 1;; ++version) {
    {
      WriteGroup group(store);
      for (int key = 0; key < 200; ++key) {
        store.Write(kSections[key % 3], "Event" + std::to_string(key), std::to_string(version));
      }
    }
    if (store.Saved() && write(report, &version, sizeof version) != sizeof version) _exit(1);
  }
}

// The version that the whole file has; -1 if it is a mixture.
long VersionOf(const std::string& path) {
  const ProfileFile file(FileBytes(path));
  const std::string first = ProfileString(file, "Race0", "Event0", "0");
  for (int key = 1; key < 200; ++key) {
    if (ProfileString(file, kSections[key % 3], "Event" + std::to_string(key), "0") != first) return -1;
  }
  return std::stol(first);
}

TEST(ProjectStoreKill, LeavesTheOldFileOrTheNewOne) {
  const int kills = std::getenv("QUORVANE_LONG") != nullptr ? 2000 : 300;
  const ScratchFolder folder;
  const std::string path = folder / "day.ini";
  std::mt19937 random(7);
  long reached = 0;
  for (int kill_number = 0; kill_number < kills; ++kill_number) {
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) SaveForEver(path, report[1]);
    close(report[1]);
    long saved = reached;
    // Every second one has saved before, however slow the machine is.
    if (kill_number % 2 == 0) {
      ASSERT_EQ(read(report[0], &saved, sizeof saved), ssize_t{sizeof saved});
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 12000));
    ASSERT_EQ(kill(child, SIGKILL), 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    for (long version = 0; read(report[0], &version, sizeof version) == sizeof version;) saved = version;
    close(report[0]);

    reached = VersionOf(path);
    ASSERT_GE(reached, saved);
    ASSERT_LE(reached, saved + 1);
  }
  ProjectStore store;
  store.Open(path);
  EXPECT_EQ(store.TryLock(), LockResult::Locked);
  store.Unlock();
  EXPECT_EQ(folder.Entries(), 1) << "what the killed ones left is cleared away by the next owner";
}

}  // namespace
}  // namespace quorvane
