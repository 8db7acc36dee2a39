#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

namespace quorvane {

// A text file that is only added to, by a thread of its own, so that a slow or full disk never delays the
// caller: Append costs a copy of the text. Text that was appended is with the operating system a moment
// later (not on the disk for certain: a power failure may cost the last seconds, a killed program nothing
// but what was appended in its last moment).
//
// The first error ends the writing; the file then stays as far as it was written, and Problem() says why.
class JournalFile {
 public:
  // Makes a new file. One that cannot be made is such an error, and so is one that exists and has contents.
  explicit JournalFile(const std::filesystem::path& path);
  // Writes to any other stream.
  explicit JournalFile(std::unique_ptr<std::ostream> out);
  ~JournalFile();
  JournalFile(const JournalFile&) = delete;
  JournalFile& operator=(const JournalFile&) = delete;

  void Append(std::string text);
  // Puts the text in front of the last `tail` bytes appended, which must be what was appended last.
  void InsertBefore(const std::string& tail, const std::string& text);

  // Writes what is left and closes the file. Nothing may be appended any more.
  void Close();

  // Empty while all is well. From any thread.
  std::string Problem() const;

 private:
  struct Piece {
    std::size_t back = 0;  // bytes at the end of the file that it replaces
    std::string text;
  };

  void Begin();
  void Add(Piece piece);
  void Work();
  bool Write(const Piece& piece);

  std::unique_ptr<std::ostream> out_;  // the thread's, once it runs
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Piece> waiting_;
  std::string problem_;
  bool closing_ = false;
  std::thread thread_;
};

}  // namespace quorvane
