#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/text.h"
#include "files/file_ops.h"

namespace quorvane {

namespace {

// Virus scanners and backup programs open a file for a moment just after it was written.
constexpr int kLockedTries = 30;
constexpr DWORD kLockedPauseMs = 50;

std::error_code LastError() {
  return {static_cast<int>(GetLastError()), std::system_category()};
}

std::error_code ErrorIf(bool failed) {
  return failed ? LastError() : std::error_code();
}

HANDLE HandleOf(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

std::error_code StampOfHandle(HANDLE handle, FileStamp& stamp) {
  BY_HANDLE_FILE_INFORMATION found = {};
  stamp = {};
  if (!GetFileInformationByHandle(handle, &found)) return LastError();
  const auto whole = [](DWORD high, DWORD low) { return (uint64_t{high} << 32) | low; };
  const bool folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  stamp.kind = folder                                  ? FileStamp::Kind::Folder
               : GetFileType(handle) == FILE_TYPE_DISK ? FileStamp::Kind::File
                                                       : FileStamp::Kind::Other;
  stamp.device = found.dwVolumeSerialNumber;
  stamp.number = whole(found.nFileIndexHigh, found.nFileIndexLow);
  stamp.modified_ns = static_cast<int64_t>(
      whole(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime) * 100);
  stamp.size = whole(found.nFileSizeHigh, found.nFileSizeLow);
  return {};
}

bool IsMissing(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool IsLockedForAMoment(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED || error == ERROR_LOCK_VIOLATION;
}

HANDLE OpenShared(const std::string& path, DWORD access) {
  return CreateFileW(PathOf(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

}  // namespace

std::error_code FileOps::Look(const std::string& path, FileStamp& stamp) {
  stamp = {};
  const HANDLE handle = OpenShared(path, FILE_READ_ATTRIBUTES);
  if (handle == INVALID_HANDLE_VALUE) return ErrorIf(!IsMissing(GetLastError()));
  const std::error_code error = StampOfHandle(handle, stamp);
  CloseHandle(handle);
  return error;
}

std::error_code FileOps::ReadFile(const std::string& path, size_t limit, std::string& bytes,
                                  FileStamp& stamp) {
  bytes.clear();
  const HANDLE handle = OpenShared(path, GENERIC_READ);
  if (handle == INVALID_HANDLE_VALUE) return LastError();
  std::error_code error = StampOfHandle(handle, stamp);
  if (!error && stamp.kind != FileStamp::Kind::File) error = std::make_error_code(std::errc::is_a_directory);
  if (!error && stamp.size > limit) error = std::make_error_code(std::errc::file_too_large);
  if (!error) bytes.resize(static_cast<size_t>(stamp.size));
  size_t length = 0;
  while (!error && length < bytes.size()) {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(bytes.size() - length);
    error = ErrorIf(!::ReadFile(handle, bytes.data() + length, wanted, &got, nullptr));
    if (got == 0) break;
    length += got;
  }
  CloseHandle(handle);
  bytes.resize(error ? 0 : length);
  return error;
}

std::error_code FileOps::MayWrite(const std::string& target) {
  const DWORD attributes = GetFileAttributesW(PathOf(target).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0) return {};
  return std::make_error_code(std::errc::permission_denied);
}

std::error_code FileOps::CreateNew(const std::string& path, std::intptr_t& handle) {
  const HANDLE made = CreateFileW(PathOf(path).c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, 0, nullptr,
                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  handle = reinterpret_cast<std::intptr_t>(made);
  return ErrorIf(made == INVALID_HANDLE_VALUE);
}

// The new file inherits the rights of its folder, as the old one did.
std::error_code FileOps::KeepMode(const TempFile&, const std::string&) {
  return {};
}

std::error_code FileOps::Write(const TempFile& temp, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto piece = static_cast<DWORD>(std::min<size_t>(bytes.size(), size_t{1} << 20));
    if (!WriteFile(HandleOf(temp.handle), bytes.data(), piece, &written, nullptr)) return LastError();
    if (written == 0) return std::make_error_code(std::errc::io_error);
    bytes.remove_prefix(written);
  }
  return {};
}

std::error_code FileOps::Sync(const TempFile& temp) {
  return ErrorIf(!FlushFileBuffers(HandleOf(temp.handle)));
}

std::error_code FileOps::Close(TempFile& temp, FileStamp& stamp) {
  const HANDLE handle = HandleOf(std::exchange(temp.handle, -1));
  const std::error_code error = StampOfHandle(handle, stamp);
  const std::error_code closed = ErrorIf(!CloseHandle(handle));
  return error ? error : closed;
}

std::error_code FileOps::Rename(const std::string& from, const std::string& to) {
  for (int tries = 1;; ++tries) {
    if (MoveFileExW(PathOf(from).c_str(), PathOf(to).c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return {};
    }
    if (tries == kLockedTries || !IsLockedForAMoment(GetLastError())) return LastError();
    Sleep(kLockedPauseMs);
  }
}

// The rename has been written through already.
std::error_code FileOps::SyncFolder(const std::string&) {
  return {};
}

LockResult FileOps::Lock(const std::string& target, FileLock& lock) {
  lock.path = HiddenBeside(target) + ".lock";
  const HANDLE handle = CreateFileW(PathOf(lock.path).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return IsLockedForAMoment(GetLastError()) ? LockResult::HeldElsewhere : LockResult::Unavailable;
  }
  lock.handle = reinterpret_cast<std::intptr_t>(handle);
  return LockResult::Locked;
}

void FileOps::Unlock(FileLock& lock) {
  if (!lock.held()) return;
  CloseHandle(HandleOf(lock.handle));
  lock.handle = -1;
}

// There is no lock on the file itself, which has one name only.
void FileOps::FollowLock(const std::string&, FileLock&) {}

// There the runtime would make each line feed two bytes.
void OutliveWriteErrors() {
  for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
}

// Those of main have lost what is not in the system's old code page.
std::vector<std::string> CommandLineWords(int, char**) {
  std::vector<std::string> words;
  int count = 0;
  LPWSTR* const found = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; found != nullptr && i < count; ++i) words.push_back(Utf8Of(found[i]));
  LocalFree(found);
  return words;
}

}  // namespace quorvane

#endif
