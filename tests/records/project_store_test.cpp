#include "records/project_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "tests/records/scratch_folder.h"
#include "tests/support/ordinary_user.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// The real file calls, one of which can be made to fail, or to be preceded by something that another program
// does.
class TroubledFiles : public SystemFileOps {
 public:
  std::string failing;
  std::function<void()> before_rename;
  int replacements = 0;

  std::error_code CreateTemp(const std::string& target, TempFile& temp) override {
    return Fails("create") ? Error() : SystemFileOps::CreateTemp(target, temp);
  }
  std::error_code KeepMode(const TempFile& temp, const std::string& target) override {
    return Fails("mode") ? Error() : SystemFileOps::KeepMode(temp, target);
  }
  std::error_code Write(const TempFile& temp, std::string_view bytes) override {
    if (!Fails("write")) return SystemFileOps::Write(temp, bytes);
    SystemFileOps::Write(temp, bytes.substr(0, bytes.size() / 2));
    return Error();
  }
  std::error_code Sync(const TempFile& temp) override {
    return Fails("sync") ? Error() : SystemFileOps::Sync(temp);
  }
  std::error_code StampOf(const TempFile& temp, FileStamp& stamp) override {
    return Fails("stamp") ? Error() : SystemFileOps::StampOf(temp, stamp);
  }
  std::error_code Close(TempFile& temp) override {
    const std::error_code closed = SystemFileOps::Close(temp);
    if (before_rename) before_rename();
    return Fails("close") ? Error() : closed;
  }
  std::error_code Rename(const std::string& from, const std::string& to) override {
    if (Fails("rename")) return Error();
    ++replacements;
    return SystemFileOps::Rename(from, to);
  }
  std::error_code SyncFolder(const std::string& target) override {
    return Fails("sync folder") ? Error() : SystemFileOps::SyncFolder(target);
  }

 private:
  bool Fails(const char* step) const { return failing == step; }
  static std::error_code Error() { return std::make_error_code(std::errc::no_space_on_device); }
};

class ProjectStoreTest : public testing::Test {
 protected:
  std::string File() { return FileBytes(path_); }

  ScratchFolder folder_;
  std::string path_ = folder_ / "day.ini";
  TroubledFiles files_;
  ProjectStore store_{files_};
};

TEST_F(ProjectStoreTest, AMissingFileReadsAsEmptyAndIsMadeByTheFirstWrite) {
  store_.Open(path_);
  EXPECT_EQ(store_.Read("Current", "Race", " 1  "), " 1");
  EXPECT_EQ(folder_.Entries(), 0);
  store_.Write("Current", "Race", "2");
  EXPECT_EQ(File(), "[Current]\r\nRace=2\r\n");
  EXPECT_EQ(folder_.Entries(), 1);
  EXPECT_TRUE(store_.Saved());
}

TEST_F(ProjectStoreTest, AGroupIsOneReplacementAndNoChangeIsNone) {
  store_.Open(path_);
  {
    WriteGroup outer(store_);
    store_.Write("a", "k", "1");
    WriteGroup inner(store_);
    store_.Write("a", "j", "2");
    EXPECT_EQ(store_.Read("a", "j", ""), "2");
  }
  EXPECT_EQ(files_.replacements, 1);
  EXPECT_EQ(File(), "[a]\r\nk=1\r\nj=2\r\n");
  store_.Write("a", "k", "1");
  EXPECT_EQ(files_.replacements, 1);
}

TEST_F(ProjectStoreTest, AMissingFolderLosesNothingUntilItIsThere) {
  const std::string deep = folder_ / "later/day.ini";
  store_.Open(deep);
  store_.Write("a", "k", "1");
  EXPECT_FALSE(store_.Saved());
  EXPECT_THAT(store_.Problem(), HasSubstr(deep));
  EXPECT_EQ(store_.Read("a", "k", ""), "1");
  fs::create_directory(folder_ / "later");
  EXPECT_TRUE(store_.Retry());
  EXPECT_EQ(FileBytes(deep), "[a]\r\nk=1\r\n");
}

class FailingStep : public ProjectStoreTest, public testing::WithParamInterface<const char*> {};

