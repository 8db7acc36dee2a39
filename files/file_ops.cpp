#include "files/file_ops.h"

#include <atomic>
#include <filesystem>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

#include "base/text.h"

namespace quorvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTempEnding = ".tmp";
constexpr int kMostLinks = 40;

// Everything up to and including the rename; the caller removes the temporary file if this fails.
std::error_code PutInPlace(FileOps& files, const std::string& target, std::string_view bytes, TempFile& temp,
                           FileStamp& seen) {
  FileStamp written;
  std::error_code error = files.KeepMode(temp, target);
  if (!error) error = files.Write(temp, bytes);
  if (!error) error = files.Sync(temp);
  const std::error_code close_error = files.Close(temp, written);
  if (!error) error = close_error;
  if (error) return error;

  // Writing takes longest, so this is where another program's change would be lost unseen.
  FileStamp now;
  error = files.Look(target, now);
  if (error) return error;
  if (now != seen) return std::make_error_code(kFileChanged);
  error = files.Rename(temp.path, target);
  if (!error) seen = written;
  return error;
}

}  // namespace

std::error_code FileOps::Resolve(const std::string& path, std::string& target) {
  target = path;
  if (path.empty() || path.find('\0') != std::string::npos) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code error;
    const fs::path link = fs::read_symlink(PathOf(target), error);
    const bool none = error == std::errc::invalid_argument || error == std::errc::function_not_supported ||
                      error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    if (error) return none ? std::error_code() : error;
    target = Utf8Of(PathOf(target).parent_path() / link);
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

std::string HiddenBeside(const std::string& target) {
  constexpr size_t kNameLimit = 200;
  const size_t name = target.find_last_of(fs::path::preferred_separator == '/' ? "/" : "\\/") + 1;
  return target.substr(0, name) + "." + target.substr(name, kNameLimit);
}

std::error_code FileOps::CreateTemp(const std::string& target, TempFile& temp) {
  static std::atomic<unsigned> made{0};
  const std::string beginning = HiddenBeside(target) + "." + std::to_string(getpid()) + "-";
  std::error_code error;
  do {
    temp.path = beginning + std::to_string(++made) + std::string(kTempEnding);
    error = CreateNew(temp.path, temp.handle);
  } while (error == std::errc::file_exists);  // left by a process of the same number that was killed
  return error;
}

std::error_code FileOps::Remove(const std::string& path) {
  std::error_code error;
  fs::remove(PathOf(path), error);
  return error;
}

void FileOps::RemoveLeftovers(const std::string& target) {
  const fs::path beside = PathOf(HiddenBeside(target) + ".");
  const std::string beginning = Utf8Of(beside.filename());
  std::error_code error;
  fs::directory_iterator entry(beside.parent_path() / ".", error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::string name = Utf8Of(entry->path().filename());
    if (!name.starts_with(beginning) || !name.ends_with(kTempEnding)) continue;
    const size_t end = name.find_first_not_of("0123456789-", beginning.size());
    std::error_code ignored;
    if (end > beginning.size() && end == name.size() - kTempEnding.size()) {
      fs::remove(beside.parent_path() / entry->path().filename(), ignored);
    }
  }
}

std::error_code ReplaceFile(FileOps& files, const std::string& target, std::string_view bytes,
                            FileStamp& seen) {
  std::error_code error = files.MayWrite(target);
  if (error) return error;
  TempFile temp;
  error = files.CreateTemp(target, temp);
  if (error) return error;
  error = PutInPlace(files, target, bytes, temp, seen);
  if (error) {
    files.Remove(temp.path);
    return error;
  }
  return files.SyncFolder(target);
}

FileOps& SystemFiles() {
  static FileOps files;
  return files;
}

std::optional<std::string> ContentOf(const std::string& path, std::size_t limit) {
  std::string bytes;
  FileStamp stamp;
  if (SystemFiles().ReadFile(path, limit, bytes, stamp)) return std::nullopt;
  return bytes;
}

std::string WholePath(const std::string& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(PathOf(path), error);
  return error ? path : Utf8Of(whole);
}

bool SamePath(const std::string& a, const std::string& b) {
  return a == b || (!a.empty() && !b.empty() && WholePath(a) == WholePath(b));
}

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return SamePath(a, b) || (fs::equivalent(PathOf(a), PathOf(b), error) && !error);
}

}  // namespace quorvane
