#include "records/project_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <functional>

#include "files/file_ops.h"
#include "tests/support/scratch_folder.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

using Files = FileOps;
using Error = std::error_code;

// The real file calls, one of which can be made to fail, or to be preceded by something that another program
// does.
class TroubledFiles : public Files {
 public:
  std::string failing;
  std::function<void()> before_rename;
  int replacements = 0;

  Error CreateTemp(const std::string& target, TempFile& temp) override {
    return failing == "create" ? kFull : Files::CreateTemp(target, temp);
  }
  Error KeepMode(const TempFile& t, const std::string& to) override {
    return Or("mode", Files::KeepMode(t, to));
  }
  Error Write(const TempFile& temp, std::string_view bytes) override {
    return Or("write", Files::Write(temp, bytes.substr(0, bytes.size() / (failing == "write" ? 2 : 1))));
  }
  Error Sync(const TempFile& temp) override { return Or("sync", Files::Sync(temp)); }
  Error Close(TempFile& temp, FileStamp& stamp) override {
    const Error closed = Files::Close(temp, stamp);
    if (before_rename) before_rename();
    return Or("close", closed);
  }
  Error Rename(const std::string& from, const std::string& to) override {
    if (failing == "rename") return kFull;
    ++replacements;
    return Files::Rename(from, to);
  }
  Error SyncFolder(const std::string& to) override { return Or("sync folder", Files::SyncFolder(to)); }

 private:
  const Error kFull = std::make_error_code(std::errc::no_space_on_device);
  Error Or(const char* step, Error done) const { return failing == step ? kFull : done; }
};

class ProjectStoreTest : public testing::Test {
 protected:
  std::string File() { return FileBytes(path_); }
  void Open(const std::string& path) { store_.emplace(path, files_); }
  void OpenWith(const std::string& bytes) {
    PutFile(path_, bytes);
    Open(path_);
  }

  ScratchFolder folder_;
  std::string path_ = folder_ / "day.ini";
  TroubledFiles files_;
  std::optional<ProjectStore> store_;
};

TEST_F(ProjectStoreTest, AGroupIsOneReplacementAndNoChangeIsNone) {
  Open(path_);
  EXPECT_EQ(store_->Read("a", "k", " 1  "), " 1");
  EXPECT_EQ(folder_.Entries(), 0);
  {
    WriteGroup outer(*store_);
    store_->Write("a", "k", "1");
    { const WriteGroup inner(*store_); }
    store_->Write("a", "j", "2");
    EXPECT_EQ(store_->Read("a", "j", ""), "2");
  }
  store_->Write("a", "k", "1");
  EXPECT_EQ(files_.replacements, 1);
  EXPECT_EQ(File(), "[a]\r\nk=1\r\nj=2\r\n");
}

TEST_F(ProjectStoreTest, AStepThatFailsKeepsTheOldFileAndWhatWasToBeWritten) {
  for (const char* step : {"create", "mode", "write", "sync", "close", "rename", "sync folder"}) {
    OpenWith("[a]\nk=1\n");
    files_.failing = step;
    {
      WriteGroup group(*store_);
      store_->Write("a", "k", "2");
      store_->Write("b", "j", "3");
    }
    EXPECT_FALSE(store_->Saved() || store_->Retry()) << step;
    EXPECT_EQ(File(), files_.failing == "sync folder" ? "[a]\nk=2\n[b]\nj=3\n" : "[a]\nk=1\n") << step;
    EXPECT_EQ(folder_.Entries(), 1) << step;
    EXPECT_EQ(store_->Read("a", "k", ""), "2");

    files_.failing.clear();
    store_->Write("b", "i", "4");
    EXPECT_TRUE(store_->Saved());
    EXPECT_EQ(File(), "[a]\nk=2\n[b]\nj=3\ni=4\n") << step;
  }
}

TEST_F(ProjectStoreTest, ChangesOfAnotherProgramAndOwnOnesAreBothKept) {
  OpenWith("[a]\nk=1\n[b]\nj=1\n");
  files_.failing = "rename";
  store_->Write("a", "k", "2");
  PutFile(path_, "; edited\n[a]\nk=1\nnew=5\n[b]\nj=9\n");
  EXPECT_EQ(store_->Read("b", "j", ""), "9");
  EXPECT_EQ(store_->Read("a", "k", ""), "2");
  files_.failing.clear();
  EXPECT_TRUE(store_->Retry());
  const std::string both = "; edited\n[a]\nk=2\nnew=5\n[b]\nj=9\n";
  EXPECT_EQ(File(), both);
  // What another program has written itself is not written again.
  files_.failing = "rename";
  store_->Write("a", "k", "3");
  PutFile(path_, "[a]\nk=3\n");
  files_.failing.clear();
  const int before = files_.replacements;
  EXPECT_TRUE(store_->Retry());
  EXPECT_EQ(files_.replacements, before);
  PutFile(path_, both);
  EXPECT_EQ(store_->Read("a", "k", ""), "2");
  // A file that disappears is written again whole.
  fs::remove(path_);
  EXPECT_EQ(store_->Read("a", "k", ""), "2");
  store_->Write("a", "k", "2");
  EXPECT_EQ(File(), both);
}

