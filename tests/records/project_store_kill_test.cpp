#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
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

// Saves version after version, all keys of one with the same number, and reports each once it is saved.
[[noreturn]] void SaveForEver(const std::string& path, std::atomic<long>& saved) {
  ProjectStore store(path);
  store.TryLock();
  for (long version = saved + 1;; ++version) {
    {
      WriteGroup group(store);
      for (int key = 0; key < 200; ++key) {
        store.Write(kSections[key % 3], "Event" + std::to_string(key), std::to_string(version));
      }
    }
    if (store.Saved()) saved = version;
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
  void* shared = mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  auto& saved = *new (shared) std::atomic<long>(0);
  for (int kill_number = 0; kill_number < kills; ++kill_number) {
    const long before = saved;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) SaveForEver(path, saved);
    // Every second one has saved before, however slow the machine is.
    while (kill_number % 2 == 0 && saved == before) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 12000));
    ASSERT_EQ(kill(child, SIGKILL), 0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    const long found = VersionOf(path);
    ASSERT_GE(found, saved);
    ASSERT_LE(found, saved + 1);
    saved = found;
  }
  ProjectStore store(path);
  EXPECT_EQ(store.TryLock(), LockResult::Locked);
  store.Unlock();
  EXPECT_EQ(folder.Entries(), 1) << "what the killed ones left is cleared away by the next owner";
}

}  // namespace
}  // namespace quorvane
