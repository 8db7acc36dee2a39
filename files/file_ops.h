#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quorvane {

// What a look at a path found. Equal stamps are of the same file with the same content.
struct FileStamp {
  enum class Kind : std::uint8_t { Missing, File, Folder, Other };

  Kind kind = Kind::Missing;
  uint64_t device = 0;
  uint64_t number = 0;      // of the file on its device
  int64_t modified_ns = 0;  // of the file system's own epoch
  uint64_t size = 0;        // bytes

  bool operator==(const FileStamp&) const = default;
};

// A file that is being written and does not yet stand under its final name.
struct TempFile {
  std::string path;
  std::intptr_t handle = -1;
};

// A held lock; free it with FileOps::Unlock.
struct FileLock {
  std::string path;
  std::intptr_t handle = -1;
  std::intptr_t content = -1;  // a lock on the file itself, which may be reached by a second name

  bool held() const { return handle != -1; }
};

enum class LockResult : std::uint8_t {
  Locked,
  HeldElsewhere,  // another program, or another lock of this one, holds it
  Unavailable,    // no lock can be made there: folder missing or not writable, file system without locks
};

// The file calls that the project file needs, one small step each, so that a test can let any of them fail.
// By hand: no library replaces a file so that a power failure leaves the old or the new one, keeps its rights
// and owner, and tells of another program's change. Paths are UTF-8. Failure is told by the returned error.
class FileOps {
 public:
  virtual ~FileOps() = default;

  // Looks at what `path` leads to, through symbolic links. That nothing is there is a stamp, not an error.
  virtual std::error_code Look(const std::string& path, FileStamp& stamp);

  // Reads a regular file of at most `limit` bytes; `stamp` is what was read. Anything else (a folder, a
  // device, a pipe) is an error and is never waited for.
  virtual std::error_code ReadFile(const std::string& path, size_t limit, std::string& bytes,
                                   FileStamp& stamp);

  // Follows symbolic links to the file that a write to `path` must replace; that file may be missing.
  virtual std::error_code Resolve(const std::string& path, std::string& target);

  // An error if `target` exists and this user may not write to it (renaming over it would work all the same).
  virtual std::error_code MayWrite(const std::string& target);

  // The steps of a replacement: a new, empty file in the folder of `target` that no one else has, the rights
  // and owner of `target` (if that exists), the content, on the disk, closed, in place, the folder's entry on
  // the disk.
  virtual std::error_code CreateTemp(const std::string& target, TempFile& temp);
  virtual std::error_code KeepMode(const TempFile& temp, const std::string& target);
  virtual std::error_code Write(const TempFile& temp, std::string_view bytes);
  virtual std::error_code Sync(const TempFile& temp);
  virtual std::error_code Close(TempFile& temp, FileStamp& stamp);  // stamp: what has been written
  virtual std::error_code Rename(const std::string& from, const std::string& to);
  virtual std::error_code SyncFolder(const std::string& target);

  virtual std::error_code Remove(const std::string& path);

  // Removes what killed replacements of `target` have left in its folder. Only for who holds its lock.
  virtual void RemoveLeftovers(const std::string& target);

  // Takes the lock of `target`, a hidden file beside it, without waiting; and, where there are hard links,
  // one on the file itself. A program that dies gives its lock back; the file it leaves behind means nothing.
  virtual LockResult Lock(const std::string& target, FileLock& lock);
  virtual void Unlock(FileLock& lock);
  // Another file stands at `target` now: a held lock moves there, if it can be had.
  virtual void FollowLock(const std::string& target, FileLock& lock);

 private:
  // An error that equals std::errc::file_exists when the name is taken.
  static std::error_code CreateNew(const std::string& path, std::intptr_t& handle);
};

// A hidden name beside `target`. Long names are cut, so that a longer one is still a legal name.
std::string HiddenBeside(const std::string& target);

FileOps& SystemFiles();

// The bytes of a regular file of at most `limit` bytes; nothing when there is none that can be read.
std::optional<std::string> ContentOf(const std::string& path, std::size_t limit);

// Replaces the whole content of `target` (made if missing) in one step: whoever looks, even after a power
// failure, finds the old file or the new one; without error the new one is on the disk.
//
// `seen` is what the caller last saw at `target`; if something else stands there, nothing is replaced and the
// error is kFileChanged. Afterwards it is what stands there now. If only the last step failed, that is the
// new file, which may not outlive a power failure; on any other failure it is the old one.
std::error_code ReplaceFile(FileOps& files, const std::string& target, std::string_view bytes,
                            FileStamp& seen);

inline constexpr std::errc kFileChanged = std::errc::resource_unavailable_try_again;

// Without links, "." and ".."; as it is where that cannot be told.
std::string WholePath(const std::string& path);
// Whether two names lead to one file, which may be missing. The second also knows hard links.
bool SamePath(const std::string& a, const std::string& b);
bool SameFile(const std::string& a, const std::string& b);

// For the start of a program: a full quota, or a reader that has gone away, is then an error of the write
// that meets it, not the end of the program; and the standard streams carry bytes as they are.
void OutliveWriteErrors();

// What stands on the command line after the program's name, in UTF-8.
std::vector<std::string> CommandLineWords(int argc, char** argv);

}  // namespace quorvane