TEST_F(ProjectStoreTest, AContestOutlivesAProgramThatEmptiesItsFileOrPutsAnotherThere) {
  const std::string contest = "[Current]\nTitle=Cup\n";
  OpenWith(contest);
  PutFile(path_, "\n");
  EXPECT_EQ(store_->Read("Current", "Title", ""), "Cup");
  EXPECT_FALSE(store_->Saved());
  EXPECT_TRUE(store_->Retry());
  EXPECT_EQ(File(), contest);

  PutFile(path_, "quorvane-journal 1\n");
  store_->Write("Current", "Title", "Derby");
  EXPECT_FALSE(store_->Saved());
  EXPECT_EQ(store_->Read("Current", "Title", ""), "Derby");
  EXPECT_EQ(File(), "quorvane-journal 1\n");
  fs::remove(path_);
  EXPECT_TRUE(store_->Retry());
  EXPECT_EQ(File(), "[Current]\nTitle=Derby\n");
}

TEST_F(ProjectStoreTest, AChangeInTheMiddleOfASaveIsTakenIn) {
  OpenWith("[a]\nk=1\n");
  files_.before_rename = [&] {
    PutFile(path_, "[a]\nk=1\nother=1\n");
    files_.before_rename = nullptr;
  };
  store_->Write("a", "k", "2");
  EXPECT_EQ(File(), "[a]\nk=2\nother=1\n");

  std::string nines;
  files_.before_rename = [&] { PutFile(path_, "[a]\nk=" + (nines += "9") + "\n"); };
  store_->Write("a", "k", "3");
  EXPECT_FALSE(store_->Saved());
  EXPECT_EQ(folder_.Entries(), 1);
  files_.before_rename = nullptr;
  EXPECT_TRUE(store_->Retry());
  EXPECT_EQ(File(), "[a]\nk=3\n");
}

TEST_F(ProjectStoreTest, WhatWasKeptGoesIntoItsOwnContestOnlyAndOverNoFlight) {
  Open(path_);
  files_.failing = "create";
  const char* const kKept[][3] = {{"Current", "Title", "Cup"},
                                  {"Current", "HeatsPerRound", "4"},
                                  {"Current", "NumberReflys", "1"},
                                  {"Race1", "Timestamp", "50"},
                                  {"Race1", "CurrentRace", "1 (h=1, r=1)"},
                                  {"Race1_Lane2", "NumLaps", "10"},
                                  {"Race1", "ReflyID", "1 (index to"},
                                  {"Refly1", "Timestamp", "60"},
                                  {"Refly1", "CurrentRace", "1 (h=1, r=1)"}};
  for (const auto& [section, key, value] : kKept) store_->Write(section, key, value);
  files_.failing.clear();

  const std::string other = "[Current]\nTitle=Derby\n[Race1]\nTimestamp=7\n";
  PutFile(path_, other);
  EXPECT_FALSE(store_->Retry());
  EXPECT_NE(store_->Problem().find("another contest"), std::string::npos);
  EXPECT_EQ(store_->Read("Current", "Title", ""), "Cup");
  EXPECT_EQ(File(), other);

  const std::string flown =
      "[Current]\nTitle=Cup\nHeatsPerRound=4\nNumberReflys=7\n"
      "[Race1]\nTimestamp=7\nCurrentRace=1 (h=1, r=1)\nReflyID=1 (index to\n[Race5]\nTimestamp=8\n"
      "[Refly1]\nTimestamp=9\n[Race2]\nTimestamp=10\n[Race3]\nTimestamp=11\n[Race4]\nTimestamp=12\n";
  PutFile(path_, flown);
  EXPECT_TRUE(store_->Retry());
  EXPECT_EQ(File(), flown +
                        "[Race6]\nTimestamp=50\nCurrentRace=6 (h=2, r=2)\n"
                        "ReflyID=2 (index to\n[Race6_Lane2]\nNumLaps=10\n"
                        "[Refly2]\nTimestamp=60\nCurrentRace=6 (h=2, r=2)\n");
  std::vector<std::string> moved;
  store_->TakeMoved(moved);
  EXPECT_EQ(moved, (std::vector<std::string>{"Race 1 is in the project already: saved as 6",
                                             "Refly 1 is in the project already: saved as 2"}));
  // The event's name decides, also when it is given afterwards.
  files_.failing = "create";
  store_->Write("Race9", "Timestamp", "70");
  files_.failing.clear();
  const std::string derby = "[Current]\nTitle=Derby\n[Race1]\nTimestamp=77\n";
  PutFile(path_, derby);
  EXPECT_FALSE(store_->Retry());
  store_->Write("Current", "Title", "Derby");
  EXPECT_EQ(File(), derby + "[Race9]\nTimestamp=70\n");
}