TEST_P(FailingStep, KeepsTheOldFileAndWhatWasToBeWritten) {
  const bool last_step = std::string(GetParam()) == "sync folder";
  PutFile(path_, "[a]\nk=1\n");
  store_.Open(path_);
  files_.failing = GetParam();
  {
    WriteGroup group(store_);
    store_.Write("a", "k", "2");
    store_.Write("b", "j", "3");
  }
  EXPECT_FALSE(store_.Saved());
  EXPECT_FALSE(store_.Retry());
  EXPECT_EQ(File(), last_step ? "[a]\nk=2\n[b]\nj=3\n" : "[a]\nk=1\n");
  EXPECT_EQ(folder_.Entries(), 1);
  EXPECT_EQ(store_.Read("a", "k", ""), "2");

  files_.failing.clear();
  store_.Write("b", "i", "4");
  EXPECT_TRUE(store_.Saved());
  EXPECT_EQ(File(), "[a]\nk=2\n[b]\nj=3\ni=4\n");
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingStep,
                         testing::Values("create", "mode", "write", "sync", "stamp", "close", "rename",
                                         "sync folder"));

TEST_F(ProjectStoreTest, ChangesOfAnotherProgramAndOwnOnesAreBothKept) {
  PutFile(path_, "[a]\nk=1\n[b]\nj=1\n");
  store_.Open(path_);
  files_.failing = "rename";
  store_.Write("a", "k", "2");
  PutFile(path_, "; edited\n[a]\nk=1\nnew=5\n[b]\nj=9\n");
  EXPECT_EQ(store_.Read("b", "j", ""), "9");
  EXPECT_EQ(store_.Read("a", "k", ""), "2");
  files_.failing.clear();
  EXPECT_TRUE(store_.Retry());
  EXPECT_EQ(File(), "; edited\n[a]\nk=2\nnew=5\n[b]\nj=9\n");
}

TEST_F(ProjectStoreTest, AChangeInTheMiddleOfASaveIsTakenIn) {
  PutFile(path_, "[a]\nk=1\n");
  store_.Open(path_);
  files_.before_rename = [&] {
    PutFile(path_, "[a]\nk=1\nother=1\n");
    files_.before_rename = nullptr;
  };
  store_.Write("a", "k", "2");
  EXPECT_EQ(File(), "[a]\nk=2\nother=1\n");

  int turn = 0;
  files_.before_rename = [&] {
    PutFile(path_, "[a]\nk=" + std::string(static_cast<size_t>(++turn), '9') + "\n");
  };
  store_.Write("a", "k", "3");
  EXPECT_FALSE(store_.Saved());
  EXPECT_EQ(folder_.Entries(), 1);
  files_.before_rename = nullptr;
  EXPECT_TRUE(store_.Retry());
  EXPECT_EQ(File(), "[a]\nk=3\n");
}

TEST_F(ProjectStoreTest, AFileThatDisappearsIsWrittenAgainWhole) {
  PutFile(path_, "[a]\nk=1\n");
  store_.Open(path_);
  fs::remove(path_);
  EXPECT_EQ(store_.Read("a", "k", ""), "1");
  store_.Write("a", "k", "1");
  EXPECT_EQ(File(), "[a]\nk=1\n");
}

// What must never be replaced: each is made at the path, read and written, and must then still be what it
// was.
struct Obstacle {
  const char* name;
  std::function<void(const std::string&)> make;
  mode_t type;
};

class Unreadable : public ProjectStoreTest, public testing::WithParamInterface<Obstacle> {};

