#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <system_error>
#include <thread>

#include "files/file_ops.h"

namespace quorvane {

// The real calls, of which one fails or takes long until it is mended.
class TroubledDisk : public FileOps {
 public:
  static constexpr const char* kSteps[] = {"resolve", "look", "may write", "create",      "mode",
                                           "write",   "sync", "close",     "sync folder", "rename"};
  std::atomic<int> failing = -1;  // of kSteps
  std::atomic<std::errc> error = std::errc::no_space_on_device;
  std::atomic<int> slowMs = 0;  // each call

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
    std::this_thread::sleep_for(std::chrono::milliseconds(slowMs));
    const std::error_code done = call();
    return failing == step ? std::make_error_code(error.load()) : done;
  }
};

}  // namespace quorvane