// A full quota is told by a signal first.
TEST_F(ProjectStoreTest, AFullQuotaIsNotTheEnd) {
  OutliveWriteErrors();
  rlimit old = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
  OpenWith("");
  const rlimit none = {0, old.rlim_max};
  setrlimit(RLIMIT_FSIZE, &none);
  store_->Write("a", "k", "1");
  setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_FALSE(store_->Saved());
  EXPECT_TRUE(store_->Retry());
  EXPECT_EQ(File(), "[a]\r\nk=1\r\n");
}

// Folders, devices and files without permission are met by the whole console's tests.
TEST_F(ProjectStoreTest, WhatCannotBeReadIsEmptyAndNeverReplaced) {
  const std::pair<mode_t, std::function<void()>> kThings[] = {
      {S_IFIFO, [&] { ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0); }},
      {S_IFLNK, [&] { fs::create_symlink(path_, path_); }},
      {S_IFREG,
       [&] {
         PutFile(path_, "[a]\nk=0\n");
         fs::resize_file(path_, (uintmax_t{256} << 20) + 1);
       }},
  };
  for (const auto& [type, make] : kThings) {
    make();
    Open(path_);
    EXPECT_EQ(store_->Read("a", "k", "none"), "none");
    store_->Write("a", "k", "1");
    EXPECT_FALSE(store_->Saved());
    EXPECT_EQ(store_->Read("a", "k", "none"), "1");
    struct stat found = {};
    ASSERT_EQ(lstat(path_.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & S_IFMT, type);

    fs::remove(path_);
    EXPECT_TRUE(store_->Retry());
    EXPECT_EQ(File(), "[a]\r\nk=1\r\n");
    fs::remove(path_);
  }
}

TEST_F(ProjectStoreTest, FollowsLinksKeepsTheModeAndStaysWhenTheFolderChanges) {
  fs::create_directory(folder_ / "real");
  PutFile(folder_ / "real/day.ini", "[a]\nk=1\n");
  fs::permissions(folder_ / "real/day.ini", fs::perms(0640));
  fs::create_symlink("real/day.ini", folder_ / "link");
  fs::create_symlink("link", path_);
  const fs::path old = fs::current_path();
  fs::current_path(folder_.path());
  Open("day.ini");
  fs::current_path(old);
  store_->Write("a", "k", "2");
  EXPECT_TRUE(fs::is_symlink(path_));
  EXPECT_EQ(FileBytes(folder_ / "real/day.ini"), "[a]\nk=2\n");
  EXPECT_EQ(fs::status(folder_ / "real/day.ini").permissions(), fs::perms(0640));

  fs::create_symlink("real/not-yet.ini", folder_ / "new");
  Open(folder_ / "new");
  store_->Write("a", "k", "3");
  EXPECT_EQ(FileBytes(folder_ / "real/not-yet.ini"), "[a]\r\nk=3\r\n");
}

TEST_F(ProjectStoreTest, APathThatCannotBeOneLosesNothing) {
  const std::pair<std::string, bool> kPaths[] = {{"", false},
                                                 {std::string("a\0b", 3), false},
                                                 {folder_ / std::string(5000, 'x'), false},
                                                 {folder_ / std::string(255, 'n'), true}};
  for (const auto& [path, possible] : kPaths) {
    Open(path);
    EXPECT_EQ(store_->TryLock(), possible ? LockResult::Locked : LockResult::Unavailable);
    store_->Write("a", "k", "1");
    EXPECT_EQ(store_->Saved(), possible);
    EXPECT_EQ(store_->Read("a", "k", ""), "1");
  }
}

TEST_F(ProjectStoreTest, ReadsAsThroughABufferOf2048Characters) {
  std::string text;
  for (int i = 0; i < 2047; ++i) text += "é";
  Open(path_);
  store_->Write("a", "k", text + "éé");
  EXPECT_EQ(store_->Read("a", "k", ""), text);
  EXPECT_EQ(store_->Read("a", "none", text + "éé"), text);
}

}  // namespace
}  // namespace quorvane