TEST_P(Unreadable, ReadsAsEmptyAndIsNeverReplaced) {
  GetParam().make(path_);
  store_.Open(path_);
  EXPECT_EQ(store_.Read("a", "k", "none"), "none");
  store_.Write("a", "k", "1");
  EXPECT_FALSE(store_.Saved());
  EXPECT_EQ(store_.Read("a", "k", "none"), "1");
  struct stat found = {};
  ASSERT_EQ(lstat(path_.c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & S_IFMT, GetParam().type);
  EXPECT_EQ(ProfileStringFrom(files_, path_, "a", "k", "none"), "none");

  fs::remove(path_);
  EXPECT_TRUE(store_.Retry());
  EXPECT_EQ(File(), "[a]\r\nk=1\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    Things, Unreadable,
    testing::Values(
        Obstacle{"Folder", [](const auto& path) { fs::create_directory(path); }, S_IFDIR},
        Obstacle{"Pipe", [](const auto& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); }, S_IFIFO},
        Obstacle{"Device", [](const auto& path) { fs::create_symlink("/dev/null", path); }, S_IFLNK},
        Obstacle{"LinkToItself", [](const auto& path) { fs::create_symlink(path, path); }, S_IFLNK},
        Obstacle{"HugeFile",
                 [](const auto& path) {
                   PutFile(path, "[a]\nk=0\n");
                   fs::resize_file(path, (uintmax_t{256} << 20) + 1);
                 },
                 S_IFREG}),
    [](const auto& test) { return test.param.name; });

TEST_F(ProjectStoreTest, AFileWithoutPermissionIsNotReplaced) {
  PutFile(path_, "[a]\nk=1\n");
  for (const fs::perms rights : {fs::perms(0222), fs::perms(0444)}) {
    fs::permissions(folder_.path(), fs::perms::all);
    fs::permissions(path_, rights);
    const AsOrdinaryUser user;
    store_.Open(path_);
    EXPECT_EQ(store_.Read("a", "k", "none"), rights == fs::perms(0444) ? "1" : "none");
    store_.Write("a", "k", "2");
    EXPECT_THAT(store_.Problem(), HasSubstr("Permission denied"));
    EXPECT_EQ(store_.Read("a", "k", "none"), "2");
  }
  EXPECT_EQ(File(), "[a]\nk=1\n");
  EXPECT_EQ(folder_.Entries(), 1);
  fs::permissions(path_, fs::perms(0666));
  EXPECT_TRUE(store_.Retry());
  EXPECT_EQ(File(), "[a]\nk=2\n");
}

TEST_F(ProjectStoreTest, FollowsLinksAndKeepsTheMode) {
  fs::create_directory(folder_ / "real");
  PutFile(folder_ / "real/day.ini", "[a]\nk=1\n");
  fs::permissions(folder_ / "real/day.ini", fs::perms(0640));
  fs::create_symlink("real/day.ini", folder_ / "link");
  fs::create_symlink("link", path_);
  store_.Open(path_);
  store_.Write("a", "k", "2");
  EXPECT_TRUE(fs::is_symlink(path_));
  EXPECT_EQ(FileBytes(folder_ / "real/day.ini"), "[a]\nk=2\n");
  EXPECT_EQ(fs::status(folder_ / "real/day.ini").permissions(), fs::perms(0640));

  fs::create_symlink("real/not-yet.ini", folder_ / "new");
  store_.Open(folder_ / "new");
  store_.Write("a", "k", "3");
  EXPECT_EQ(FileBytes(folder_ / "real/not-yet.ini"), "[a]\r\nk=3\r\n");
}

TEST_F(ProjectStoreTest, StaysWithTheFileWhenTheCurrentFolderChanges) {
  const fs::path old = fs::current_path();
  fs::current_path(folder_.path());
  store_.Open("day.ini");
  fs::current_path(old);
  store_.Write("a", "k", "1");
  EXPECT_EQ(File(), "[a]\r\nk=1\r\n");
}

TEST_F(ProjectStoreTest, APathThatCannotBeOneLosesNothing) {
  for (const std::string& path : {std::string(), std::string("a\0b", 3), folder_ / std::string(5000, 'x')}) {
    store_.Open(path);
    EXPECT_EQ(store_.TryLock(), LockResult::Unavailable);
    store_.Write("a", "k", "1");
    EXPECT_FALSE(store_.Saved());
    EXPECT_EQ(store_.Read("a", "k", ""), "1");
  }
}

TEST_F(ProjectStoreTest, LongNamesAreSavedAndLocked) {
  const std::string path = folder_ / std::string(255, 'n');
  store_.Open(path);
  EXPECT_EQ(store_.TryLock(), LockResult::Locked);
  store_.Write("a", "k", "1");
  EXPECT_TRUE(store_.Saved());
}

TEST_F(ProjectStoreTest, OneLockHolderAtATime) {
  ProjectStore other;
  store_.Open(path_);
  fs::create_symlink(path_, folder_ / "link");
  other.Open(folder_ / "link");
  EXPECT_EQ(store_.TryLock(), LockResult::Locked);
  EXPECT_EQ(store_.TryLock(), LockResult::Locked);
  EXPECT_EQ(other.TryLock(), LockResult::HeldElsewhere);
  store_.Write("a", "k", "1");
  EXPECT_EQ(other.TryLock(), LockResult::HeldElsewhere);
  store_.Open(folder_ / "another.ini");
  EXPECT_EQ(other.TryLock(), LockResult::Locked);
  other.Unlock();
  EXPECT_EQ(folder_.Entries(), 2);  // the file and the link to it
}

TEST_F(ProjectStoreTest, ReadsAsThroughABufferOf2048Characters) {
  std::string long_text;
  for (int i = 0; i < 2100; ++i) long_text += "é";
  store_.Open(path_);
  store_.Write("a", "k", long_text);
  EXPECT_EQ(store_.Read("a", "k", ""), long_text.substr(0, size_t{2} * 2047));
  EXPECT_EQ(store_.Read("a", "none", long_text), long_text.substr(0, size_t{2} * 2047));
  EXPECT_EQ(ProfileStringFrom(files_, path_, "A", "K", "").size(), size_t{2} * 2047);
  EXPECT_EQ(ProfileStringFrom(files_, folder_ / "none.ini", "A", "K", " x  "), " x");
}

}  // namespace
}  // namespace quorvane
