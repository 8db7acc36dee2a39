#include "files/file_ops.h"

namespace quorvane {

namespace {

// Everything up to and including the rename; the caller removes the temporary file if this fails.
std::error_code PutInPlace(FileOps& files, const std::string& target, std::string_view bytes, TempFile& temp,
                           FileStamp& seen) {
  FileStamp written;
  std::error_code error = files.KeepMode(temp, target);
  if (!error) error = files.Write(temp, bytes);
  if (!error) error = files.Sync(temp);
  if (!error) error = files.StampOf(temp, written);
  const std::error_code close_error = files.Close(temp);
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
  static SystemFileOps files;
  return files;
}

}  // namespace quorvane
