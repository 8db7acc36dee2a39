#include "records/project_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <functional>

#include "files/file_ops.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/script.h"
#include "tests/support/test_data.h"

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

// "put=text": a program writes the file; "meanwhile=text": in the middle of a save, "always": of each.
class StoreScript {
 public:
  std::string Played(const std::string& line) {
    player_.Line(line);
    std::string text = Replaced(Replaced(FileBytes(path_), "\r", "\\r"), "\n", "\n    ");
    Look now{{"store", {{"written", std::to_string(files_.replacements)}}}};
    now["store"]["files"] = std::to_string(folder_.Entries());
    if (store_ && !store_->Saved()) now["store"]["problem"] = Replaced(store_->Problem(), path_, "FILE");
    if (text != std::exchange(text_, text)) told_ += "  file:\n    " + text + "\n";
    return std::exchange(told_, {}) + Changes(std::exchange(before_, now), now);
  }

 private:
  void Do(const Step& step) {
    const std::string section = step.first.substr(0, step.first.find('/'));
    const std::string key = step.first.substr(section.size() + 1 - (section == step.first ? 1 : 0));
    const std::map<std::string, std::function<void()>> steps = {
        {"put", [&] { PutFile(path_, step.value); }},
        {"remove", [&] { fs::remove(path_); }},
        {"open", [&] { store_.emplace(path_, files_); }},
        {"read", [&] { told_ += "  reads \"" + store_->Read(section, key, step.second) + "\"\n"; }},
        {"write", [&] { store_->Write(section, key, step.second); }},
        {"fail", [&] { files_.failing = step.value; }},
        {"group", [&] { groups_.push_back(std::make_unique<WriteGroup>(*store_)); }},
        {"ungroup", [&] { groups_.pop_back(); }},
        {"retry", [&] { told_ += store_->Retry() ? "  done\n" : "  still to be written\n"; }},
        {"moved", [&] { TellMoved(); }},
        {"replaced", [&] { told_ += "  before: " + Replaced(store_->TakeReplaced(), "\n", "|") + "\n"; }},
        {"meanwhile", [&] { files_.before_rename = [this, t = step.value] { Meddle(t), Leave(); }; }},
        {"always", [&] { files_.before_rename = [this, t = step.value]() mutable { Meddle(t += "9"); }; }},
        {"alone", [&] { Leave(); }}};
    steps.at(step.word)();
  }
  void Meddle(const std::string& text) { PutFile(path_, text); }
  void Leave() { leaving_ = std::exchange(files_.before_rename, nullptr); }
  void TellMoved() {
    std::vector<std::string> moved;
    store_->TakeMoved(moved);
    for (const std::string& text : moved) told_ += "  " + text + "\n";
  }

  ScratchFolder folder_;
  std::string path_ = folder_ / "day.ini";
  TroubledFiles files_;
  std::optional<ProjectStore> store_;
  std::vector<std::unique_ptr<WriteGroup>> groups_;
  StepPlayer player_{[this](const Step& step) { Do(step); }};
  std::function<void()> leaving_;  // lives until it has returned
  std::string told_, text_;
  Look before_;
};

TEST(ProjectStoreScript, DoesWhatItSays) {
  std::optional<StoreScript> store;
  PlayScript(
      TestData() + "/records/store.txt", [&](const std::string&) { store.emplace(); },
      [&](const std::string& line) { return store->Played(line); });
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

TEST_F(ProjectStoreTest, ClearsAwayWhatKilledSavesHaveLeftAndNothingElse) {
  for (const char* name : {".day.ini.123-4.tmp", ".day.ini..tmp", ".day.ini.12x-4.tmp", ".day.ini.123-4.tmpx",
                           "day.ini.1-1.tmp", ".days.ini.1-1.tmp"}) {
    PutFile(folder_ / name, "");
  }
  Open(path_);
  EXPECT_EQ(store_->TryLock(), LockResult::Locked);
  EXPECT_FALSE(fs::exists(folder_ / ".day.ini.123-4.tmp"));
  EXPECT_EQ(folder_.Entries(), 6);  // one of them is the lock
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
